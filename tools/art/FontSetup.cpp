#include "FontSetup.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace
{
// The folder names go into XML text.
std::string escaped(const std::string& text)
{
    std::string out;
    for (char c : text)
    {
        if (c == '&')
            out += "&amp;";
        else if (c == '<')
            out += "&lt;";
        else if (c == '>')
            out += "&gt;";
        else
            out += c;
    }
    return out;
}
}  // namespace

std::string isolateFonts(const std::string& fontFolder, const std::string& workFolder,
                         const std::initializer_list<const char*>& requiredFiles)
{
    namespace fs = std::filesystem;
    for (const char* file : requiredFiles)
        if (!fs::is_regular_file(fs::path(fontFolder) / file))
            return "the font " + (fs::path(fontFolder) / file).string() +
                   " is missing (scripts/install-deps.sh installs it)";

    const fs::path folder = fs::absolute(fs::path(workFolder) / "fontconfig");
    std::error_code error;
    fs::create_directories(folder / "cache", error);
    if (error)
        return folder.string() + ": " + error.message();
    const fs::path configuration = folder / "fonts.conf";
    std::ofstream file(configuration, std::ios::trunc);
    file << "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\">\n<fontconfig>\n"
         << "  <dir>" << escaped(fs::absolute(fontFolder).string()) << "</dir>\n"
         << "  <cachedir>" << escaped((folder / "cache").string()) << "</cachedir>\n"
         << "</fontconfig>\n";
    file.close();
    if (!file)
        return configuration.string() + ": cannot be written";
    if (setenv("FONTCONFIG_FILE", configuration.c_str(), 1) != 0)
        return "cannot set FONTCONFIG_FILE";
    return {};
}
