#pragma once

#include <vector>

// How the frames of a picture are made from its SVG source.
enum class FrameKind
{
    // The editor's background: the layer "panel", the printed scale of each meter face over it,
    // then the layer "glass" over those. One opaque frame.
    background,
    // A knob: the layer "body", then the layer "rotor" turned about the frame's centre, from
    // -135 degrees in the first frame to +135 degrees in the last, then the layer "cover" when the
    // source has one. Light and shadow belong to "body" and "cover", so they stay where they are.
    rotary,
    // Off to on: the layer "off", then the layer "on" over it at an opacity from 0 in the first
    // frame to 1 in the last.
    fade,
    // One frame per state: the layer "base", then the layer "state-N" for frame N (from 0).
    states,
};

// A picture of the editor, made from resources/art/<name>.svg into <name>.png.
struct ArtPicture
{
    const char* name;
    int width;   // one frame, pixels: the size of the control that shows it
    int height;
    int frames;  // stacked top to bottom
    FrameKind kind;
};

// A needle meter's face in the background: where the editor puts the meter, in pixels of the
// background, and what its scale says.
struct MeterFace
{
    const char* layer;  // the background's element that outlines the face, for a position check
    const char* label;
    int x;
    int y;
    int width;
    int height;
};

namespace ArtCatalogue
{
// Every picture, background first.
const std::vector<ArtPicture>& pictures();

// The two meter faces of the background.
const std::vector<MeterFace>& meterFaces();
}
