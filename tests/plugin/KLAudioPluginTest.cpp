// KLAudioPlugin: parameters reaching the processor, editors being told, the audio path on the
// buses and the level meters.

#include "foundation/memory/MemoryStream.h"
#include "foundation/runtime/ScopedLock.h"
#include "plugin/AudioBus.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/PluginEditorView.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

using namespace q1framework;

namespace
{
// An editor attached for as long as it exists.
class AttachedView : public PluginEditorView
{
public:
    explicit AttachedView(KLAudioPlugin& plugin) : plugin(plugin) { plugin.addEditor(this); }
    ~AttachedView() override { plugin.removeEditor(this); }

    KLAudioPlugin& plugin;
};

std::vector<float> testSignal(int frames, float phase)
{
    std::vector<float> signal(static_cast<std::size_t>(frames));
    for (int frame = 0; frame < frames; ++frame)
        signal[static_cast<std::size_t>(frame)] =
            0.8f * std::sin(0.05f * frame + phase) * std::exp(-0.002f * static_cast<float>(frame % 300));
    return signal;
}

// One block of `frames` on the host's channel pointers, handed over as the adapter does.
void processBlock(KLAudioPlugin& plugin, std::vector<float*> inputs, std::vector<float*> outputs, int frames)
{
    plugin.getAudioInput(0).setChannelPointers(inputs.data(), static_cast<int>(inputs.size()));
    plugin.getAudioOutput(0).setChannelPointers(outputs.data(), static_cast<int>(outputs.size()));
    TimeInfo timeInfo;
    plugin.process(timeInfo, frames);
}
}  // namespace

TEST(KLAudioPlugin, EachParameterSetsItsProcessorTarget)
{
    KLAudioPlugin plugin;
    const TransientProcessor& processor = plugin.getProcessor();
    plugin.setParameter(1.0f, KLParameters::attack);
    EXPECT_FLOAT_EQ(processor.attackTarget, 0.4f);
    plugin.setParameter(0.0f, KLParameters::attack);
    EXPECT_FLOAT_EQ(processor.attackTarget, -0.6f);
    plugin.setParameter(0.0f, KLParameters::release);
    EXPECT_FLOAT_EQ(processor.releaseTarget, -1.0f);
    plugin.setParameter(1.0f, KLParameters::gain);
    EXPECT_NEAR(processor.outputGainTarget, 2.818383f, 1e-5f);  // +9 dB
    plugin.setParameter(0.5f, KLParameters::bypass);
    EXPECT_TRUE(processor.bypassed);
    plugin.setParameter(0.2f, KLParameters::attackTime);
    EXPECT_EQ(processor.attackTimeFactor, 0.5f);
    plugin.setParameter(0.9f, KLParameters::releaseTime);
    EXPECT_EQ(processor.releaseTimeFactor, 2.0f);
    plugin.setParameter(1.0f, KLParameters::drive);
    EXPECT_FLOAT_EQ(processor.driveTarget, 15.0f);

    // Out of range: nothing stored, nothing applied.
    plugin.setParameter(0.3f, 7);
    plugin.setParameter(0.3f, -1);
    EXPECT_EQ(plugin.getParameter(-1), 0.0);
    EXPECT_FLOAT_EQ(processor.driveTarget, 15.0f);
}

TEST(KLAudioPlugin, AttachedEditorsAreMarkedWithWhatChangedUntilTheyTakeTheMarks)
{
    KLAudioPlugin plugin;
    AttachedView view(plugin);
    plugin.setParameter(0.25f, KLParameters::gain);
    plugin.setParameter(0.25f, KLParameters::drive);
    plugin.setParameter(0.25f, 9);
    EXPECT_EQ(view.takeChanged(), (1u << KLParameters::gain) | (1u << KLParameters::drive));
    EXPECT_EQ(view.takeChanged(), 0u);

    // A program read or a new program index may change every value.
    MemoryStream stream;
    KLAudioPlugin source;
    source.writeProgram(0, stream);
    stream.setPosition(0);
    plugin.readProgram(0, stream);
    EXPECT_EQ(view.takeChanged(), ~uint64_t{0});
    plugin.setCurrentProgram(0);
    EXPECT_EQ(view.takeChanged(), ~uint64_t{0});
}

