#pragma once

#include <string>
#include <vector>

// The command line of kelvane-standalone:
//   kelvane-standalone [--plugin PATH] [--size WxH] [AUDIO]
//   kelvane-standalone [--plugin PATH] [--size WxH] [AUDIO] --screenshot FILE.png [--force]
struct StandaloneOptions
{
    // The editor's picture: its width from 300 to 1499 pixels, its aspect 1500 : 350.
    static constexpr int smallestWidth = 300;
    static constexpr int largestWidth = 1499;
    static constexpr int pictureWidth = 1500;
    static constexpr int pictureHeight = 350;

    std::string pluginPath;  // empty: the installed or the built Kelvane
    std::string audioFile;   // empty: the demo drum loop
    std::string screenshot;  // empty: run until the window is closed
    int width = 0;           // the editor's size with --size, else 0
    int height = 0;
    bool force = false;
    bool help = false;

    // Fills options from the arguments after the program name. Returns an empty string on
    // success, otherwise a one-line reason.
    static std::string parse(const std::vector<std::string>& arguments, StandaloneOptions& options);
    // Reads "WxH" into width and height: a width of 300 to 1499 and the height that keeps the
    // picture's aspect, rounded down or up. Returns an empty string on success, otherwise a
    // one-line reason.
    static std::string parseSize(const std::string& text, int& width, int& height);

    static const char* usage();
};
