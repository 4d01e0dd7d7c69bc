#pragma once

#include "foundation/string/String.h"
#include "media/image/Image.h"
#include "render/context/RenderingContext.h"
#include "render/context/Texture.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

// A rendering context in memory, for the tests of what the interface does on its own (listeners,
// textures from images, surfaces over textures): its textures keep their texels in an Image and
// write down every rectangle uploaded and every quad drawn. The OpenGL implementation has tests
// of its own under a display.
class MemoryContext : public q1framework::RenderingContext
{
public:
    class MemoryTexture : public q1framework::Texture
    {
    public:
        MemoryTexture(MemoryContext& owner, int width, int height, int kind)
            : Texture(&owner, width, height, kind), texels(width, height, true, 0), context(owner)
        {
            ++owner.liveTextures;
        }
        ~MemoryTexture() override { --context.liveTextures; }

        void clear() override { texels.fill(0, 0, 0, 0); }

        void upload(const q1framework::Image& image, const q1framework::Rectangle* rectangles, int count,
                    bool unpremultiply) override
        {
            const q1framework::Rectangle limit(0, 0, std::min(image.getWidth(), width), std::min(image.getHeight(), height));
            for (int index = 0; index < count; ++index)
            {
                context.uploads.push_back(rectangles[index]);
                const q1framework::Rectangle part = rectangles[index].getIntersection(limit);
                for (int y = part.y; y < part.getBottom(); ++y)
                    std::memcpy(texels.getPixelPointer(part.x, y), image.getPixelPointer(part.x, y),
                                static_cast<size_t>(part.w) * 4);
            }
            unpremultiplied = unpremultiply;
        }

        void drawQuad(const double source[4], const double corners[8], float alpha) override
        {
            Quad quad;
            std::copy(source, source + 4, quad.source);
            std::copy(corners, corners + 8, quad.corners);
            quad.alpha = alpha;
            context.quads.push_back(quad);
        }

        q1framework::Image texels;
        bool unpremultiplied = false;

    private:
        MemoryContext& context;
    };

    struct Quad
    {
        double source[4];
        double corners[8];
        float alpha;
    };

    ~MemoryContext() override { notifyDeletion(); }

    // Refuses textures while set.
    bool refuseTextures = false;
    int liveTextures = 0;
    std::vector<q1framework::Rectangle> uploads;
    std::vector<Quad> quads;

    q1framework::Texture* createTexture(int width, int height, int, int kind) override
    {
        return refuseTextures ? nullptr : new MemoryTexture(*this, width, height, kind);
    }
    q1framework::Rectangle getClip() override { return clip; }
    void setClip(const q1framework::Rectangle& area) override { clip = area; }
    void drawGradientRect(const q1framework::Rectangle& area, const q1framework::Colour corners[4]) override
    {
        drawn.push_back("outline " + describe(area, corners));
    }
    void fillGradientRect(const q1framework::Rectangle& area, const q1framework::Colour corners[4]) override
    {
        drawn.push_back("fill " + describe(area, corners));
    }
    void drawLine(int, int, int, int, const q1framework::Colour&) override {}
    void fillCircle(const q1framework::Rectangle&, const q1framework::Colour&) override {}
    void setSize(int width, int height) override { size = q1framework::Point(width, height); }
    q1framework::Point getSize() override { return size; }
    void* getNativeContext() override { return this; }
    void beginFrame() override {}
    void endFrame() override {}

    std::vector<std::string> drawn;

private:
    static std::string describe(const q1framework::Rectangle& area, const q1framework::Colour corners[4])
    {
        std::string text = std::to_string(area.x) + "," + std::to_string(area.y) + "," + std::to_string(area.w) + ","
                           + std::to_string(area.h);
        for (int corner = 0; corner < 4; ++corner)
            text += " " + std::string(corners[corner].toString().getCString());
        return text;
    }

    q1framework::Rectangle clip;
    q1framework::Point size;
};
