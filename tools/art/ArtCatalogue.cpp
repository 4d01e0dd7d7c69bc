#include "ArtCatalogue.h"

// The sizes are those of the editor's controls; the frame counts are those the controls cut their
// strips into.
const std::vector<ArtPicture>& ArtCatalogue::pictures()
{
    static const std::vector<ArtPicture> list = {
        {"background", 1500, 350, 1, FrameKind::background},
        {"knob-attack", 127, 129, 101, FrameKind::rotary},
        {"knob-drive", 101, 106, 101, FrameKind::rotary},
        {"knob-release", 123, 131, 101, FrameKind::rotary},
        {"knob-gain", 96, 105, 101, FrameKind::rotary},
        {"button-bypass", 84, 57, 101, FrameKind::fade},
        {"drive-led", 43, 40, 101, FrameKind::fade},
        {"attack-time", 110, 34, 3, FrameKind::states},
        {"release-time", 107, 31, 3, FrameKind::states},
    };
    return list;
}

const std::vector<MeterFace>& ArtCatalogue::meterFaces()
{
    static const std::vector<MeterFace> list = {
        {"face-in", "IN", 177, 56, 272, 131},
        {"face-out", "OUT", 1055, 56, 272, 131},
    };
    return list;
}
