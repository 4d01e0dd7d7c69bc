#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

// Ground of the kelvane-pack tests: a fresh folder per test in the build tree, files written and
// read with the standard library, and runs of the built program with its output and exit status.
class KelvanePack : public ::testing::Test
{
public:
    struct Run
    {
        int status = -1;  // exit status, -1 when the program did not exit normally
        std::string out;
        std::string err;
    };

protected:
    void SetUp() override;

    std::string path(const std::string& name) const { return (folder / name).string(); }
    void write(const std::string& name, const std::string& bytes) const;
    std::string read(const std::string& name) const;
    // The names of the files in the test's folder, sorted.
    std::vector<std::string> files() const;

    // Runs kelvane-pack with arguments, in the test's folder.
    Run pack(const std::vector<std::string>& arguments) const;
    // A failed run: the status, one line on standard error starting "kelvane-pack: " and
    // containing text, nothing on standard output.
    static void expectFailure(const Run& run, int status, const std::string& text);

    std::filesystem::path folder;
};
