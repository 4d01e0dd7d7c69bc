#pragma once

#include <string>

// Pictures for people to judge the art by, made from the rendered pictures (not from the pack,
// and never shipped): the editor as it looks with every control at its middle frame (the
// selectors at their middle state) and the needles drawn the way the editor draws them, at
// 1500 x 350, 750 x 175 and 300 x 70; and a sheet of chosen frames of every film strip.
namespace ArtPreview
{
// Reads <artFolder>/<name>.png for every picture of the catalogue and writes preview-1500.png,
// preview-750.png, preview-300.png and strips.png into `outFolder`, replacing them. Returns an
// empty string on success, otherwise a one-line reason.
std::string write(const std::string& artFolder, const std::string& outFolder);
}
