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
using Path = std::filesystem::path;

namespace
{
// The file's bytes; none when it cannot be read.
std::string readFile(const Path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

bool writeFile(const Path& path, const std::string& bytes)
{
    std::error_code ignored;
    std::filesystem::create_directories(path.parent_path(), ignored);
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    return static_cast<bool>(stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size())));
}

Image decode(const std::string& bytes)
{
    return Image::decode(bytes.data(), static_cast<unsigned>(bytes.size()));
}

std::string encode(const Image& picture)
{
    std::string bytes;
    return encodePng(picture, bytes).empty() ? bytes : std::string();
}

bool differ(const Image& first, const Image& second, int x, int y)
{
    return std::memcmp(first.getPixelPointer(x, y), second.getPixelPointer(x, y), 4) != 0;
}

// How many pixels of two pictures of the same size differ, and the first of them.
int countDifferences(const Image& first, const Image& second, int& x, int& y)
{
    int count = 0;
    for (int row = 0; row < first.getHeight(); ++row)
        for (int column = 0; column < first.getWidth(); ++column)
            if (differ(first, second, column, row) && count++ == 0)
                x = column, y = row;
    return count;
}

std::string describePixel(const Image& picture, int x, int y)
{
    const uint8_t* pixel = picture.getPixelPointer(x, y);
    std::ostringstream text;
    text << "(b " << int(pixel[0]) << ", g " << int(pixel[1]) << ", r " << int(pixel[2]) << ", a " << int(pixel[3]) << ")";
    return text.str();
}

// Red where the pictures differ (or where only the actual one has a pixel), elsewhere a faint grey
// of the expected picture.
Image makeDifference(const Image& actual, const Image& expected)
{
    Image difference(actual.getSize(), true);
    for (int y = 0; y < actual.getHeight(); ++y)
        for (int x = 0; x < actual.getWidth(); ++x)
        {
            const bool same = x < expected.getWidth() && y < expected.getHeight() && !differ(actual, expected, x, y);
            const uint8_t* pixel = same ? expected.getPixelPointer(x, y) : nullptr;
            const auto grey = static_cast<uint8_t>(same ? 192 + (pixel[0] + pixel[1] + pixel[2]) / 12 : 0);
            const uint8_t out[4] = {grey, grey, same ? grey : uint8_t(255), 255};
            std::memcpy(difference.getPixelPointer(x, y), out, 4);
        }
    return difference;
}
}  // namespace

namespace GoldenImage
{
::testing::AssertionResult matchesGolden(const Image& picture, const char* feature)
{
    const std::string name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    const Path golden = Path(Q1_GOLDEN_SOURCE_DIR) / feature / (name + ".png");
    const Path output = Path(Q1_GOLDEN_OUTPUT_DIR) / feature;

    if (picture.isEmpty())
        return ::testing::AssertionFailure() << "the scene " << name << " is empty";
    const std::string encoded = encode(picture);
    if (encoded.empty())
        return ::testing::AssertionFailure() << "the scene " << name << " cannot be written as PNG";
    // The PNG must give back the very bytes, or a golden could never be compared exactly.
    const Image roundTrip = decode(encoded);
    int x = 0, y = 0, count = 0;
    if (roundTrip.getSize() != picture.getSize() || (count = countDifferences(picture, roundTrip, x, y)) > 0)
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

    const Image expected = decode(readFile(golden));
    const Path actualPath = output / (name + ".actual.png");
    if (expected.isEmpty())
    {
        writeFile(actualPath, encoded);
        return ::testing::AssertionFailure() << "no golden picture " << golden << " (run with Q1_UPDATE_GOLDENS=1 to "
                                             << "make it); the scene is in " << actualPath;
    }
    const bool sameSize = expected.getSize() == picture.getSize();
    if (sameSize && (count = countDifferences(picture, expected, x, y)) == 0)
        return ::testing::AssertionSuccess();

    const Path expectedPath = output / (name + ".expected.png"), differencePath = output / (name + ".diff.png");
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
}  // namespace GoldenImage
