// LV2UIWrapper in a host's window on an X server of the test's own: opening with the features a
// host passes, real input through XTest reaching the control port, the port protocol moving the
// controls, the meters following the plug-in or the meter ports, the negotiation of the size,
// and the audio thread running while the interface idles.

#include "LV2UIHost.h"

#include "support/SineBlock.h"

#include "editor/AudioPluginEditor.h"
#include "editor/DriveLed.h"
#include "editor/LevelMeter.h"
#include "editor/MainComponent.h"
#include "host/FrameworkInstances.h"
#include "host/lv2/ui/LV2EditedPlugin.h"
#include "host/lv2/ui/LV2UIWrapper.h"
#include "native/window/Window.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/KLMeters.h"
#include "plugin/KLParameters.h"
#include "plugin/SharedResourcePack.h"
#include "ui/controls/Knob.h"

#include <lv2/instance-access/instance-access.h>

#include <thread>

using namespace q1framework;

namespace
{
// One block of a 110 Hz sine at amplitude, both channels.
void processSine(LV2UIHost& host, float amplitude, int frames = 512)
{
    std::vector<float> left = sineBlock(amplitude, frames), right = left;
    host.process(left, right);
}

uint32_t controlPort(const LV2UIHost& host, int parameter)
{
    return host.getLayout().getControlPort(parameter);
}

uint32_t meterPort(const LV2UIHost& host, int meter)
{
    return host.getLayout().getMeterPort(meter);
}

// The attack knob dragged 40 pixels up from its centre, (573, 192) of the picture at half size on
// the host's window at (0, 0), with the host idling between the steps.
void dragAttackKnobUp(LV2UIHost& host)
{
    TestDisplay& display = host.getDisplay();
    display.movePointer(286, 96);
    host.idle();
    display.button(1, true);
    host.idle();
    display.movePointerBy(0, -40);
    host.idle();
    display.button(1, false);
    host.idle();
}

// A feature list with the parent and the idle interface, less what is left out.
struct FeatureList
{
    FeatureList(LV2UIHost& host, bool withParent, bool withIdle)
        : parent{LV2_UI__parent, reinterpret_cast<void*>(static_cast<uintptr_t>(host.getDisplay().makeHostWindow(
                                     Rectangle(0, 0, 800, 200))))},
          idle{LV2_UI__idleInterface, nullptr}
    {
        if (withParent)
            list.push_back(&parent);
        if (withIdle)
            list.push_back(&idle);
        list.push_back(nullptr);
    }

    LV2_Feature parent;
    LV2_Feature idle;
    std::vector<const LV2_Feature*> list;
};
}  // namespace

TEST(LV2UIWrapper, OpensAsAChildOfTheHostsWindowAtTheEditorsSizeAndTellsTheHostThatSize)
{
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.idle(3);
    ASSERT_NE(host.getEditorWindow(), 0u);
    EXPECT_EQ(host.getDisplay().getParent(host.getEditorWindow()), host.getParentWindow());
    EXPECT_EQ(host.getGeometry(host.getEditorWindow()), Rectangle(0, 0, 750, 175));
    EXPECT_EQ(host.takeResizes(), (std::vector<Point>{Point(750, 175)}));
}

TEST(LV2UIWrapper, WithoutAParentNoInterfaceIsMade)
{
    LV2UIHost host;
    FeatureList features(host, false, true);
    EXPECT_FALSE(host.open(Rectangle(0, 0, 800, 200), features.list.data()));
    EXPECT_EQ(q1framework::Window::getWindowCount(), 0);
}

TEST(LV2UIWrapper, WithoutTheIdleInterfaceNoInterfaceIsMade)
{
    LV2UIHost host;
    FeatureList features(host, true, false);
    EXPECT_FALSE(host.open(Rectangle(0, 0, 800, 200), features.list.data()));
    EXPECT_EQ(q1framework::Window::getWindowCount(), 0);
}

