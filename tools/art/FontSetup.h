#pragma once

#include <initializer_list>
#include <string>

// Makes this process's fontconfig know the font files of one folder and nothing else, so that the
// text of the art is set in the same faces on every machine whatever else is installed, and a
// missing font fails the build instead of falling back to another face.
//
// Writes <workFolder>/fontconfig/fonts.conf (with fontconfig's cache beside it) and points
// FONTCONFIG_FILE at it. Call before anything in the process uses fontconfig. `requiredFiles` are
// the file names that must be in `fontFolder`. Returns an empty string on success, otherwise a
// one-line reason.
std::string isolateFonts(const std::string& fontFolder, const std::string& workFolder,
                         const std::initializer_list<const char*>& requiredFiles);
