#pragma once

#include <string>
#include <vector>

// The command line of kelvane-render:
//   kelvane-render [options] IN OUT
//   kelvane-render [options] --demo OUT
//   kelvane-render [options] --list | --save-state FILE     (no audio)
struct RenderOptions
{
    struct Setting
    {
        std::string parameter;  // a name, or an index in decimal
        float value;            // 0..1
    };

    static constexpr int defaultBlockSize = 512;
    static constexpr int largestBlockSize = 65536;

    std::string pluginPath;       // empty: look for the installed or built Kelvane
    std::vector<Setting> settings;  // in command-line order
    bool list = false;
    int blockSize = defaultBlockSize;
    std::string loadState;
    std::string saveState;
    bool demo = false;
    bool force = false;
    bool help = false;
    std::string input;            // empty with --demo or without audio
    std::string output;           // empty without audio

    bool renders() const { return !output.empty(); }

    // Fills `options` from the arguments after the program name. Returns an empty string on
    // success, otherwise a one-line reason.
    static std::string parse(const std::vector<std::string>& arguments, RenderOptions& options);

    static const char* usage();
};
