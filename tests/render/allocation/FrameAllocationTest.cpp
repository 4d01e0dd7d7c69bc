// Once a window's sizes are set, the renderer's part of a frame allocates nothing: the dirty
// region's intersections, the scaled blit from the tree's surface into the window's, and the put
// through the image presenter.

#include "AllocationCounter.h"

#include "render/image/ImageResampler.h"
#include "render/region/Region.h"
#include "render/surface/ImagePresenter.h"
#include "render/surface/ImageSurface.h"
#include "render/surface/MemorySurface.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

using namespace q1framework;

TEST(FrameAllocation, CounterSeesAnAllocation)
{
    AllocationCounter::start();
    char* copy = strdup("counted");
    const long counted = AllocationCounter::stop();
    std::free(copy);
    EXPECT_EQ(counted, 1);
}

TEST(FrameAllocation, IntersectingIntoARegionInSteadyUseAllocatesNothing)
{
    Region dirty, visible;
    const auto frame = [&] {
        dirty.clear();
        dirty.addRectangle(Rectangle(10, 10, 40, 40));
        dirty.addRectangle(Rectangle(30, 30, 60, 20));
        dirty.addRectangle(Rectangle(100, 5, 8, 8));
        dirty.getIntersection(Rectangle(0, 0, 95, 45), visible);
    };
    frame();
    frame();
    AllocationCounter::start();
    frame();
    EXPECT_EQ(AllocationCounter::stop(), 0);
    EXPECT_FALSE(visible.isEmpty());
}

TEST(FrameAllocation, ScalingOneSurfaceIntoAnotherAllocatesNothingAfterTheFirstFrame)
{
    MemorySurface tree(1500, 350), window(1100, 257);
    ImageResampler resampler;
    Image target = window.getImage();
    const Rectangle knob(400, 100, 90, 90);
    resampler.resample(tree.getImage(), target, &knob, 1, -1);
    AllocationCounter::start();
    resampler.resample(tree.getImage(), target, &knob, 1, -1);
    EXPECT_EQ(AllocationCounter::stop(), 0);
}

namespace
{
// Takes the pixels as a window system would: reads them, keeps nothing.
class ReadingPresenter : public ImagePresenter
{
public:
    uint64_t sum = 0;
    void presentPixels(const uint8_t* pixels, int stride, const Point&, const Rectangle* rectangles, int count) override
    {
        for (int index = 0; rectangles != nullptr && index < count; ++index)
            sum += pixels[rectangles[index].y * stride + rectangles[index].x * 4];
    }
};
}  // namespace

TEST(FrameAllocation, PuttingDirtyRectanglesThroughAnImageSurfaceAllocatesNothing)
{
    ReadingPresenter presenter;
    ImageSurface surface(presenter, 1500, 350);
    RectangleList dirty;
    dirty.add(Rectangle(400, 100, 90, 90));
    surface.update(dirty, nullptr, nullptr);
    AllocationCounter::start();
    surface.update(dirty, nullptr, nullptr);
    surface.present();
    EXPECT_EQ(AllocationCounter::stop(), 0);
}
