#include "Extraction.h"

#include "foundation/memory/MemoryBlock.h"
#include "foundation/string/String.h"
#include "media/image/Image.h"
#include "media/resource/Resource.h"
#include "media/sample/Sample.h"

#include <png.h>

#include <algorithm>
#include <cmath>
#include <csetjmp>
#include <cstdint>
#include <vector>

using q1framework::Image;
using q1framework::MemoryBlock;
using q1framework::Resource;
using q1framework::Sample;
using q1framework::String;

namespace
{
void appendBytes(png_structp png, png_bytep data, size_t count)
{
    static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(data), count);
}

void flushNothing(png_structp) {}

// libpng reports errors by longjmp: this frame holds nothing that needs a destructor.
bool writePngRows(png_structp png, png_infop info, int width, int height, png_bytepp rows)
{
    if (setjmp(png_jmpbuf(png)))
        return false;
    png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), 8,
                 PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_write_image(png, rows);
    png_write_end(png, nullptr);
    return true;
}

// Straight colour from a premultiplied channel: round(channel * 255 / alpha), at most 255.
uint8_t unpremultiplied(unsigned channel, unsigned alpha)
{
    return static_cast<uint8_t>(std::min(255u, (channel * 510 + alpha) / (2 * alpha)));
}

void appendLittleEndian(std::string& bytes, uint32_t value, int byteCount)
{
    for (int byte = 0; byte < byteCount; ++byte)
        bytes += static_cast<char>((value >> (8 * byte)) & 0xFF);
}
}

std::string encodePng(const Image& image, std::string& bytes)
{
    bytes.clear();
    if (image.isEmpty() || image.getData() == nullptr)
        return "the picture is empty";
    const int width = image.getWidth();
    const int height = image.getHeight();
    std::vector<uint8_t> pixels(static_cast<size_t>(width) * height * 4);
    std::vector<png_bytep> rows(static_cast<size_t>(height));
    for (int y = 0; y < height; ++y)
    {
        const uint8_t* source = image.getLine(static_cast<unsigned>(y));
        uint8_t* row = pixels.data() + static_cast<size_t>(y) * width * 4;
        rows[static_cast<size_t>(y)] = row;
        for (int x = 0; x < width; ++x, source += 4, row += 4)
        {
            const unsigned alpha = source[3];
            row[3] = static_cast<uint8_t>(alpha);
            for (int channel = 0; channel < 3; ++channel)
                row[channel] = alpha == 0 ? 0 : unpremultiplied(source[2 - channel], alpha);
        }
    }
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png != nullptr ? png_create_info_struct(png) : nullptr;
    if (info == nullptr)
    {
        png_destroy_write_struct(&png, nullptr);
        return "out of memory for the PNG encoder";
    }
    png_set_write_fn(png, &bytes, appendBytes, flushNothing);
    const bool written = writePngRows(png, info, width, height, rows.data());
    png_destroy_write_struct(&png, &info);
    return written ? std::string() : "the PNG encoder failed";
}

std::string encodeWav(const Sample& sound, std::string& bytes)
{
    bytes.clear();
    const int bits = sound.getBitsPerSample();
    if (bits != 8 && bits != 16 && bits != 24 && bits != 32)
        return "a sound of " + std::to_string(bits) + " bits a sample has no WAV form";
    const int channels = sound.getNumChannels();
    const int bytesPerSample = bits / 8;
    const int64_t frames = sound.getNumFrames();
    const int64_t dataBytes = frames * channels * bytesPerSample;
    if (dataBytes > 0xFFFFFF00LL)
        return "the sound is too long for a WAV file";
    for (int channel = 0; channel < channels && frames > 0; ++channel)
        if (sound.getChannel(channel) == nullptr)
            return "the sound has a channel without data";
    const auto rate = static_cast<uint32_t>(std::lround(sound.getSampleRate()));
    const auto blockSize = static_cast<uint32_t>(channels * bytesPerSample);

    bytes = "RIFF";
    appendLittleEndian(bytes, static_cast<uint32_t>(4 + 24 + 8 + dataBytes + (dataBytes & 1)), 4);
    bytes += "WAVEfmt ";
    appendLittleEndian(bytes, 16, 4);
    appendLittleEndian(bytes, bits == 32 ? 3 : 1, 2);  // float or integer PCM
    appendLittleEndian(bytes, static_cast<uint32_t>(channels), 2);
    appendLittleEndian(bytes, rate, 4);
    appendLittleEndian(bytes, rate * blockSize, 4);
    appendLittleEndian(bytes, blockSize, 2);
    appendLittleEndian(bytes, static_cast<uint32_t>(bits), 2);
    bytes += "data";
    appendLittleEndian(bytes, static_cast<uint32_t>(dataBytes), 4);
    bytes.reserve(bytes.size() + static_cast<size_t>(dataBytes) + 1);
    for (int64_t frame = 0; frame < frames; ++frame)
        for (int channel = 0; channel < channels; ++channel)
        {
            const auto* sample = static_cast<const char*>(sound.getChannel(channel)) + frame * bytesPerSample;
            bytes.append(sample, static_cast<size_t>(bytesPerSample));
        }
    if (dataBytes % 2 == 1)
        bytes += '\0';
    return {};
}

std::string exportEntry(const Resource& entry, std::string& bytes)
{
    bytes.clear();
    if (const Image* image = entry.getImage())
        return encodePng(*image, bytes);
    if (const Sample* sound = entry.getSample())
        return encodeWav(*sound, bytes);
    if (const String* text = entry.getText())
    {
        bytes = text->getCString();
        return {};
    }
    if (const MemoryBlock* block = entry.getMemoryBlock())
    {
        bytes.assign(static_cast<const char*>(block->getData()), static_cast<size_t>(block->getSize()));
        return {};
    }
    return "the entry has no data";
}
