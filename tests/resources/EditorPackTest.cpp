#include "PackFile.h"
#include "ToolTest.h"
#include "foundation/string/String.h"
#include "media/image/Image.h"
#include "media/resource/Resource.h"
#include "media/resource/ResourcePack.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

using q1framework::Image;
using q1framework::Resource;
using q1framework::ResourcePack;

namespace
{
// The editor's pictures: entry name, one frame's size (the control's) and the frame count.
struct Expected
{
    const char* name;
    int width;
    int height;
    int frames;
};
const Expected pictures[] = {
    {"KL.0001.tif", 1500, 350, 1},   {"slice_knbAttack", 127, 129, 101}, {"slice_knbDrive", 101, 106, 101},
    {"slice_knbRelease", 123, 131, 101}, {"slice_knbGain", 96, 105, 101}, {"slice_tbtnBypass", 84, 57, 101},
    {"satled.png", 43, 40, 101},    {"attack.png", 110, 34, 3},         {"release.png", 107, 31, 3},
};
const Expected knobs[] = {pictures[1], pictures[2], pictures[3], pictures[4]};

// A pixel of a picture in the pack: premultiplied, 8 bits a channel.
struct Pixel
{
    int red;
    int green;
    int blue;
    int alpha;
};

Pixel pixelAt(const Image& image, int x, int y)
{
    const uint8_t* bytes = image.getPixelPointer(x, y);
    return {bytes[2], bytes[1], bytes[0], bytes[3]};
}

// The sum of the colour channels over one frame: how much light it gives.
long long frameLight(const Image& strip, int frameHeight, int frame)
{
    long long sum = 0;
    for (int y = frame * frameHeight; y < (frame + 1) * frameHeight; ++y)
        for (int x = 0; x < strip.getWidth(); ++x)
        {
            const Pixel pixel = pixelAt(strip, x, y);
            sum += pixel.red + pixel.green + pixel.blue;
        }
    return sum;
}

// Where a knob's pointer points in a frame, in degrees from upright, clockwise positive: the
// direction from the frame's centre to the middle of the pointer's light pixels (the only near
// white in a knob).
double pointerAngle(const Image& strip, const Expected& knob, int frame, double& distance)
{
    double sumX = 0.0;
    double sumY = 0.0;
    int count = 0;
    for (int y = 0; y < knob.height; ++y)
        for (int x = 0; x < knob.width; ++x)
        {
            const Pixel pixel = pixelAt(strip, x, frame * knob.height + y);
            if (std::min({pixel.red, pixel.green, pixel.blue}) > 180)
            {
                sumX += x + 0.5;
                sumY += y + 0.5;
                ++count;
            }
        }
    if (count == 0)
        return NAN;
    const double dx = sumX / count - knob.width / 2.0;
    const double dy = sumY / count - knob.height / 2.0;
    distance = std::hypot(dx, dy);
    return std::atan2(dx, -dy) * 180.0 / M_PI;
}

class EditorPack : public ::testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        pack = new ResourcePack;
        loadProblem = loadPack(EDITOR_PACK, *pack);
    }
    static void TearDownTestSuite()
    {
        delete pack;
        pack = nullptr;
    }
    void SetUp() override { ASSERT_EQ(loadProblem, "") << "build the target kelvane-resources first"; }

    static Image picture(const char* name) { return pack->getImage(name); }

    static ResourcePack* pack;
    static std::string loadProblem;
};
ResourcePack* EditorPack::pack = nullptr;
std::string EditorPack::loadProblem;
}  // namespace

TEST_F(EditorPack, HoldsTheEditorsPicturesInTheRecipesOrder)
{
    ASSERT_EQ(pack->getNumResources(), static_cast<int>(std::size(pictures)));
    for (int index = 0; index < pack->getNumResources(); ++index)
    {
        EXPECT_STREQ(pack->getResource(index)->getName().getCString(), pictures[index].name);
        EXPECT_EQ(pack->getResource(index)->getType(), Resource::imageType) << pictures[index].name;
    }
}

TEST_F(EditorPack, EachStripIsItsFramesAtTheControlsSize)
{
    for (const Expected& expected : pictures)
    {
        const Image image = picture(expected.name);
        EXPECT_EQ(image.getWidth(), expected.width) << expected.name;
        EXPECT_EQ(image.getHeight(), expected.height * expected.frames) << expected.name;
    }
}

