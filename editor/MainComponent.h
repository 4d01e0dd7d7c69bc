#pragma once

#include "media/image/Image.h"
#include "ui/component/Component.h"

class DriveLed;
class LevelMeter;
class MultiStateButton;

namespace q1framework
{
class AdapterComponent;
class AudioPluginEditor;
class EditedPlugin;
class Knob;
class RenderingContext;
class ToggleButton;
}  // namespace q1framework

// Kelvane's editor at the picture's own size and coordinates: the background picture
// "KL.0001.tif" with the seven controls and three indicators on it. The scaling container
// (an AdapterComponent) shows it at whatever size the user gave the editor; nothing here knows
// that size except the resize drag, the meters and the LED.
//
// Children, in picture pixels (x, y, w, h), with their resource and their tag, which is the
// parameter's index (KLParameters):
//   attack knob            510, 128, 127, 129  "slice_knbAttack"   101 frames  0
//   drive knob             645, 110, 101, 106  "slice_knbDrive"    101 frames  6
//   release knob           755, 127, 123, 131  "slice_knbRelease"  101 frames  1
//   gain knob              891, 110,  96, 105  "slice_knbGain"     101 frames  3
//   bypass toggle          897, 228,  84,  57  "slice_tbtnBypass"  101 frames  2
//   input meter            177,  56, 272, 131
//   output meter          1055,  56, 272, 131
//   drive LED              673, 228,  43,  40  "satled.png"        101 frames
//   attack time selector   519, 260, 110,  34  "attack.png"          3 frames  4
//   release time selector  767, 261, 107,  31  "release.png"         3 frames  5
// The knobs step 0.01 a wheel notch and 0.0025 a pixel of drag (400 pixels of the picture span
// the range), and reset to the parameter's default on a double click.
//
// From a control to the host: a press on a tagged control begins a gesture, its value changes
// are the parameter's new values, its release ends the gesture; all go to the editor's
// listeners. From the host to a control: refreshControl, which leaves a control alone while it
// is pressed, so that automation never fights the user's hand.
//
// The frame update (tick): the meters take levelToPosition of the plug-in's input and output
// peaks, the LED the square of the drive peak since the last frame (the meters of KLMeters,
// through EditedPlugin::readMeter).
//
// Resizing: the strip right of x = 1350 is the resize zone (the left-right cursor shows there).
// A drag that starts there sets the editor's width to the width at the press plus the pointer's
// travel on the screen, limited to 300..1499, and the height to width * 350 / 1500 (truncated),
// keeps that size in the plug-in's state and asks the editor's listeners for it.
//
// There is no licence check: the editor always runs licensed, with no notice and no licence
// button.
//
// Thread contract: main thread only.
class MainComponent : public q1framework::Component
{
public:
    // The picture's size when "KL.0001.tif" cannot be read; the layout is made for it.
    static constexpr int pictureWidth = 1500;
    static constexpr int pictureHeight = 350;
    // The resize zone starts at this x (picture pixels).
    static constexpr int resizeZoneLeft = 1350;
    static constexpr int minimumWidth = 300;
    static constexpr int maximumWidth = 1499;
    // Its own tag, apart from the parameters'.
    static constexpr int ownTag = 255;

    // container: the scaling container that will show it; plugin: what the editor edits;
    // editor: the editor whose listeners hear the user. None is owned; all outlive it.
    MainComponent(q1framework::AdapterComponent& container, q1framework::EditedPlugin& plugin,
                  q1framework::AudioPluginEditor& editor);
    ~MainComponent() override;

    // Shows the plug-in's stored value of parameter tag on its control, without telling
    // anyone, unless the control is pressed now: then answers false, and the caller asks again
    // later. Tags without a control do nothing (true).
    bool refreshControl(int tag);
    // The needle position for a linear level: 1.0 at 1.412 and above, 0.0 at 0.1 and below,
    // linear between the rows 1.412 -> 1.0, 1.0 -> 0.66, 0.707 -> 0.39, 0.5 -> 0.22,
    // 0.25 -> 0.07, 0.1 -> 0.0.
    static float levelToPosition(float level);
    // The editor's size for a width (pixels): the width limited to minimumWidth..maximumWidth,
    // the height from it by the picture's aspect, truncated.
    q1framework::Point sizeForWidth(int width) const;
    // The editor's drawing over the frame: the input meter, the output meter, then the LED.
    void drawResources(q1framework::RenderingContext& context);

    // The control of parameter tag, or null.
    q1framework::Component* getControl(int tag);
    q1framework::Knob* getAttackKnob() const { return attackKnob; }
    LevelMeter* getInputMeter() const { return inputMeter; }
    LevelMeter* getOutputMeter() const { return outputMeter; }
    DriveLed* getDriveLed() const { return driveLed; }
    MultiStateButton* getAttackTimeSelector() const { return attackTimeSelector; }
    bool isInResizeZone() const { return inResizeZone; }

    void paint(q1framework::SoftwareGraphics& graphics) override;
    void tick() override;
    void mouseMove(const q1framework::MouseEvent& event) override;
    void mouseDown(const q1framework::MouseEvent& event) override;
    void mouseDrag(const q1framework::MouseEvent& event) override;
    void childValueChanged(q1framework::Component* child) override;
    void childMouseDown(q1framework::Component* child, const q1framework::MouseEvent& event) override;
    void childMouseUp(q1framework::Component* child, const q1framework::MouseEvent& event) override;

private:
    // MainComponentLayout.cpp: the ten children of the table above.
    void createChildren();
    // The parameter index of a child, or -1.
    static int tagOf(q1framework::Component* child);

    q1framework::Point dragStart;   // screen position at the press
    bool inResizeZone = false;
    q1framework::Point lastMouse;   // picture pixels
    q1framework::Image background;
    q1framework::Point startSize;   // the editor's size at the press
    q1framework::EditedPlugin& plugin;
    q1framework::Knob* attackKnob = nullptr;
    q1framework::Knob* driveKnob = nullptr;
    q1framework::Knob* releaseKnob = nullptr;
    q1framework::Knob* gainKnob = nullptr;
    q1framework::AdapterComponent& container;
    q1framework::AudioPluginEditor& editor;
    q1framework::ToggleButton* bypassButton = nullptr;
    LevelMeter* inputMeter = nullptr;
    LevelMeter* outputMeter = nullptr;
    DriveLed* driveLed = nullptr;
    MultiStateButton* attackTimeSelector = nullptr;
    MultiStateButton* releaseTimeSelector = nullptr;
};
