#pragma once

#include "Probe.h"

#include "media/image/Image.h"
#include "render/region/Region.h"
#include "ui/container/ComponentsContainer.h"

#include <gtest/gtest.h>

#include <cstring>
#include <ostream>
#include <vector>

// A container of the given size with a probe as its root, visible, a log for the probes, and a
// picture to paint into. What the container tells its listener is recorded.
struct TreeHarness : q1framework::ComponentsContainer::Listener
{
    TreeHarness(int width, int height) : container(nullptr), picture(width, height, true)
    {
        root = new Probe("root", &log, q1framework::Colour(20, 20, 20, 255));
        root->setOpaque(true);
        container.setRootComponent(root, true, true);
        container.setSize(q1framework::Point(width, height));
        container.setListener(this);
        settle();
    }

    // Paints what is dirty into the picture and clears the regions and the log.
    bool settle()
    {
        const bool painted = paint();
        container.clearDirty();
        log.clear();
        invalidated.clear();
        return painted;
    }

    bool paint()
    {
        return container.paint(picture.getPixelPointer(0, 0), picture.getSize(), picture.getStride(), false);
    }

    // A pointer event on record 0 (see ComponentsContainer::sendMouseEvent).
    void send(int kind, q1framework::Point position, int button = 0, int clicks = 1, float wheelY = 0.0f)
    {
        container.sendMouseEvent(0, kind, position, button, clicks, 0.0f, wheelY);
    }

    // Moves to position, presses and releases the left button there.
    void click(q1framework::Point position, int clicks = 1)
    {
        send(q1framework::ComponentsContainer::moveEvent, position);
        send(q1framework::ComponentsContainer::pressEvent, position, 1, clicks);
        send(q1framework::ComponentsContainer::releaseEvent, position, 1);
    }

    // The dirty region as rectangles, for comparisons.
    std::vector<q1framework::Rectangle> dirtyRectangles() const { return rectanglesOf(container.getDirtyRegion()); }

    static std::vector<q1framework::Rectangle> rectanglesOf(const q1framework::Region& region)
    {
        q1framework::RectangleList list;
        region.getRectangles(list);
        return std::vector<q1framework::Rectangle>(list.begin(), list.end());
    }

    // A region of the given rectangles.
    static q1framework::Region regionOf(std::initializer_list<q1framework::Rectangle> rectangles)
    {
        q1framework::Region region;
        for (const q1framework::Rectangle& rectangle : rectangles)
            region.addRectangle(rectangle);
        return region;
    }

    void areaInvalidated(const q1framework::Rectangle& area) override { invalidated.push_back(area); }
    void areaMoved(const q1framework::Rectangle& source, const q1framework::Point& destination) override
    {
        moved.push_back({source, destination});
    }
    void areaCopied(const q1framework::Rectangle& source, const q1framework::Point& destination) override
    {
        copied.push_back({source, destination});
    }

    struct Move
    {
        q1framework::Rectangle source;
        q1framework::Point destination;
    };

    Probe::Log log;
    q1framework::ComponentsContainer container;
    q1framework::Image picture;
    Probe* root = nullptr;
    std::vector<q1framework::Rectangle> invalidated;
    std::vector<Move> moved;
    std::vector<Move> copied;
};

// The kinds of ComponentsContainer::sendMouseEvent under short names.
namespace PointerKind
{
constexpr int wheel = q1framework::ComponentsContainer::wheelEvent;
constexpr int press = q1framework::ComponentsContainer::pressEvent;
constexpr int move = q1framework::ComponentsContainer::moveEvent;
constexpr int release = q1framework::ComponentsContainer::releaseEvent;
constexpr int exited = q1framework::ComponentsContainer::exitEvent;
}  // namespace PointerKind

// Whether two pictures have the same size and the same bytes in every pixel; names the first
// difference.
inline ::testing::AssertionResult samePixels(const q1framework::Image& actual, const q1framework::Image& expected)
{
    if (actual.getSize() != expected.getSize())
        return ::testing::AssertionFailure() << "the sizes differ";
    for (int y = 0; y < expected.getHeight(); ++y)
        for (int x = 0; x < expected.getWidth(); ++x)
            if (std::memcmp(actual.getPixelPointer(x, y), expected.getPixelPointer(x, y), 4) != 0)
                return ::testing::AssertionFailure() << "first difference at " << x << ", " << y;
    return ::testing::AssertionSuccess();
}

// gtest prints for the toolkit's value types.
namespace q1framework
{
inline void PrintTo(const Rectangle& rectangle, std::ostream* stream)
{
    *stream << "(" << rectangle.x << ", " << rectangle.y << ", " << rectangle.w << " x " << rectangle.h << ")";
}

inline void PrintTo(const Point& point, std::ostream* stream)
{
    *stream << "(" << point.x << ", " << point.y << ")";
}
}  // namespace q1framework
