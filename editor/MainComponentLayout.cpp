// MainComponent: the ten children at the background picture's coordinates, with their pictures
// from the shared resource pack.

#include "editor/DriveLed.h"
#include "editor/LevelMeter.h"
#include "editor/MainComponent.h"
#include "editor/MultiStateButton.h"
#include "media/resource/ResourcePack.h"
#include "plugin/KLParameters.h"
#include "plugin/SharedResourcePack.h"
#include "ui/controls/Knob.h"
#include "ui/controls/ToggleButton.h"

using namespace q1framework;

namespace
{
constexpr int stripFrames = 101;
constexpr int selectorStates = 3;
// A knob: value per wheel notch, value per pixel of drag.
constexpr float knobWheelStep = 0.01f;
constexpr double knobSensitivity = 0.0025;

Image pictureNamed(const char* name)
{
    const ResourcePack* pack = SharedResourcePack::get();
    return pack != nullptr ? pack->getImage(String(name)) : Image();
}

Knob* makeKnob(const Rectangle& bounds, const char* strip, int tag)
{
    auto* knob = new Knob();
    knob->setBounds(bounds, false);
    knob->setImage(pictureNamed(strip), stripFrames);
    knob->setComponentId(tag);
    knob->setWheelStep(knobWheelStep);
    knob->setSensitivity(knobSensitivity);
    knob->setDefaultValue(KLParameters::getDefault(tag));
    return knob;
}

MultiStateButton* makeSelector(const Rectangle& bounds, const char* strip, int tag)
{
    auto* selector = new MultiStateButton();
    selector->setBounds(bounds, false);
    selector->setImage(pictureNamed(strip), selectorStates);
    selector->setComponentId(tag);
    selector->setNumStates(selectorStates);
    selector->setStateRule([](double value) { return KLParameters::getTimeState(static_cast<float>(value)); });
    return selector;
}
}  // namespace

void MainComponent::createChildren()
{
    attackKnob = makeKnob(Rectangle(510, 128, 127, 129), "slice_knbAttack", KLParameters::attack);
    driveKnob = makeKnob(Rectangle(645, 110, 101, 106), "slice_knbDrive", KLParameters::drive);
    releaseKnob = makeKnob(Rectangle(755, 127, 123, 131), "slice_knbRelease", KLParameters::release);
    gainKnob = makeKnob(Rectangle(891, 110, 96, 105), "slice_knbGain", KLParameters::gain);

    bypassButton = new ToggleButton(String());
    bypassButton->setBounds(Rectangle(897, 228, 84, 57), false);
    bypassButton->setImage(pictureNamed("slice_tbtnBypass"), stripFrames);
    bypassButton->setComponentId(KLParameters::bypass);

    inputMeter = new LevelMeter(container);
    inputMeter->setBounds(Rectangle(177, 56, 272, 131), false);
    outputMeter = new LevelMeter(container);
    outputMeter->setBounds(Rectangle(1055, 56, 272, 131), false);

    driveLed = new DriveLed(container);
    driveLed->setBounds(Rectangle(673, 228, 43, 40), false);
    driveLed->setImage(pictureNamed("satled.png"), stripFrames);

    attackTimeSelector = makeSelector(Rectangle(519, 260, 110, 34), "attack.png", KLParameters::attackTime);
    releaseTimeSelector = makeSelector(Rectangle(767, 261, 107, 31), "release.png", KLParameters::releaseTime);

    for (Component* child : {static_cast<Component*>(attackKnob), static_cast<Component*>(driveKnob),
                             static_cast<Component*>(releaseKnob), static_cast<Component*>(gainKnob),
                             static_cast<Component*>(bypassButton), static_cast<Component*>(inputMeter),
                             static_cast<Component*>(outputMeter), static_cast<Component*>(driveLed),
                             static_cast<Component*>(attackTimeSelector),
                             static_cast<Component*>(releaseTimeSelector)})
        addAndMakeVisible(child);
}