TEST(LV2UIWrapper, InAWindowThatDoesNotExistNoInterfaceIsMadeAndNothingStaysAttached)
{
    LV2UIHost host;
    LV2_Feature parent = {LV2_UI__parent, reinterpret_cast<void*>(uintptr_t{0x7ffffff0})};
    LV2_Feature idle = {LV2_UI__idleInterface, nullptr};
    const LV2_Feature* const features[] = {&parent, &idle, nullptr};
    EXPECT_FALSE(host.open(Rectangle(0, 0, 800, 200), features));
    EXPECT_EQ(q1framework::Window::getWindowCount(), 0);
    EXPECT_EQ(host.getPlugin().getNumEditors(), 0);
}

TEST(LV2UIWrapper, AKnobDraggedWithXTestWritesItsPhysicalValueToTheControlPortBetweenTouches)
{
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.idle(2);
    dragAttackKnobUp(host);
    // 40 pixels up at half size are 80 of the picture: 80 * 0.0025 = 0.2 above the default, which
    // is 40 % on the port.
    const uint32_t attack = controlPort(host, KLParameters::attack);
    const std::vector<LV2UIHost::Write> writes = host.takeWrites();
    ASSERT_FALSE(writes.empty());
    for (const LV2UIHost::Write& write : writes)
        EXPECT_EQ(write.port, attack);
    EXPECT_FLOAT_EQ(writes.back().value, 40.0f);
    const std::vector<LV2UIHost::Touch> touches = host.takeTouches();
    ASSERT_EQ(touches.size(), 2u);
    EXPECT_EQ(touches[0].port, attack);
    EXPECT_TRUE(touches[0].grabbed);
    EXPECT_EQ(touches[1].port, attack);
    EXPECT_FALSE(touches[1].grabbed);
}

TEST(LV2UIWrapper, TheDraggedValueReachesThePluginThroughItsControlPort)
{
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.idle(2);
    dragAttackKnobUp(host);
    processSine(host, 0.1f, 64);
    EXPECT_NEAR(host.getPlugin().getParameter(KLParameters::attack), 0.7, 1e-6);
}

TEST(LV2UIWrapper, AHostWithoutTouchStillGetsTheValues)
{
    LV2UIHost::Features features;
    features.touch = false;
    LV2UIHost host(features);
    ASSERT_TRUE(host.open());
    host.idle(2);
    dragAttackKnobUp(host);
    EXPECT_FALSE(host.takeWrites().empty());
    EXPECT_TRUE(host.takeTouches().empty());
}

TEST(LV2UIWrapper, APortNotificationMovesItsControlAtTheNextIdle)
{
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.idle(2);
    host.port(controlPort(host, KLParameters::attack)) = -50.0f;
    host.notify(controlPort(host, KLParameters::attack));
    host.idle();
    EXPECT_FLOAT_EQ(static_cast<float>(host.getMainComponent().getAttackKnob()->getValue()), 0.25f);
}

TEST(LV2UIWrapper, WithoutInstanceAccessTheMetersFollowTheMeterPorts)
{
    LV2UIHost::Features features;
    features.instanceAccess = false;
    LV2UIHost host(features);
    ASSERT_TRUE(host.open());
    host.idle(2);
    processSine(host, 0.9f);
    // The ports' own values, whatever the plug-in measured.
    host.port(meterPort(host, KLMeters::inputLevel)) = 1.0f;
    host.port(meterPort(host, KLMeters::outputLevel)) = 0.5f;
    host.port(meterPort(host, KLMeters::driveLevel)) = 0.5f;
    host.notifyMeters();
    host.idle(2);
    MainComponent& main = host.getMainComponent();
    EXPECT_FLOAT_EQ(main.getInputMeter()->getLevel(), MainComponent::levelToPosition(1.0f));
    EXPECT_FLOAT_EQ(main.getOutputMeter()->getLevel(), MainComponent::levelToPosition(0.5f));
    EXPECT_FLOAT_EQ(static_cast<float>(main.getDriveLed()->getValue()), 0.25f);
    EXPECT_EQ(host.getPlugin().getNumEditors(), 0);
}

