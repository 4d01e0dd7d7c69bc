#pragma once

#include "editor/ComponentEx.h"

namespace q1framework
{
class Texture;
}

// A needle meter: a dark needle turning over the meter face printed in the background picture,
// with a faint shadow beside it. It adds no ballistics of its own: MainComponent sets the needle
// position once a frame from the plug-in's decaying peak (levelToPosition).
//
// The needle turns about a pivot 20 picture pixels below the component's bottom centre, by
// angle = level * 1.82 - 0.91 radians from upright (clockwise positive). Its length changes with
// the angle, angle^2 * 29 + height - 26 picture pixels, so that the tip runs along the flat arc of
// the printed scale. It is drawn clipped to the component's bounds, through the rendering
// context: the needle at opacity 0.9, then its shadow 7 pixels right and 1 up at 0.05.
//
// The needle is a texture, a bar of needleWidth texels in a texture textureWidth texels wide
// with transparent columns either side (so that the filtered edge stays soft), stretched to 4
// picture pixels in every scale class; the class, and with it the texture, changes only when
// the scale crosses from one class to another (chooseScaleClass).
//
// Thread contract: main thread only.
class LevelMeter : public ComponentEx
{
public:
    // The needle texture made for one range of scales.
    struct ScaleClass
    {
        int step;          // (int)(1 / scale + 1), limited to 1..8; 1 for a scale of 0
        int needleWidth;   // texels of the bar: 4, 2 or 1
        int textureWidth;  // texels of the texture: 8, 6 or 5
    };

    explicit LevelMeter(q1framework::AdapterComponent& container);
    ~LevelMeter() override;

    // The needle position, 0..1 (limited); a change asks the window for a frame.
    void setLevel(float level);
    float getLevel() const { return level; }

    // The class for a scale (window pixels per picture pixel): step 1 for scales above 1 gives a
    // bar of 4 in 8 texels, steps 2 and 3 give 2 in 6, step 4 and beyond 1 in 5.
    static ScaleClass chooseScaleClass(double scale);
    // The needle's angle in radians for a position 0..1.
    static double angleOfLevel(float level);

    // The needle and its shadow, through context.
    void drawResource(q1framework::RenderingContext& context) override;

    // The scale class of the texture now held, 0 before the first draw.
    int getScaleStep() const { return scaleStep; }
    const q1framework::Texture* getTexture() const { return texture; }

protected:
    void releaseTextures() override;

private:
    void makeTexture(q1framework::RenderingContext& context);
    // One pass of the needle: its rectangle (picture pixels) turned by angle about its bottom
    // centre, in window pixels.
    void drawNeedle(double left, double top, double width, double length, double angle, float alpha);

    float level = 0.0f;
    int needleWidth = 0;
    int textureWidth = 0;
    int scaleStep = 0;
    q1framework::Texture* texture = nullptr;  // owned; null until drawn and after a loss
};
