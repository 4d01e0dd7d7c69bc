#pragma once

#include <string>
#include <vector>

// Where kelvane-render finds Kelvane when no --plugin is given: the installed bundle
// Kelvane/Kelvane.so in the user's VST folder (the first folder of VST_PATH when it is set,
// otherwise ~/.vst), then the one built in this build tree.
class PluginSearch
{
public:
    // The places to look, in order. `vstPath` and `home` are the environment's values (null when
    // unset); `builtPlugin` is the build tree's bundle.
    static std::vector<std::string> candidates(const char* vstPath, const char* home,
                                               const std::string& builtPlugin);

    // The first candidate that exists. Returns an empty string on success, otherwise a one-line
    // reason that names the places tried.
    static std::string find(const std::vector<std::string>& places, std::string& found);
};
