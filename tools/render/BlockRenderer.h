#pragma once

#include <string>

class AudioFileWriter;
class ProgressBar;
class RenderInput;
class VstPlugin;

// Streams an input through a plug-in block by block into an output file, with constant memory.
//
// Channels: a mono input feeds every input of the plug-in; a stereo input feeds the first two,
// any further input gets silence. The output has the input's channel count, channel c taken from
// the plug-in's output c (its last output when it has fewer).
class BlockRenderer
{
public:
    // Starts the plug-in, processes every frame of `input` in blocks of at most `blockSize`
    // frames, stops it. Returns an empty string on success, otherwise a one-line reason.
    static std::string render(VstPlugin& plugin, RenderInput& input, AudioFileWriter& output,
                              int blockSize, ProgressBar& progress);
};
