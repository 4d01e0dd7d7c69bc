#pragma once

#include <ostream>
#include <string>
#include <vector>

// kelvane-art, the command that makes the editor's pictures:
//   render FONT_FOLDER SOURCE_FOLDER OUT_FOLDER
//       renders every picture of the catalogue from SOURCE_FOLDER/<name>.svg into
//       OUT_FOLDER/<name>.png, setting text only in the fonts of FONT_FOLDER;
//   preview ART_FOLDER OUT_FOLDER
//       writes the preview pictures of the rendered art (see ArtPreview).
// Returns the exit status: 0 done, 1 a failure (one line on `errors`), 2 a usage error. Rendering
// the same sources with the same fonts and libraries gives the same pixels every time.
int runArt(const std::vector<std::string>& arguments, std::ostream& output, std::ostream& errors);
