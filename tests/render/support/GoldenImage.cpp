#include "GoldenImage.h"

#include "Extraction.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

using q1framework::Image;

namespace
{
std::string readFile(const std::filesystem::path& path, bool& found)
{
    std::ifstream stream(path, std::ios::binary);
    found = static_cast<bool>(stream);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

bool writeFile(const std::filesystem::path& path, const std::string& bytes)
{
    std::error_code ignored;
    std::filesystem::create_directories(path.parent_path(), ignored);
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    return static_cast<bool>(stream);
}

Image decode(const std::string& bytes)
{
    return Image::decode(bytes.data(), static_cast<unsigned>(bytes.size()));
}

// The first pixel where two pictures of the same size differ, or false when none does.
bool findDifference(const Image& first, const Image& second, int& x, int& y, int& count)
{
    count = 0;
    for (int row = 0; row < first.getHeight(); ++row)
        for (int column = 0; column < first.getWidth(); ++column)
            if (std::memcmp(first.getPixelPointer(column, row), second.getPixelPointer(column, row), 4) != 0)
            {
                if (count++ == 0)
                {
                    x = column;
                    y = row;
                }
            }
    return count > 0;
}

std::string describePixel(const Image& picture, int x, int y)
{
    const uint8_t* pixel = picture.getPixelPointer(x, y);
    std::ostringstream text;
    text << "(b " << int(pixel[0]) << ", g " << int(pixel[1]) << ", r " << int(pixel[2]) << ", a " << int(pixel[3])
         << ")";
    return text.str();
}

// Red where the pictures differ (or where only one has a pixel), elsewhere the expected picture's
// grey, faint.
Image makeDifference(const Image& actual, const Image& expected)
{
    Image difference(actual.getSize(), true);
    for (int y = 0; y < actual.getHeight(); ++y)
        for (int x = 0; x < actual.getWidth(); ++x)
        {
            uint8_t* out = difference.getPixelPointer(x, y);
            const bool inside = x < expected.getWidth() && y < expected.getHeight();
            if (!inside || std::memcmp(actual.getPixelPointer(x, y), expected.getPixelPointer(x, y), 4) != 0)
            {
                const uint8_t red[4] = {0, 0, 255, 255};
                std::memcpy(out, red, 4);
                continue;
            }
            const uint8_t* pixel = expected.getPixelPointer(x, y);
            const auto grey = static_cast<uint8_t>(192 + (pixel[0] + pixel[1] + pixel[2]) / 12);
            const uint8_t faint[4] = {grey, grey, grey, 255};
            std::memcpy(out, faint, 4);
        }
    return difference;
}

std::string encode(const Image& picture)
{
    std::string bytes;
    const std::string problem = encodePng(picture, bytes);
    return problem.empty() ? bytes : std::string();
}
}

namespace GoldenImage
{
::testing::AssertionResult matchesGolden(const Image& picture, const char* feature)
{
    const std::string name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    const std::filesystem::path golden = std::filesystem::path(Q1_GOLDEN_SOURCE_DIR) / feature / (name + ".png");
    const std::filesystem::path output = std::filesystem::path(Q1_GOLDEN_OUTPUT_DIR) / feature;

    if (picture.isEmpty())
        return ::testing::AssertionFailure() << "the scene " << name << " is empty";
    const std::string encoded = encode(picture);
    if (encoded.empty())
        return ::testing::AssertionFailure() << "the scene " << name << " cannot be written as PNG";
    // The PNG must give back the very bytes, or a golden could never be compared exactly.
    const Image roundTrip = decode(encoded);
    int x = 0, y = 0, count = 0;
    if (roundTrip.getSize() != picture.getSize() || findDifference(picture, roundTrip, x, y, count))
        return ::testing::AssertionFailure() << "the scene " << name << " has " << count
                                             << " pixels that a PNG cannot hold (colour above alpha), the first at ("
                                             << x << ", " << y << ") " << describePixel(picture, x, y);

    const char* update = std::getenv("Q1_UPDATE_GOLDENS");
    if (update != nullptr && std::strcmp(update, "1") == 0)
    {
        if (!writeFile(golden, encoded))
            return ::testing::AssertionFailure() << "cannot write " << golden;
        return ::testing::AssertionSuccess() << "wrote " << golden;
    }

    bool found = false;
    const Image expected = decode(readFile(golden, found));
    const std::filesystem::path actualPath = output / (name + ".actual.png");
    if (!found || expected.isEmpty())
    {
        writeFile(actualPath, encoded);
        return ::testing::AssertionFailure() << "no golden picture " << golden << " (run with Q1_UPDATE_GOLDENS=1 to "
                                             << "make it); the scene is in " << actualPath;
    }
    const bool sameSize = expected.getSize() == picture.getSize();
    if (sameSize && !findDifference(picture, expected, x, y, count))
        return ::testing::AssertionSuccess();

    const std::filesystem::path expectedPath = output / (name + ".expected.png");
    const std::filesystem::path differencePath = output / (name + ".diff.png");
    writeFile(actualPath, encoded);
    writeFile(expectedPath, encode(expected));
    writeFile(differencePath, encode(makeDifference(picture, expected)));
    auto failure = ::testing::AssertionFailure() << "the scene differs from " << golden << ": ";
    if (sameSize)
        failure << count << " pixels, the first at (" << x << ", " << y << "): " << describePixel(picture, x, y)
                << " instead of " << describePixel(expected, x, y);
    else
        failure << "size " << picture.getWidth() << " x " << picture.getHeight() << " instead of "
                << expected.getWidth() << " x " << expected.getHeight();
    return failure << "\n  actual:     " << actualPath << "\n  expected:   " << expectedPath
                   << "\n  difference: " << differencePath;
}
}
