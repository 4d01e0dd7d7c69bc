// kelvane-art: renders the editor's pictures from their SVG sources, and previews them.
#include "ArtCommand.h"

#include <iostream>

int main(int argc, char** argv)
{
    return runArt(std::vector<std::string>(argv + 1, argv + argc), std::cout, std::cerr);
}