TEST(KLAudioPlugin, ADetachedEditorIsNoLongerMarked)
{
    KLAudioPlugin plugin;
    {
        AttachedView first(plugin);
        AttachedView second(plugin);
        EXPECT_EQ(plugin.getNumEditors(), 2);
    }
    AttachedView view(plugin);
    plugin.setParameter(0.5f, KLParameters::gain);
    EXPECT_EQ(view.takeChanged(), 1u << KLParameters::gain);
    view.plugin.removeEditor(&view);
    plugin.setParameter(0.6f, KLParameters::gain);
    EXPECT_EQ(view.takeChanged(), 0u);
    plugin.addEditor(&view);
}

namespace
{
KLAudioPlugin* pluginAskedForAnEditor = nullptr;

AudioPluginEditor* recordingFactory(KLAudioPlugin& plugin)
{
    pluginAskedForAnEditor = &plugin;
    return nullptr;
}
}  // namespace

TEST(KLAudioPlugin, EditorsAreMadeByTheRegisteredFactoryAndNoneWithout)
{
    KLAudioPlugin plugin;
    EXPECT_TRUE(plugin.hasEditor());
    EXPECT_EQ(plugin.createEditor(), nullptr);
    KLAudioPlugin::setEditorFactory(&recordingFactory);
    plugin.createEditor();
    KLAudioPlugin::setEditorFactory(nullptr);
    EXPECT_EQ(pluginAskedForAnEditor, &plugin);
}

TEST(KLAudioPlugin, ProcessRunsTheProcessorOnTheBusesInPlaceOrMonoAndLeavesOtherLayoutsAlone)
{
    KLAudioPlugin plugin;
    plugin.prepare(256, true, 44100.0);
    plugin.releaseChannelBuffers();
    // A fresh instance's processor holds the defaults as the plug-in applied them.
    TransientProcessor reference = KLAudioPlugin().getProcessor();
    plugin.setParameter(0.9f, KLParameters::attack);
    plugin.setParameter(0.3f, KLParameters::drive);
    reference.setAttack(0.9f);
    reference.setDrive(0.3f);
    std::vector<float> left = testSignal(256, 0.0f);
    std::vector<float> right = testSignal(256, 1.0f);
    std::vector<float> expectedLeft = left;
    std::vector<float> expectedRight = right;
    for (int block = 0; block < 3; ++block)
    {
        processBlock(plugin, {left.data(), right.data()}, {left.data(), right.data()}, 256);
        reference.processStereo(expectedLeft.data(), expectedRight.data(), expectedLeft.data(),
                                expectedRight.data(), 256, false);
    }
    EXPECT_EQ(left, expectedLeft);
    EXPECT_EQ(right, expectedRight);

    // Stereo buses with one output channel, or a null channel: the outputs keep what they held.
    std::vector<float> untouched(128, 7.0f);
    processBlock(plugin, {left.data(), left.data()}, {untouched.data()}, 128);
    processBlock(plugin, {left.data(), nullptr}, {untouched.data(), untouched.data()}, 128);
    EXPECT_EQ(untouched, std::vector<float>(128, 7.0f));

    plugin.configureMono();
    plugin.releaseChannelBuffers();
    std::vector<float> output(128, 7.0f);
    std::vector<float> expected(128, 0.0f);
    reference.processMono(left.data(), expected.data(), 128, false);
    processBlock(plugin, {left.data()}, {output.data()}, 128);
    EXPECT_EQ(output, expected);
}

TEST(KLAudioPlugin, LevelsAreMeasuredOnlyWhileAnEditorIsAttached)
{
    KLAudioPlugin plugin;
    plugin.prepare(64, false, 48000.0);
    plugin.releaseChannelBuffers();
    std::vector<float> left(48001, 0.0f);
    std::vector<float> right(48001, 0.0f);
    left[0] = left[1] = 2.0f;
    processBlock(plugin, {left.data(), right.data()}, {left.data(), right.data()}, 1);
    EXPECT_EQ(plugin.getInputLevel(), 0.0f);
    EXPECT_EQ(plugin.getOutputLevel(), 0.0f);

    AttachedView view(plugin);
    processBlock(plugin, {left.data() + 1, right.data() + 1}, {left.data() + 1, right.data() + 1}, 1);
    EXPECT_EQ(plugin.getInputLevel(), 1.5f);
    EXPECT_GT(plugin.getOutputLevel(), 0.0f);
    // One second of silence at 48 kHz lowers the meter by 0.25 (give or take the rounding of the
    // float steps).
    processBlock(plugin, {left.data() + 2, right.data() + 2}, {left.data() + 2, right.data() + 2}, 47999);
    EXPECT_NEAR(plugin.getInputLevel(), 1.25f, 3e-3f);
    // The drive peak is taken once.
    EXPECT_GT(plugin.takeDriveLevel(), 0.0f);
    EXPECT_EQ(plugin.takeDriveLevel(), 0.0f);
}

