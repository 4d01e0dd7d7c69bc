#include "render/surface/ImagePresenter.h"
#include "render/surface/ImageSurface.h"

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

using namespace q1framework;

namespace
{
// Keeps what each put asked for, and the buffer's first pixel word at each rectangle.
class RecordingPresenter : public ImagePresenter
{
public:
    struct Put
    {
        std::vector<Rectangle> rectangles;
        std::vector<uint32_t> firstPixels;
        Point size;
    };
    std::vector<Put> puts;

    void presentPixels(const uint8_t* pixels, int stride, const Point& size, const Rectangle* rectangles,
                       int count) override
    {
        Put put;
        put.size = size;
        for (int index = 0; rectangles != nullptr && index < count; ++index)
        {
            put.rectangles.push_back(rectangles[index]);
            uint32_t pixel = 0;
            std::memcpy(&pixel, pixels + rectangles[index].y * stride + rectangles[index].x * 4, 4);
            put.firstPixels.push_back(pixel);
        }
        puts.push_back(put);
    }
};

void setPixel(Surface& surface, int x, int y, uint32_t pixel)
{
    int stride = 0;
    std::memcpy(surface.getPixels(&stride) + y * stride + x * 4, &pixel, 4);
}

uint32_t getPixel(Surface& surface, int x, int y)
{
    int stride = 0;
    uint32_t pixel = 0;
    std::memcpy(&pixel, surface.getPixels(&stride) + y * stride + x * 4, 4);
    return pixel;
}
}  // namespace

TEST(ImageSurface, UpdatePutsTheDirtyRectanglesOfItsPixels)
{
    RecordingPresenter presenter;
    ImageSurface surface(presenter, 64, 48);
    setPixel(surface, 10, 12, 0xff336699);
    RectangleList dirty;
    dirty.add(Rectangle(10, 12, 5, 5));
    dirty.add(Rectangle(0, 0, 1, 1));
    surface.update(dirty, nullptr, nullptr);
    ASSERT_EQ(presenter.puts.size(), 1u);
    EXPECT_EQ(presenter.puts[0].size, Point(64, 48));
    EXPECT_EQ(presenter.puts[0].rectangles, (std::vector<Rectangle>{Rectangle(10, 12, 5, 5), Rectangle(0, 0, 1, 1)}));
    EXPECT_EQ(presenter.puts[0].firstPixels, (std::vector<uint32_t>{0xff336699, 0}));
}

TEST(ImageSurface, PresentPutsNoRectangleOfItsOwn)
{
    RecordingPresenter presenter;
    ImageSurface surface(presenter, 64, 48);
    surface.present();
    ASSERT_EQ(presenter.puts.size(), 1u);
    EXPECT_TRUE(presenter.puts[0].rectangles.empty());
}

TEST(ImageSurface, MovedPixelsArePutAtTheirDestination)
{
    RecordingPresenter presenter;
    ImageSurface surface(presenter, 64, 48);
    setPixel(surface, 4, 5, 0xff010203);
    Rectangle region(4, 5, 10, 6);
    Point destination(20, 30);
    surface.moveRegion(region, destination);
    EXPECT_EQ(getPixel(surface, 20, 30), 0xff010203u);
    ASSERT_EQ(presenter.puts.size(), 1u);
    EXPECT_EQ(presenter.puts[0].rectangles, std::vector<Rectangle>{Rectangle(20, 30, 10, 6)});
}

TEST(ImageSurface, AMovePartlyOutsideThePicturePutsWhatLandsInside)
{
    RecordingPresenter presenter;
    ImageSurface surface(presenter, 64, 48);
    setPixel(surface, 0, 2, 0xff0a0b0c);
    // The source starts 3 pixels left of the picture; its column 3 (x = 0) lands at x = 63.
    surface.copyRegion(nullptr, Rectangle(-3, 2, 10, 4), Point(60, 44));
    EXPECT_EQ(getPixel(surface, 63, 44), 0xff0a0b0cu);
    ASSERT_EQ(presenter.puts.size(), 1u);
    EXPECT_EQ(presenter.puts[0].rectangles, std::vector<Rectangle>{Rectangle(63, 44, 1, 4)});
}
