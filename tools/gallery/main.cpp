// kelvane-gallery [--force] OUT.png: a PNG sheet of everything the software renderer draws.
#include "GalleryCommand.h"

#include <iostream>

int main(int argc, char** argv)
{
    return runGallery(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr);
}