TEST(KLAudioPlugin, LevelsAreMeasuredWhileTheHostReadsTheMeters)
{
    KLAudioPlugin plugin;
    plugin.prepare(64, false, 48000.0);
    plugin.releaseChannelBuffers();
    std::vector<float> left(4, 0.5f);
    std::vector<float> right(4, -0.75f);
    const ScopedLock lock(plugin.getMutex());
    plugin.setHostReadsMeters(true);
    processBlock(plugin, {left.data(), right.data()}, {left.data(), right.data()}, 4);
    // The peak of 0.75, less the fall of 0.25 a second at 48 kHz after the last frame.
    const float inputLevel = plugin.takeMeterValue(KLMeters::inputLevel);
    EXPECT_FLOAT_EQ(inputLevel, 0.75f - 0.25f / 48000.0f);
    EXPECT_GT(plugin.takeMeterValue(KLMeters::outputLevel), 0.0f);

    plugin.setHostReadsMeters(false);
    left.assign(4, 1.0f);
    processBlock(plugin, {left.data(), right.data()}, {left.data(), right.data()}, 4);
    EXPECT_EQ(plugin.takeMeterValue(KLMeters::inputLevel), inputLevel);
}

TEST(KLAudioPlugin, DriveMeterHoldsTheBlocksPeakUntilItIsTaken)
{
    KLAudioPlugin plugin;
    plugin.releaseChannelBuffers();
    std::vector<float> left(256, 0.9f);
    std::vector<float> right(256, 0.9f);
    const ScopedLock lock(plugin.getMutex());
    processBlock(plugin, {left.data(), right.data()}, {left.data(), right.data()}, 256);
    const float peak = plugin.takeMeterValue(KLMeters::driveLevel);
    EXPECT_GT(peak, 0.0f);
    EXPECT_LE(peak, KLMeters::getMaximum(KLMeters::driveLevel));
    EXPECT_EQ(plugin.takeMeterValue(KLMeters::driveLevel), 0.0f);
    EXPECT_EQ(plugin.takeMeterValue(KLMeters::count), 0.0f);
}

TEST(KLAudioPlugin, AnEditorTakesEveryDrivePeakThatTheHostsMeterReaderTookSinceItsLastFrame)
{
    KLAudioPlugin plugin;
    plugin.releaseChannelBuffers();
    AttachedView view(plugin);
    std::vector<float> loud(256, 0.9f), quiet(256, 0.1f);
    float loudPeak = 0.0f;
    {
        const ScopedLock lock(plugin.getMutex());
        processBlock(plugin, {loud.data(), loud.data()}, {loud.data(), loud.data()}, 256);
        loudPeak = plugin.takeMeterValue(KLMeters::driveLevel);
        processBlock(plugin, {quiet.data(), quiet.data()}, {quiet.data(), quiet.data()}, 256);
        EXPECT_LT(plugin.takeMeterValue(KLMeters::driveLevel), loudPeak);
    }
    ASSERT_GT(loudPeak, 0.0f);
    EXPECT_EQ(plugin.takeDriveLevel(), loudPeak);
    EXPECT_EQ(plugin.takeDriveLevel(), 0.0f);
}

TEST(KLAudioPlugin, TheMeterReaderKeepsNoDrivePeakWhileNoEditorIsAttached)
{
    KLAudioPlugin plugin;
    plugin.releaseChannelBuffers();
    std::vector<float> loud(256, 0.9f);
    {
        const ScopedLock lock(plugin.getMutex());
        processBlock(plugin, {loud.data(), loud.data()}, {loud.data(), loud.data()}, 256);
        EXPECT_GT(plugin.takeMeterValue(KLMeters::driveLevel), 0.0f);
    }
    AttachedView view(plugin);
    EXPECT_EQ(plugin.takeDriveLevel(), 0.0f);
}
