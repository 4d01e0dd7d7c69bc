// LV2EditedPlugin: the plug-in as the port protocol shows it to the editor, with and without the
// plug-in's own instance.

#include "host/lv2/ui/LV2EditedPlugin.h"
#include "host/lv2/ui/LV2UIEffect.h"
#include "plugin/AudioBus.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/KLMeters.h"
#include "plugin/KLParameters.h"
#include "plugin/PluginEditorView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

using namespace q1framework;

namespace
{
const LV2PortLayout layout(2, 2, KLParameters::count, KLMeters::count);

uint32_t controlPort(int parameter)
{
    return layout.getControlPort(parameter);
}

uint32_t meterPort(int meter)
{
    return layout.getMeterPort(meter);
}

// An editor's marks, attached while it exists.
class AttachedView : public PluginEditorView
{
public:
    explicit AttachedView(EditedPlugin& plugin) : plugin(plugin) { plugin.addEditor(this); }
    ~AttachedView() override { plugin.removeEditor(this); }

    EditedPlugin& plugin;
};

// One loud block through the plug-in, on its own buffers.
void processLoudBlock(KLAudioPlugin& plugin)
{
    plugin.prepare(256, true, 44100.0);
    plugin.releaseChannelBuffers();
    std::vector<float> left(256, 0.9f), right = left;
    float* channels[2] = {left.data(), right.data()};
    plugin.getAudioInput(0).setChannelPointers(channels, 2);
    plugin.getAudioOutput(0).setChannelPointers(channels, 2);
    TimeInfo timeInfo;
    plugin.process(timeInfo, 256);
}
}  // namespace

TEST(LV2EditedPlugin, AControlPortsPhysicalValueBecomesItsParametersValueAndMarksTheEditors)
{
    LV2EditedPlugin edited(layout, getLV2UIEffect(), nullptr);
    AttachedView view(edited);
    edited.portChanged(controlPort(KLParameters::gain), -4.5f);
    EXPECT_FLOAT_EQ(static_cast<float>(edited.getParameter(KLParameters::gain)), 0.25f);
    EXPECT_EQ(view.takeChanged(), uint64_t{1} << KLParameters::gain);
    edited.portChanged(controlPort(KLParameters::releaseTime), 2.0f);
    EXPECT_EQ(edited.getParameter(KLParameters::releaseTime), 1.0);
}

TEST(LV2EditedPlugin, BeforeAnyNotificationParametersHoldTheDefaultsWithoutTheInstance)
{
    LV2EditedPlugin edited(layout, getLV2UIEffect(), nullptr);
    ASSERT_EQ(edited.getNumParameters(), KLParameters::count);
    for (int index = 0; index < KLParameters::count; ++index)
        EXPECT_FLOAT_EQ(static_cast<float>(edited.getParameter(index)), KLParameters::getDefault(index)) << index;
}

TEST(LV2EditedPlugin, BeforeAnyNotificationParametersHoldThePluginsValuesWithTheInstance)
{
    KLAudioPlugin plugin;
    plugin.setParameter(0.8f, KLParameters::drive);
    LV2EditedPlugin edited(layout, getLV2UIEffect(), &plugin);
    EXPECT_FLOAT_EQ(static_cast<float>(edited.getParameter(KLParameters::drive)), 0.8f);
}

TEST(LV2EditedPlugin, AValueTheUserSetIsKeptWithoutAMark)
{
    LV2EditedPlugin edited(layout, getLV2UIEffect(), nullptr);
    AttachedView view(edited);
    edited.userChanged(KLParameters::attack, 0.7f);
    EXPECT_FLOAT_EQ(static_cast<float>(edited.getParameter(KLParameters::attack)), 0.7f);
    EXPECT_EQ(view.takeChanged(), 0u);
}

