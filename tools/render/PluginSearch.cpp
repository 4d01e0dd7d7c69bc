#include "PluginSearch.h"

#include <sys/stat.h>

namespace
{
constexpr char bundleFile[] = "Kelvane/Kelvane.so";
}

std::vector<std::string> PluginSearch::candidates(const char* vstPath, const char* home,
                                                  const std::string& builtPlugin)
{
    std::vector<std::string> places;
    std::string folder;
    if (vstPath != nullptr)
    {
        const std::string path = vstPath;
        folder = path.substr(0, path.find(':'));
    }
    if (folder.empty() && home != nullptr && *home != '\0')
        folder = std::string(home) + "/.vst";
    if (!folder.empty())
        places.push_back(folder + (folder.back() == '/' ? "" : "/") + bundleFile);
    places.push_back(builtPlugin);
    return places;
}

std::string PluginSearch::find(const std::vector<std::string>& places, std::string& found)
{
    std::string tried;
    for (const std::string& place : places)
    {
        struct stat status{};
        if (stat(place.c_str(), &status) == 0 && S_ISREG(status.st_mode))
        {
            found = place;
            return {};
        }
        tried += (tried.empty() ? "" : " or ") + place;
    }
    return "Kelvane is not installed (looked for " + tried + "); build it or pass --plugin PATH";
}