TEST_F(EditorPack, TheBackgroundIsOpaque)
{
    const Image background = picture("KL.0001.tif");
    int translucent = 0;
    for (int y = 0; y < background.getHeight(); ++y)
        for (int x = 0; x < background.getWidth(); ++x)
            translucent += pixelAt(background, x, y).alpha != 255;
    EXPECT_EQ(translucent, 0);
}

TEST_F(EditorPack, KnobsPointStraightUpAtTheMiddleFrame)
{
    for (const Expected& knob : knobs)
    {
        double distance = 0.0;
        EXPECT_NEAR(pointerAngle(picture(knob.name), knob, 50, distance), 0.0, 0.5) << knob.name;
        EXPECT_GT(distance, 10.0) << knob.name;
    }
}

TEST_F(EditorPack, KnobsTurnFromMinus135DegreesToPlus135)
{
    for (const Expected& knob : knobs)
    {
        double distance = 0.0;
        EXPECT_NEAR(pointerAngle(picture(knob.name), knob, 0, distance), -135.0, 1.0) << knob.name;
        EXPECT_NEAR(pointerAngle(picture(knob.name), knob, 25, distance), -67.5, 1.0) << knob.name;
        EXPECT_NEAR(pointerAngle(picture(knob.name), knob, 100, distance), 135.0, 1.0) << knob.name;
    }
}

TEST_F(EditorPack, TheLedBrightensFrameByFrame)
{
    const Image led = picture("satled.png");
    long long previous = frameLight(led, 40, 0);
    for (int frame = 1; frame < 101; ++frame)
    {
        const long long light = frameLight(led, 40, frame);
        EXPECT_GE(light, previous) << "frame " << frame;
        previous = light;
    }
    EXPECT_GT(frameLight(led, 40, 100), 3 * frameLight(led, 40, 0));
}

TEST_F(EditorPack, TheBypassButtonLightsWhenOn)
{
    const Image button = picture("slice_tbtnBypass");
    EXPECT_GT(frameLight(button, 57, 100), frameLight(button, 57, 0) * 11 / 10);
}

// Each state lights the third of the selector that a click selects it by.
TEST_F(EditorPack, EachSelectorStateLightsItsOwnThird)
{
    for (const Expected& selector : {pictures[7], pictures[8]})
    {
        const Image strip = picture(selector.name);
        for (int state = 0; state < 3; ++state)
        {
            double sumX = 0.0;
            int count = 0;
            for (int y = 0; y < selector.height; ++y)
                for (int x = 0; x < selector.width; ++x)
                {
                    const Pixel pixel = pixelAt(strip, x, state * selector.height + y);
                    if (pixel.red > 160 && pixel.red > pixel.blue + 60)  // amber
                    {
                        sumX += x + 0.5;
                        ++count;
                    }
                }
            ASSERT_GT(count, 0) << selector.name << " state " << state;
            EXPECT_EQ(static_cast<int>(sumX / count / (selector.width / 3.0)), state) << selector.name;
        }
    }
}

// Rendering the sources twice and packing each gives the same bytes as the build's pack.
class EditorPackRebuilt : public ToolTest
{
};

TEST_F(EditorPackRebuilt, IsByteIdenticalToTheBuiltPack)
{
    std::string built;
    ASSERT_EQ(readWholeFile(EDITOR_PACK, built), "");
    for (const char* attempt : {"one", "two"})
    {
        program = KELVANE_ART;
        const Run rendered = run({"render", ART_FONT_FOLDER, ART_SOURCE_FOLDER, path(std::string(attempt) + "/art")});
        ASSERT_EQ(rendered.status, 0) << rendered.err;
        std::filesystem::copy_file(EDITOR_RECIPE, path(std::string(attempt) + "/editor.recipe"));
        program = KELVANE_PACK;
        const Run packed = run({"build", path(std::string(attempt) + "/editor.recipe"),
                                path(std::string(attempt) + "/resources.bin")});
        ASSERT_EQ(packed.status, 0) << packed.err;
        EXPECT_TRUE(read(std::string(attempt) + "/resources.bin") == built) << attempt;
    }
}
