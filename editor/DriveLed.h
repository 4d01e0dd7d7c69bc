#pragma once

#include "editor/ComponentEx.h"
#include "media/image/Image.h"

namespace q1framework
{
class Texture;
}

// The drive indicator: a lamp that glows with the drive stage's output. Its picture is a film
// strip, frames stacked vertically from dark to fully lit; MainComponent sets the value once a
// frame (the square of the drive peak since the last frame) and the lamp shows frame
// trunc(value * (frames - 1)), drawn over the component's bounds through the rendering context.
//
// Thread contract: main thread only.
class DriveLed : public ComponentEx
{
public:
    explicit DriveLed(q1framework::AdapterComponent& container);
    ~DriveLed() override;

    // The film strip and its frame count; with 0 frames nothing is drawn.
    void setImage(const q1framework::Image& strip, int frames);
    int getFrameCount() const { return numFrames; }
    // 0..1 (limited); a change of frame asks the window for a frame. A lamp tells no one of its
    // value: notify is not read.
    void setValue(double value, bool notify) override;
    double getValue() override { return value; }
    // The frame shown for the present value; 0 without frames.
    int getFrameIndex() const;

    void drawResource(q1framework::RenderingContext& context) override;

protected:
    void releaseTextures() override;

private:
    double value = 0.0;
    int numFrames = 0;
    q1framework::Image image;
    q1framework::Texture* texture = nullptr;  // owned; made from image at the first draw
};
