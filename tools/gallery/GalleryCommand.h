#pragma once

#include <ostream>
#include <string>
#include <vector>

// kelvane-gallery [--force] OUT.png
//
// Renders the gallery sheet (GallerySheet) and writes it as a PNG file. An existing file is kept
// unless --force is given; the file appears only once it is complete. Returns the exit status:
// 0 on success, 1 when the sheet cannot be made or written (one line on errors, starting
// "kelvane-gallery: "), 2 for a wrong command line (the line and the usage).
int runGallery(const std::vector<std::string>& arguments, std::ostream& output, std::ostream& errors);
