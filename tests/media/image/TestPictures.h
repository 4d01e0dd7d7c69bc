#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Picture files made by the reference libraries themselves, for the decoders' tests and seeds.
namespace TestPictures
{

// A PNG as libpng writes it. lines holds the raw samples of each line as PNG stores them (packed
// for bit depths below 8, big-endian for 16). palette holds red, green, blue triples;
// transparency the tRNS chunk's bytes (alpha per palette entry, or a grey key's 16-bit sample,
// big-endian).
struct PngPicture
{
    int width = 0;
    int height = 0;
    int colourType = 0;
    int bitDepth = 8;
    bool interlaced = false;
    std::vector<std::vector<uint8_t>> lines{};
    std::vector<uint8_t> palette{};
    std::vector<uint8_t> transparency{};
};

std::string encodePng(const PngPicture& picture);

// A baseline JPEG of quality 100 from interleaved 8-bit samples with components 1 (grey) or 3
// (RGB) per pixel.
std::string encodeJpeg(int width, int height, int components, const std::vector<uint8_t>& samples);

// Writes bytes to a file; false when that failed.
bool writeFile(const std::string& path, const std::string& bytes);

}  // namespace TestPictures
