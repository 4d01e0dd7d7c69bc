#include "dsp/DemoDrumLoop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>

TEST(DemoDrumLoop, IsADeterministicStereoLoopOfLoudAndSoftHits)
{
    const DemoDrumLoop loop;
    ASSERT_EQ(loop.left().size(), 8u * 44100u);
    ASSERT_EQ(loop.right().size(), loop.left().size());
    float peak = 0.0f;
    for (std::size_t i = 0; i < loop.left().size(); ++i)
        peak = std::max({peak, std::fabs(loop.left()[i]), std::fabs(loop.right()[i])});
    EXPECT_FLOAT_EQ(peak, 0.5f);
    EXPECT_NE(loop.left(), loop.right()) << "the hats are panned";
    const DemoDrumLoop again;
    EXPECT_EQ(again.left(), loop.left());

    std::set<DemoDrumLoop::Instrument> instruments;
    bool soft = false;
    int previous = -1;
    for (const DemoDrumLoop::Hit& hit : loop.hits())
    {
        instruments.insert(hit.instrument);
        soft = soft || hit.velocity < 0.5f;
        ASSERT_GE(hit.frame, previous) << "in time order";
        previous = hit.frame;
        if (hit.instrument != DemoDrumLoop::Instrument::kick || hit.velocity < 0.9f)
            continue;
        // A loud kick stands out of what came just before it.
        float before = 0.0f;
        float after = 0.0f;
        for (int i = std::max(0, hit.frame - 200); i < hit.frame; ++i)
            before = std::max(before, std::fabs(loop.left()[i]));
        for (int i = hit.frame; i < hit.frame + 441; ++i)
            after = std::max(after, std::fabs(loop.left()[i]));
        EXPECT_GT(after, 2.0f * before) << "kick at frame " << hit.frame;
    }
    EXPECT_EQ(instruments.size(), 4u);
    EXPECT_TRUE(soft);
}
