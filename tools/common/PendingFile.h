#pragma once

#include <string>

// A file that appears under its name only once it is complete. It is written as a temporary
// file in the destination's folder (so the final move stays on one file system and is atomic),
// and `publish` moves it into place; a PendingFile that is never published removes its temporary
// file, so a failed write leaves neither a half-written file nor a damaged old one.
class PendingFile
{
public:
    PendingFile() = default;
    ~PendingFile();

    PendingFile(const PendingFile&) = delete;
    PendingFile& operator=(const PendingFile&) = delete;

    // Creates the empty temporary file for `destination`, with the permissions a new file of the
    // user gets. Returns an empty string on success, otherwise a one-line reason.
    std::string create(const std::string& destination);

    // The temporary file's descriptor, open for writing; -1 before `create`.
    int descriptor() const { return fileDescriptor; }

    // Flushes the file to disk and moves it to the destination. Without `replaceExisting` it fails
    // when a file of that name exists, even one that appeared after `create`. Returns an empty
    // string on success, otherwise a one-line reason (the temporary file is then removed).
    std::string publish(bool replaceExisting);

private:
    void discard();

    std::string destinationPath;
    std::string temporaryPath;
    int fileDescriptor = -1;
};
