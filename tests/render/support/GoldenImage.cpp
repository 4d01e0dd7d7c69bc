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

std::string describePixel(const Image& picture, int x, int y)
{
    const uint8_t* pixel = picture.getPixelPointer(x, y);
    std::ostringstream text;
    text << "(b " << int(pixel[0]) << ", g " << int(pixel[1]) << ", r " << int(pixel[2]) << ", a " << int(pixel[3]) << ")";
    return text.str();
}

// How many pixels of actual differ from expected (or lie outside it), and the first of them; the
// difference picture is red there, elsewhere a faint grey of the expected picture.
Image compare(const Image& actual, const Image& expected, int& count, int& x, int& y)
{
    Image difference(actual.getSize(), true);
    count = 0;
    for (int row = 0; row < actual.getHeight(); ++row)
        for (int column = 0; column < actual.getWidth(); ++column)
        {
            const uint8_t* pixel = column < expected.getWidth() && row < expected.getHeight()
                                       ? expected.getPixelPointer(column, row) : nullptr;
            const bool same = pixel != nullptr && std::memcmp(actual.getPixelPointer(column, row), pixel, 4) == 0;
            if (!same && count++ == 0)
                x = column, y = row;
            const auto grey = static_cast<uint8_t>(same ? 192 + (pixel[0] + pixel[1] + pixel[2]) / 12 : 0);
            const uint8_t out[4] = {grey, grey, same ? grey : uint8_t(255), 255};
            std::memcpy(difference.getPixelPointer(column, row), out, 4);
        }
    return difference;
}

// The comparison with golden/<feature>/<goldenName>.png; the failure pictures are named after the
// running test. With mayUpdate the update switch writes the golden.
::testing::AssertionResult compareWithGolden(const Image& picture, const char* feature, const std::string& goldenName,
                                             bool mayUpdate)
{
    const std::string name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    const Path golden = Path(Q1_GOLDEN_SOURCE_DIR) / feature / (goldenName + ".png");
    const Path output = Path(Q1_GOLDEN_OUTPUT_DIR) / feature;

    if (picture.isEmpty())
        return ::testing::AssertionFailure() << "the scene " << name << " is empty";
    const std::string encoded = encode(picture);
    if (encoded.empty())
        return ::testing::AssertionFailure() << "the scene " << name << " cannot be written as PNG";
    // The PNG must give back the very bytes, or a golden could never be compared exactly.
    int count = 0, x = 0, y = 0;
    const Image roundTrip = decode(encoded);
    compare(picture, roundTrip, count, x, y);
    if (count > 0 || roundTrip.getSize() != picture.getSize())
        return ::testing::AssertionFailure() << "the scene " << name << " has " << count
                                             << " pixels that a PNG cannot hold (colour above alpha), the first at ("
                                             << x << ", " << y << ") " << describePixel(picture, x, y);

    const char* update = std::getenv("Q1_UPDATE_GOLDENS");
    if (mayUpdate && update != nullptr && std::strcmp(update, "1") == 0)
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
        return ::testing::AssertionFailure() << "no golden picture " << golden << " (run its test with "
                                             << "Q1_UPDATE_GOLDENS=1 to make it); the scene is in " << actualPath;
    }
    const Image difference = compare(picture, expected, count, x, y);
    const bool sameSize = expected.getSize() == picture.getSize();
    if (sameSize && count == 0)
        return ::testing::AssertionSuccess();

    const Path differencePath = output / (name + ".diff.png");
    writeFile(actualPath, encoded);
    writeFile(differencePath, encode(difference));
    auto failure = ::testing::AssertionFailure() << "the scene differs from " << golden << ": ";
    if (sameSize)
        failure << count << " pixels, the first at (" << x << ", " << y << "): " << describePixel(picture, x, y)
                << " instead of " << describePixel(expected, x, y);
    else
        failure << "size " << picture.getWidth() << " x " << picture.getHeight() << " instead of "
                << expected.getWidth() << " x " << expected.getHeight();
    return failure << "\n  actual:     " << actualPath << "\n  difference: " << differencePath;
}
}  // namespace

namespace GoldenImage
{
::testing::AssertionResult matchesGolden(const Image& picture, const char* feature)
{
    const std::string name = ::testing::UnitTest::GetInstance()->current_test_info()->name();
    return compareWithGolden(picture, feature, name, true);
}

::testing::AssertionResult matchesGoldenOf(const Image& picture, const char* feature, const char* testName)
{
    return compareWithGolden(picture, feature, testName, false);
}
}  // namespace GoldenImage