TEST(LV2UIWrapper, WithInstanceAccessTheMetersFollowThePlugin)
{
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.idle(2);
    EXPECT_EQ(host.getPlugin().getNumEditors(), 1);
    processSine(host, 0.9f);
    for (int meter = 0; meter < KLMeters::count; ++meter)
        host.port(meterPort(host, meter)) = 0.0f;
    host.notifyMeters();
    host.idle();
    const float level = host.getPlugin().getInputLevel();
    EXPECT_GT(level, 0.8f);
    EXPECT_FLOAT_EQ(host.getMainComponent().getInputMeter()->getLevel(), MainComponent::levelToPosition(level));
}

TEST(LV2UIWrapper, WithInstanceAccessTheDriveLampLightsThoughTheHostReadsTheDrivePort)
{
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.port(controlPort(host, KLParameters::drive)) = 100.0f;
    host.idle(2);
    processSine(host, 0.9f);
    const float drive = host.port(meterPort(host, KLMeters::driveLevel));
    ASSERT_GT(drive, 0.0f);
    for (int attempt = 0; attempt < 50 && host.getMainComponent().getInputMeter()->getLevel() == 0.0f; ++attempt)
        host.idle();
    EXPECT_FLOAT_EQ(static_cast<float>(host.getMainComponent().getDriveLed()->getValue()), drive * drive);
}

TEST(LV2UIWrapper, AHandleThatIsNoLiveInstanceIsNotTaken)
{
    LV2UIHost host;
    int notAnInstance = 0;
    const ::Window parentWindow = host.getDisplay().makeHostWindow(Rectangle(0, 0, 800, 200));
    LV2_Feature parent = {LV2_UI__parent, reinterpret_cast<void*>(static_cast<uintptr_t>(parentWindow))};
    LV2_Feature idle = {LV2_UI__idleInterface, nullptr};
    LV2_Feature instance = {LV2_INSTANCE_ACCESS_URI, &notAnInstance};
    const LV2_Feature* const features[] = {&parent, &idle, &instance, nullptr};
    ASSERT_TRUE(host.open(Rectangle(0, 0, 800, 200), features));
    EXPECT_EQ(host.getUI()->getEditedPlugin().getInstance(), nullptr);
}

TEST(LV2UIWrapper, ASizeTheEditorTakesIsAskedOfTheHostWhichResizesItsWindow)
{
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.takeResizes();
    host.getUI()->getEditor().resize(900, 210, true);
    EXPECT_EQ(host.takeResizes(), (std::vector<Point>{Point(900, 210)}));
    EXPECT_EQ(host.getGeometry(host.getEditorWindow()), Rectangle(0, 0, 900, 210));
    EXPECT_EQ(host.getGeometry(host.getParentWindow()).getSize(), Point(900, 210));
}

TEST(LV2UIWrapper, AHostThatRefusesTheSizeHasItsWindowGrownByTheEditor)
{
    LV2UIHost host;
    host.acceptsResize = false;
    ASSERT_TRUE(host.open(Rectangle(0, 0, 800, 200)));
    host.getUI()->getEditor().resize(900, 210, true);
    // The parent grows by the editor's growth, 150 by 35.
    EXPECT_EQ(host.getGeometry(host.getParentWindow()).getSize(), Point(950, 235));
    EXPECT_EQ(host.getGeometry(host.getEditorWindow()).getSize(), Point(900, 210));
}

TEST(LV2UIWrapper, AHostWithoutResizeHasItsWindowGrownByTheEditor)
{
    LV2UIHost::Features features;
    features.resize = false;
    LV2UIHost host(features);
    ASSERT_TRUE(host.open(Rectangle(0, 0, 800, 200)));
    host.getUI()->getEditor().resize(900, 210, true);
    EXPECT_EQ(host.getGeometry(host.getParentWindow()).getSize(), Point(950, 235));
}

