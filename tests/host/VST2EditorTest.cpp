// VST2Editor in the host's window on an X server of the test's own: opening in the two kinds of
// Linux host, real input through XTest reaching the host, automation from another thread, the
// meters following the audio, and the editor's life over many opens and closes.

#include "EditorHost.h"

#include "support/SineBlock.h"

#include "editor/DriveLed.h"
#include "editor/LevelMeter.h"
#include "editor/MainComponent.h"
#include "host/Holder.h"
#include "host/VST2Editor.h"
#include "native/window/Window.h"
#include "plugin/KLAudioPlugin.h"
#include "render/context/Texture.h"
#include "ui/controls/Knob.h"

#include <thread>

using namespace q1framework;
using Pattern = EditorHost::Pattern;

namespace
{
// A block of a 110 Hz sine at amplitude, both channels.
void processSine(EditorHost& host, float amplitude, int frames = 512)
{
    std::vector<float> left = sineBlock(amplitude, frames), right = left;
    host.process(left, right);
}

// How many pixels differ between two pictures of the same size.
int differingPixels(const Image& first, const Image& second)
{
    int count = 0;
    for (int y = 0; y < first.getHeight(); ++y)
        for (int x = 0; x < first.getWidth(); ++x)
            count += std::memcmp(first.getPixelPointer(x, y), second.getPixelPointer(x, y), 3) != 0 ? 1 : 0;
    return count;
}

// The average brightness of a picture, 0..255.
double brightness(const Image& picture)
{
    double sum = 0.0;
    for (int y = 0; y < picture.getHeight(); ++y)
        for (int x = 0; x < picture.getWidth(); ++x)
        {
            const uint8_t* pixel = picture.getPixelPointer(x, y);
            sum += (pixel[0] + pixel[1] + pixel[2]) / 3.0;
        }
    return sum / (picture.getWidth() * picture.getHeight());
}

float knobValue(EditorHost& host)
{
    return static_cast<float>(host.getMainComponent().getAttackKnob()->getValue());
}
}  // namespace

TEST(VST2Editor, GetRectBeforeOpenGives1000By1000)
{
    EditorHost host;
    EXPECT_EQ(host.getRect(), Point(1000, 1000));
}

TEST(VST2Editor, OpensInsideTheChildWindowOfAnArdourLikeHostAndRendersItsArt)
{
    EditorHost host;
    ASSERT_TRUE(host.open(Pattern::ardourLike));
    host.idle(3);
    EXPECT_EQ(host.getRect(), Point(750, 175));
    ASSERT_NE(host.getEditorWindow(), 0u);
    EXPECT_EQ(host.getDisplay().getParent(host.getEditorWindow()), host.getParentWindow());
    EXPECT_EQ(host.getGeometry(host.getEditorWindow()), Rectangle(0, 0, 750, 175));
    // Through GL on this server: the picture is there, neither black nor one colour.
    EXPECT_NE(host.getHolder()->getRenderingContext(), nullptr);
    const Image shown = host.screenshot();
    EXPECT_GT(brightness(shown), 20.0);
    EXPECT_GT(differingPixels(shown, Image(shown.getSize(), true)), 750 * 175 / 2);
}

TEST(VST2Editor, OpensInTheTopLevelWindowOfACarlaLikeHostWithoutGLAndRendersItsArt)
{
    DisplayWithoutGL server;
    ASSERT_TRUE(server.isRunning());
    EditorHost host;
    ASSERT_TRUE(host.open(Pattern::carlaLike));
    host.idle(3);
    EXPECT_EQ(host.getDisplay().getParent(host.getEditorWindow()), host.getParentWindow());
    EXPECT_EQ(host.getHolder()->getRenderingContext(), nullptr);
    const Image shown = host.screenshot();
    EXPECT_GT(brightness(shown), 20.0);
}

TEST(VST2Editor, OpenInAWindowThatDoesNotExistAnswersZeroAndLeavesNothingOpen)
{
    EditorHost host;
    EXPECT_EQ(host.dispatch(effEditOpen, 0, 0, reinterpret_cast<void*>(uintptr_t{0x7ffffff0})), 0);
    EXPECT_EQ(host.getHolder(), nullptr);
    EXPECT_EQ(q1framework::Window::getWindowCount(), 0);
    EXPECT_EQ(host.getPlugin().getNumEditors(), 0);
}

TEST(VST2Editor, AKnobDraggedWithXTestSetsTheParameterBetweenBeginAndEndOfAGesture)
{
    EditorHost host;
    ASSERT_TRUE(host.open(Pattern::carlaLike));
    host.idle(2);
    host.takeCalls();
    TestDisplay& display = host.getDisplay();
    // The attack knob's centre, (573, 192) in the picture, at half size on a host window at (0, 0).
    display.movePointer(286, 96);
    host.idle();
    display.button(1, true);
    host.idle();
    display.movePointerBy(0, -40);
    host.idle();
    display.button(1, false);
    host.idle();
    // 40 pixels up at half size are 80 of the picture: 80 * 0.0025 = 0.2 above the default.
    EXPECT_NEAR(host.getEffect()->getParameter(host.getEffect(), 0), 0.7f, 1e-6);
    const std::vector<EditorHost::Call> calls = host.takeCalls();
    ASSERT_GE(calls.size(), 3u);
    EXPECT_EQ(calls.front().opcode, audioMasterBeginEdit);
    EXPECT_EQ(calls.front().index, 0);
    EXPECT_EQ(calls.back().opcode, audioMasterEndEdit);
    EXPECT_EQ(calls.back().index, 0);
    for (size_t call = 1; call + 1 < calls.size(); ++call)
    {
        EXPECT_EQ(calls[call].opcode, audioMasterAutomate);
        EXPECT_EQ(calls[call].index, 0);
    }
    EXPECT_NEAR(calls[calls.size() - 2].opt, 0.7f, 1e-6);
}

