#include "GalleryCommand.h"

#include "Extraction.h"
#include "GallerySheet.h"
#include "common/PendingFile.h"
#include "render/font/Font.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace
{
const char* const usage = "usage: kelvane-gallery [--force] OUT.png";

std::string writeAll(int descriptor, const std::string& bytes)
{
    size_t written = 0;
    while (written < bytes.size())
    {
        const ssize_t count = ::write(descriptor, bytes.data() + written, bytes.size() - written);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return std::strerror(errno);
        written += static_cast<size_t>(count);
    }
    return {};
}
}

int runGallery(const std::vector<std::string>& arguments, std::ostream& output, std::ostream& errors)
{
    bool force = false;
    std::string path;
    for (const std::string& argument : arguments)
    {
        if (argument == "--force")
            force = true;
        else if (argument == "--help" || argument == "-h")
        {
            output << usage << "\nWrites a sheet of everything the software renderer draws as a PNG picture.\n";
            return 0;
        }
        else if (!argument.empty() && argument[0] == '-')
        {
            errors << "kelvane-gallery: unknown option " << argument << "\n" << usage << "\n";
            return 2;
        }
        else if (!path.empty())
        {
            errors << "kelvane-gallery: one output file only, not also " << argument << "\n" << usage << "\n";
            return 2;
        }
        else
            path = argument;
    }
    if (path.empty())
    {
        errors << "kelvane-gallery: no output file given\n" << usage << "\n";
        return 2;
    }
    if (q1framework::Font::getFallback().getFace() == nullptr)
    {
        errors << "kelvane-gallery: no system font to draw text with (scripts/install-deps.sh installs one)\n";
        return 1;
    }
    if (!force && ::access(path.c_str(), F_OK) == 0)
    {
        errors << "kelvane-gallery: " << path << " exists; pass --force to replace it\n";
        return 1;
    }

    std::string bytes;
    std::string failure = encodePng(GallerySheet::render(), bytes);
    PendingFile file;
    if (failure.empty())
        failure = file.create(path);
    if (failure.empty())
        failure = writeAll(file.descriptor(), bytes);
    if (failure.empty())
        failure = file.publish(force);
    if (!failure.empty())
    {
        errors << "kelvane-gallery: cannot write " << path << ": " << failure << "\n";
        return 1;
    }
    output << "wrote " << path << " (" << GallerySheet::width << " x " << GallerySheet::height << ")\n";
    return 0;
}