TEST(LV2UIWrapper, AHostThatResizesItsWindowOffersTheSizeWhichTheEditorTakesAtItsAspect)
{
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.takeResizes();
    const auto* resize = static_cast<const LV2UI_Resize*>(host.getUIDescriptor().extension_data(LV2_UI__resize));
    EXPECT_EQ(resize->ui_resize(host.getUI(), 1100, 400), 0);
    EXPECT_EQ(host.getGeometry(host.getEditorWindow()).getSize(), Point(1100, 256));
    EXPECT_EQ(host.takeResizes(), (std::vector<Point>{Point(1100, 256)}));
}

TEST(LV2UIWrapper, WithInstanceAccessTheSizeIsKeptInThePluginsStateForTheNextOpening)
{
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.getUI()->getEditor().offerSize(Point(1100, 400));
    EXPECT_EQ(host.getPlugin().getEditorWidth(), 1100);
    EXPECT_EQ(host.getPlugin().getEditorHeight(), 256);
    host.close();
    ASSERT_TRUE(host.open());
    EXPECT_EQ(host.getGeometry(host.getEditorWindow()).getSize(), Point(1100, 256));
}

TEST(LV2UIWrapper, WithoutInstanceAccessTheEditorOpensAtItsDefaultSizeAndKeepsItsSizeToItself)
{
    LV2UIHost::Features features;
    features.instanceAccess = false;
    LV2UIHost host(features);
    host.getPlugin().setEditorSize(900, 210);
    ASSERT_TRUE(host.open());
    EXPECT_EQ(host.getGeometry(host.getEditorWindow()).getSize(), Point(750, 175));
    host.getUI()->getEditor().offerSize(Point(1100, 400));
    EXPECT_EQ(host.getPlugin().getEditorWidth(), 900);
}

TEST(LV2UIWrapper, CleanupLeavesNoWindowAndDetachesFromThePlugin)
{
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.idle(2);
    host.close();
    EXPECT_EQ(q1framework::Window::getWindowCount(), 0);
    EXPECT_EQ(host.getPlugin().getNumEditors(), 0);
}

TEST(LV2UIWrapper, AHostThatDestroysItsWindowBeforeCleanupLeavesNothingBehind)
{
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.idle(2);
    host.getDisplay().destroyHostWindow(host.getParentWindow());
    host.idle(2);
    host.close();
    EXPECT_EQ(q1framework::Window::getWindowCount(), 0);
    EXPECT_EQ(host.getPlugin().getNumEditors(), 0);
}

TEST(LV2UIWrapper, OpeningAndClosing50TimesGivesBackTheFrameworkAndThePack)
{
    LV2UIHost host;
    const int frameworkInstances = FrameworkInstances::getCount();
    const int packHolders = SharedResourcePack::getInstanceCount();
    for (int round = 0; round < 50; ++round)
    {
        ASSERT_TRUE(host.open(Rectangle(0, 0, 800, 200)));
        host.idle();
        host.close();
        host.getDisplay().destroyHostWindow(host.getParentWindow());
    }
    EXPECT_EQ(q1framework::Window::getWindowCount(), 0);
    EXPECT_EQ(host.getPlugin().getNumEditors(), 0);
    EXPECT_EQ(FrameworkInstances::getCount(), frameworkInstances);
    EXPECT_EQ(SharedResourcePack::getInstanceCount(), packHolders);
}

TEST(LV2UIWrapper, ThreadedBlocksRunOnTheAudioThreadWhileTheInterfaceIdles)
{
    DisplayWithoutGL server;
    LV2UIHost host;
    ASSERT_TRUE(host.open());
    host.idle(2);
    // The host's audio thread touches nothing of the interface; the interface reads the levels
    // and takes the drive peak from the plug-in between the blocks.
    std::thread audio([&host] {
        for (int block = 0; block < 40; ++block)
        {
            processSine(host, 0.9f, 256);
            std::this_thread::sleep_for(std::chrono::milliseconds(3));
        }
    });
    host.idle(6);
    audio.join();
    host.idle();
    EXPECT_GT(host.getMainComponent().getInputMeter()->getLevel(), 0.5f);
}
