#pragma once

#include <string>

namespace q1framework
{
class Image;
class Resource;
class Sample;
}

// The files that kelvane-pack extract writes. Each returns an empty string on success, otherwise a
// one-line reason, and leaves the file's bytes in bytes.

// Pictures as 8-bit RGBA PNG, the colour taken back out of its premultiplied form (rounded, so
// that decoding the file gives the same premultiplied pixels again).
std::string encodePng(const q1framework::Image& image, std::string& bytes);

// Sounds as WAV: 8, 16 and 24-bit samples as integer PCM with the stored bytes unchanged, 32-bit
// samples as float.
std::string encodeWav(const q1framework::Sample& sound, std::string& bytes);

// Any entry: pictures and sounds as above, text and binary data as their bytes.
std::string exportEntry(const q1framework::Resource& entry, std::string& bytes);
