#include "editor/LevelMeter.h"

#include "media/image/Image.h"
#include "render/context/Texture.h"

#include <algorithm>

using namespace q1framework;

namespace
{
// The needle in every scale class: 4 picture pixels wide, of this colour.
constexpr int needlePictureWidth = 4;
constexpr uint8_t needleGrey = 20;
// The pivot lies this far below the component's bottom edge; the length at upright leaves this
// much of the face above the tip.
constexpr double pivotBelowBottom = 20.0;
constexpr double lengthShortOfHeight = 26.0;
// The tip's arc: the length grows by this much times the angle squared.
constexpr double lengthGrowth = 29.0;
// Positions 0 and 1 are this far either side of upright, in radians.
constexpr double halfSweep = 0.91;
constexpr float needleOpacity = 0.9f;
constexpr float shadowOpacity = 0.05f;
constexpr double shadowOffsetX = 7.0;
constexpr double shadowOffsetY = -1.0;
}  // namespace

LevelMeter::LevelMeter(AdapterComponent& scalingContainer) : ComponentEx(scalingContainer) {}

LevelMeter::~LevelMeter()
{
    releaseTextures();
}

void LevelMeter::setLevel(float newLevel)
{
    newLevel = std::clamp(newLevel, 0.0f, 1.0f);
    if (newLevel == level)
        return;
    level = newLevel;
    overlayChanged();
}

LevelMeter::ScaleClass LevelMeter::chooseScaleClass(double scale)
{
    const int step = scale > 0.0 ? std::clamp(static_cast<int>(1.0 / scale + 1.0), 1, 8) : 1;
    if (step == 1)
        return {step, 4, 8};
    if (step <= 3)
        return {step, 2, 6};
    return {step, 1, 5};
}

double LevelMeter::angleOfLevel(float position)
{
    return position * 2.0 * halfSweep - halfSweep;
}

void LevelMeter::releaseTextures()
{
    delete texture;
    texture = nullptr;
}

void LevelMeter::makeTexture(RenderingContext& context)
{
    releaseTextures();
    Image bar(textureWidth, 2 * getHeight(), true);
    const int left = (textureWidth - needleWidth) / 2;
    for (int y = 0; y < bar.getHeight(); ++y)
        for (int x = left; x < left + needleWidth; ++x)
        {
            uint8_t* pixel = bar.getPixelPointer(x, y);
            pixel[0] = pixel[1] = pixel[2] = needleGrey;
            pixel[3] = 255;
        }
    texture = context.createTextureFromImage(bar, 1, false);
}

void LevelMeter::drawResource(RenderingContext& context)
{
    attachTo(context);
    double scaleX = 1.0, scaleY = 1.0;
    getScales(scaleX, scaleY);
    const ScaleClass chosen = chooseScaleClass(scaleX);
    if (chosen.step != scaleStep)
    {
        releaseTextures();
        scaleStep = chosen.step;
        needleWidth = chosen.needleWidth;
        textureWidth = chosen.textureWidth;
    }
    if (texture == nullptr || !texture->isValid())
        makeTexture(context);
    if (texture == nullptr)
        return;

    const double angle = angleOfLevel(level);
    const int width = getWidth(), height = getHeight();
    const double length = angle * angle * lengthGrowth + (height - lengthShortOfHeight);
    const double top = (height - length) + getY() + pivotBelowBottom;
    // The texture's transparent columns are stretched with the bar, so the drawn quad is wider
    // than the needle: textureWidth texels at needlePictureWidth / needleWidth pixels each.
    const int drawnWidth = needlePictureWidth / needleWidth * textureWidth;
    const int left = width / 2 - drawnWidth / 2 + getX();

    const Rectangle saved = context.getClip();
    context.setClip(getWindowArea().toRectangle(0));
    drawNeedle(left, top, drawnWidth, length, angle, needleOpacity);
    drawNeedle(left + shadowOffsetX, top + shadowOffsetY, drawnWidth, length, angle, shadowOpacity);
    context.setClip(saved);
}

void LevelMeter::drawNeedle(double left, double top, double width, double length, double angle, float alpha)
{
    const double windowLeft = toWindowX(left), windowTop = toWindowY(top);
    const double destination[4] = {windowLeft, windowTop, toWindowX(left + width) - windowLeft,
                                   toWindowY(top + length) - windowTop};
    const double source[4] = {0.0, 0.0, static_cast<double>(texture->getWidth(1)),
                              static_cast<double>(texture->getHeight(1))};
    texture->drawRotated(alpha, angle, destination[0] + destination[2] * 0.5, destination[1] + destination[3], source,
                         destination);
}