TEST(LV2EditedPlugin, NonFiniteValuesAudioPortsAndPortsBeyondTheLayoutChangeNothing)
{
    LV2EditedPlugin edited(layout, getLV2UIEffect(), nullptr);
    AttachedView view(edited);
    edited.portChanged(controlPort(KLParameters::attack), NAN);
    edited.portChanged(controlPort(KLParameters::attack), INFINITY);
    edited.portChanged(meterPort(KLMeters::inputLevel), NAN);
    edited.portChanged(layout.getAudioInputPort(0), 1.0f);
    edited.portChanged(layout.getCount(), 1.0f);
    edited.userChanged(KLParameters::count, 1.0f);
    edited.userChanged(KLParameters::gain, NAN);
    for (int index = 0; index < KLParameters::count; ++index)
        EXPECT_FLOAT_EQ(static_cast<float>(edited.getParameter(index)), KLParameters::getDefault(index)) << index;
    EXPECT_EQ(edited.readMeter(KLMeters::inputLevel), 0.0f);
    EXPECT_EQ(view.takeChanged(), 0u);
}

TEST(LV2EditedPlugin, WithoutTheInstanceTheMetersAreTheMeterPortsLastValues)
{
    LV2EditedPlugin edited(layout, getLV2UIEffect(), nullptr);
    edited.portChanged(meterPort(KLMeters::inputLevel), 0.8f);
    edited.portChanged(meterPort(KLMeters::driveLevel), 0.5f);
    EXPECT_EQ(edited.readMeter(KLMeters::inputLevel), 0.8f);
    EXPECT_EQ(edited.readMeter(KLMeters::outputLevel), 0.0f);
    // A port holds its value until the host tells another: reading it takes nothing away.
    EXPECT_EQ(edited.readMeter(KLMeters::driveLevel), 0.5f);
    EXPECT_EQ(edited.readMeter(KLMeters::driveLevel), 0.5f);
    EXPECT_EQ(edited.readMeter(KLMeters::count), 0.0f);
}

TEST(LV2EditedPlugin, WithTheInstanceTheMetersAreThePluginsAndTheMeterPortsAreIgnored)
{
    KLAudioPlugin plugin;
    plugin.setParameter(1.0f, KLParameters::drive);
    LV2EditedPlugin edited(layout, getLV2UIEffect(), &plugin);
    AttachedView view(edited);
    processLoudBlock(plugin);
    edited.portChanged(meterPort(KLMeters::inputLevel), 0.1f);
    EXPECT_EQ(edited.readMeter(KLMeters::inputLevel), plugin.getInputLevel());
    EXPECT_GT(edited.readMeter(KLMeters::inputLevel), 0.8f);
    EXPECT_GT(edited.readMeter(KLMeters::driveLevel), 0.0f);
    EXPECT_EQ(edited.readMeter(KLMeters::driveLevel), 0.0f);
}

TEST(LV2EditedPlugin, AttachedEditorsAreAttachedToTheInstanceWhichThenMeasuresItsLevels)
{
    KLAudioPlugin plugin;
    LV2EditedPlugin edited(layout, getLV2UIEffect(), &plugin);
    {
        AttachedView view(edited);
        EXPECT_EQ(plugin.getNumEditors(), 1);
        plugin.setParameter(0.1f, KLParameters::attack);
        EXPECT_EQ(view.takeChanged(), uint64_t{1} << KLParameters::attack);
    }
    EXPECT_EQ(plugin.getNumEditors(), 0);
}

TEST(LV2EditedPlugin, TheEditorSizeIsKeptInThePluginWithTheInstance)
{
    KLAudioPlugin plugin;
    plugin.setEditorSize(900, 210);
    LV2EditedPlugin edited(layout, getLV2UIEffect(), &plugin);
    EXPECT_EQ(edited.getEditorWidth(), 900);
    edited.setEditorSize(1100, 256);
    EXPECT_EQ(plugin.getEditorWidth(), 1100);
    EXPECT_EQ(plugin.getEditorHeight(), 256);
}

TEST(LV2EditedPlugin, WithoutTheInstanceTheEditorSizeStartsAtTheDefaultAndIsItsOwn)
{
    LV2EditedPlugin edited(layout, getLV2UIEffect(), nullptr);
    EXPECT_EQ(edited.getEditorWidth(), 750);
    EXPECT_EQ(edited.getEditorHeight(), 175);
    edited.setEditorSize(1100, 256);
    EXPECT_EQ(edited.getEditorWidth(), 1100);
    EXPECT_EQ(edited.getEditorHeight(), 256);
}
