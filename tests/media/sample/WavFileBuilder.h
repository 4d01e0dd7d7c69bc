#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

// WAV files built byte by byte, so that tests control every chunk: its order, odd sizes with or
// without the pad byte, cue points and labels before or after the audio.
class WavFileBuilder
{
public:
    // Interleaved little-endian samples of the given width (8-bit values as raw bytes).
    static std::string samples(const std::vector<int64_t>& values, int bits)
    {
        std::string bytes;
        for (int64_t value : values)
            for (int shift = 0; shift < bits; shift += 8)
                bytes += char((value >> shift) & 0xFF);
        return bytes;
    }

    static std::string int16(int value) { return samples({value}, 16); }
    static std::string int32(int64_t value) { return samples({value}, 32); }

    // A chunk: id, size, body, and the pad byte behind an odd body unless padded is false.
    static std::string chunk(const std::string& id, const std::string& body, bool padded = true)
    {
        return id + int32(static_cast<int64_t>(body.size())) + body + (padded && body.size() % 2 == 1 ? std::string(1, '\0') : "");
    }

    // A "fmt " chunk; tag 1 integer PCM, 3 float.
    static std::string format(int tag, int channels, int rate, int bits)
    {
        const int blockSize = channels * bits / 8;
        return chunk("fmt ", int16(tag) + int16(channels) + int32(rate) + int32(int64_t(rate) * blockSize) + int16(blockSize) + int16(bits));
    }

    // A "cue " chunk of (id, sample position) pairs.
    static std::string cues(std::initializer_list<std::pair<int, int>> points)
    {
        std::string body = int32(static_cast<int64_t>(points.size()));
        for (const auto& point : points)
            body += int32(point.first) + int32(point.second) + "data" + int32(0) + int32(0) + int32(point.second);
        return chunk("cue ", body);
    }

    // A LIST "adtl" chunk of the given inner chunks.
    static std::string associatedData(const std::string& innerChunks) { return chunk("LIST", "adtl" + innerChunks); }

    // A "labl" chunk; the text with its NUL, so an even text length gives an odd chunk.
    static std::string label(int id, const std::string& text) { return chunk("labl", int32(id) + text + std::string(1, '\0')); }

    // An "ltxt" chunk giving a cue a length in frames.
    static std::string labelledText(int id, int length)
    {
        return chunk("ltxt", int32(id) + int32(length) + "rgn " + int16(0) + int16(0) + int16(0) + int16(0));
    }

    // The whole file: "RIFF", its size, "WAVE" and the chunks.
    static std::string file(const std::string& chunks) { return "RIFF" + int32(static_cast<int64_t>(chunks.size()) + 4) + "WAVE" + chunks; }
};