TEST(VST2Editor, ThreadedSetParameterFromAnotherThreadMovesTheKnobAtTheNextIdle)
{
    DisplayWithoutGL server;
    EditorHost host;
    ASSERT_TRUE(host.open(Pattern::carlaLike));
    host.idle(2);
    AEffect* effect = host.getEffect();
    // The host automates from a thread of its own (its audio thread, say) while the editor is
    // open; that thread touches nothing of the editor.
    std::thread automation([effect] {
        for (int step = 1; step <= 8; ++step)
            effect->setParameter(effect, 0, 0.1f * static_cast<float>(step));
    });
    automation.join();
    EXPECT_EQ(knobValue(host), 0.5f);
    host.idle();
    EXPECT_FLOAT_EQ(knobValue(host), 0.8f);
}

TEST(VST2Editor, ThreadedIdleFromTheHostsEventLoopThreadShowsAutomation)
{
    EditorHost host;
    ASSERT_TRUE(host.open(Pattern::ardourLike));
    host.idle(2);
    host.getEffect()->setParameter(host.getEffect(), 0, 0.25f);
    host.idle();
    EXPECT_FLOAT_EQ(knobValue(host), 0.25f);
}

TEST(VST2Editor, TheMetersFollowTheAudio)
{
    DisplayWithoutGL server;
    EditorHost host;
    host.dispatch(effSetSampleRate, 0, 0, nullptr, 44100.0f);
    host.dispatch(effSetBlockSize, 0, 512);
    ASSERT_TRUE(host.open(Pattern::carlaLike));
    host.idle(2);
    const Image quiet = host.screenshot();
    MainComponent& main = host.getMainComponent();
    EXPECT_EQ(main.getInputMeter()->getLevel(), 0.0f);
    processSine(host, 0.8f);
    host.idle();
    KLAudioPlugin& plugin = host.getPlugin();
    EXPECT_FLOAT_EQ(main.getInputMeter()->getLevel(), MainComponent::levelToPosition(plugin.getInputLevel()));
    EXPECT_FLOAT_EQ(main.getOutputMeter()->getLevel(), MainComponent::levelToPosition(plugin.getOutputLevel()));
    EXPECT_GT(main.getInputMeter()->getLevel(), 0.3f);
    const Image loud = host.screenshot();
    // The needles moved on the screen: pixels changed inside both meters and nowhere else.
    int insideMeters = 0, outside = 0;
    for (int y = 0; y < 175; ++y)
        for (int x = 0; x < 750; ++x)
        {
            if (std::memcmp(quiet.getPixelPointer(x, y), loud.getPixelPointer(x, y), 3) == 0)
                continue;
            const bool inMeter = y >= 27 && y < 94 && ((x >= 88 && x < 225) || (x >= 527 && x < 664));
            (inMeter ? insideMeters : outside) += 1;
        }
    EXPECT_GT(insideMeters, 100);
    EXPECT_EQ(outside, 0);
}

TEST(VST2Editor, ClosingAndReopeningKeepsTheSizeAndTheValues)
{
    EditorHost host;
    ASSERT_TRUE(host.open(Pattern::carlaLike));
    host.idle(2);
    host.getHolder()->getEditor()->resize(900, 210, true);
    host.getPlugin().setEditorSize(900, 210);
    host.getEffect()->setParameter(host.getEffect(), 0, 0.3f);
    host.idle();
    host.close();
    EXPECT_EQ(host.getHolder(), nullptr);
    EXPECT_EQ(host.getRect(), Point(900, 210));
    host.dispatch(effEditOpen, 0, 0, reinterpret_cast<void*>(static_cast<uintptr_t>(host.getParentWindow())));
    host.idle();
    EXPECT_EQ(host.getGeometry(host.getEditorWindow()).getSize(), Point(900, 210));
    EXPECT_FLOAT_EQ(knobValue(host), 0.3f);
}

TEST(VST2Editor, OpeningAndClosing200TimesLeavesNoWindowNoTextureAndNoEditorBehind)
{
    EditorHost host;
    ASSERT_TRUE(host.open(Pattern::carlaLike));
    host.idle();
    const ::Window parent = host.getParentWindow();
    host.close();
    const int texturesBefore = Texture::getLiveCount();
    for (int round = 0; round < 200; ++round)
    {
        ASSERT_EQ(host.dispatch(effEditOpen, 0, 0, reinterpret_cast<void*>(static_cast<uintptr_t>(parent))), 1);
        // Every tenth round draws a frame, so that the meters make their textures.
        if (round % 10 == 0)
            host.idle();
        host.close();
        ASSERT_EQ(q1framework::Window::getWindowCount(), 0) << round;
    }
    EXPECT_EQ(Texture::getLiveCount(), texturesBefore);
    EXPECT_EQ(host.getPlugin().getNumEditors(), 0);
    ::Window root = 0, up = 0, *children = nullptr;
    unsigned int count = 0;
    XQueryTree(host.getDisplay().get(), parent, &root, &up, &children, &count);
    XFree(children);
    EXPECT_EQ(count, 0u);
}
