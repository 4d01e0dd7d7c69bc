// The default look of the controls without film strips: a small panel of controls at rest and in
// use, painted through a container into memory, held to a golden picture and to a few pixels of
// the palette.

#include "ui/lookandfeel/LookAndFeel.h"

#include "GoldenImage.h"
#include "support/TreeHarness.h"
#include "ui/controls/Button.h"
#include "ui/controls/Knob.h"
#include "ui/controls/Slider.h"
#include "ui/controls/ToggleButton.h"

#include <gtest/gtest.h>

#include <array>

using namespace q1framework;

namespace
{
using Pixel = std::array<int, 4>;  // blue, green, red, alpha

Pixel pixelAt(const Image& picture, int x, int y)
{
    const uint8_t* pixel = picture.getPixelPointer(x, y);
    return {pixel[0], pixel[1], pixel[2], pixel[3]};
}

Pixel paletteColour(int id)
{
    const Colour colour = LookAndFeel::getDefault().getColour(id);
    return {colour.getBlue(), colour.getGreen(), colour.getRed(), colour.getAlpha()};
}

template <typename Control>
Control* place(Component& parent, Control* control, const Rectangle& bounds)
{
    control->setBounds(bounds, false);
    parent.addAndMakeVisible(control);
    return control;
}

// The panel: buttons at rest, under the pointer, held down and disabled; toggles of the three
// styles off and on; a horizontal and a vertical slider; knobs at 0, 0.5 and 1, the last with a
// secondary value.
struct ControlsPanel : TreeHarness
{
    ControlsPanel() : TreeHarness(240, 160)
    {
        root->colour = LookAndFeel::getDefault().getColour(LookAndFeel::backgroundColourId);
        root->repaint();
        for (int index = 0; index < 4; ++index)
            buttons[index] = place(*root, new Button(String(index == 3 ? "Off" : "Play")),
                                   Rectangle(8 + index * 58, 8, 52, 22));
        buttons[3]->setEnabled(false, true);
        const char* names[] = {"Box", "Dot", "Lit"};
        for (int style = 0; style < 3; ++style)
            for (int state = 0; state < 2; ++state)
            {
                ToggleButton* toggle = place(*root, new ToggleButton(String(names[style])),
                                             Rectangle(8 + state * 60, 38 + style * 24, 54, 20));
                toggle->setStyle(style);
                toggle->setOn(state == 1, false);
            }
        horizontal = place(*root, new Slider(), Rectangle(130, 42, 100, 16));
        horizontal->setValue(0.3, false);
        vertical = place(*root, new Slider(), Rectangle(214, 64, 16, 52));
        vertical->setValue(0.7, false);
        for (int index = 0; index < 3; ++index)
        {
            knobs[index] = place(*root, new Knob(), Rectangle(126 + index * 30, 70, 28, 28));
            knobs[index]->setValue(index * 0.5, false);
        }
        knobs[2]->setSecondaryValue(0.25);
        Knob* large = place(*root, new Knob(), Rectangle(8, 112, 44, 44));
        large->setValue(0.65, false);
        large->setColour(Knob::knobColourId, Colour(255, 170, 60, 255));

        // A second pointer hovers over the second button while the first holds the third down.
        container.sendMouseEvent(1, ComponentsContainer::moveEvent, Point(70, 18), 0, 0, 0.0f, 0.0f);
        send(ComponentsContainer::moveEvent, Point(130, 18));
        send(ComponentsContainer::pressEvent, Point(130, 18), 1);
        paint();
    }

    Button* buttons[4];
    Slider* horizontal;
    Slider* vertical;
    Knob* knobs[3];
};
}

TEST(LookAndFeelTest, ControlsAtRestAndInUse)
{
    ControlsPanel panel;
    EXPECT_TRUE(GoldenImage::matchesGolden(panel.picture, "controls"));
}

TEST(LookAndFeelTest, ButtonFaceFollowsThePointerAndThePress)
{
    ControlsPanel panel;
    // A spot of each face away from its text: rest, under the pointer, held down; and the outline.
    EXPECT_EQ(pixelAt(panel.picture, 12, 26), paletteColour(LookAndFeel::faceColourId));
    EXPECT_EQ(pixelAt(panel.picture, 70, 26), paletteColour(LookAndFeel::faceHoverColourId));
    EXPECT_EQ(pixelAt(panel.picture, 128, 26), paletteColour(LookAndFeel::faceDownColourId));
    EXPECT_EQ(pixelAt(panel.picture, 30, 8), paletteColour(LookAndFeel::outlineColourId));
}

TEST(LookAndFeelTest, SliderTrackIsLitUpToTheThumb)
{
    ControlsPanel panel;
    // Horizontal, value 0.3: the thumb (16 x 16) starts at x 130 + 0.3 * 84 = 155; the track runs
    // from 138 along y 48 to 51, lit from its start over 0.3 of its 84 pixels.
    EXPECT_EQ(pixelAt(panel.picture, 145, 49), paletteColour(LookAndFeel::accentColourId));
    EXPECT_EQ(pixelAt(panel.picture, 185, 49), paletteColour(LookAndFeel::outlineColourId));
    EXPECT_EQ(pixelAt(panel.picture, 162, 49), paletteColour(LookAndFeel::thumbColourId));
}

TEST(LookAndFeelTest, KnobFaceIsThePaletteFace)
{
    ControlsPanel panel;
    // The middle knob's centre, (126 + 30 + 13.5, 70 + 13.5), lies on its face away from the pointer
    // dot, which sits at the top for 0.5.
    EXPECT_EQ(pixelAt(panel.picture, 169, 86), paletteColour(LookAndFeel::faceColourId));
}

TEST(LookAndFeelTest, PaletteEntriesCanBeReplacedAndUnknownOnesAreTransparent)
{
    LookAndFeel lookAndFeel;
    lookAndFeel.setColour(LookAndFeel::accentColourId, Colour(1, 2, 3, 4));
    EXPECT_EQ(lookAndFeel.getColour(LookAndFeel::accentColourId), Colour(1, 2, 3, 4));
    EXPECT_EQ(lookAndFeel.getColour(LookAndFeel::colourIdCount), Colour());
    EXPECT_EQ(lookAndFeel.getColour(-1), Colour());
}

TEST(LookAndFeelTest, SelectedDefaultServesComponentsWithoutOneOfTheirOwn)
{
    LookAndFeel selected;
    LookAndFeel own;
    Component plain;
    Component styled;
    styled.setLookAndFeel(&own);
    LookAndFeel* builtIn = plain.getLookAndFeel();
    LookAndFeel::setDefault(&selected);
    EXPECT_EQ(plain.getLookAndFeel(), &selected);
    EXPECT_EQ(styled.getLookAndFeel(), &own);
    LookAndFeel::clearDefaultSelection();
    EXPECT_EQ(plain.getLookAndFeel(), builtIn);
}
