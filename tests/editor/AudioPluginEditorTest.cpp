// AudioPluginEditor: attached to its plug-in while it exists, telling its listeners, and showing
// again what the plug-in marked, on its own thread.

#include "editor/AudioPluginEditor.h"

#include "plugin/KLAudioPlugin.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace q1framework;

namespace
{
// Remembers which controls it was asked to show again.
class RecordingEditor : public AudioPluginEditor
{
public:
    explicit RecordingEditor(AudioPlugin& plugin) : AudioPluginEditor(plugin) {}
    void refreshControl(int index) override { refreshed.push_back(index); }
    std::vector<int> refreshed;
};

struct LoggingListener : AudioPluginEditor::Listener
{
    LoggingListener(std::vector<std::string>& log, const char* name) : log(log), name(name) {}
    void sizeChanged(const Point& size) override
    {
        log.push_back(name + " size " + std::to_string(size.x) + "x" + std::to_string(size.y));
    }
    void gestureBegan(AudioPluginEditor*, int index) override { log.push_back(name + " begin " + std::to_string(index)); }
    void valueChanged(float value, AudioPluginEditor*, int index) override
    {
        log.push_back(name + " value " + std::to_string(index) + "=" + std::to_string(value));
    }
    void gestureEnded(AudioPluginEditor*, int index) override { log.push_back(name + " end " + std::to_string(index)); }

    std::vector<std::string>& log;
    std::string name;
};
}  // namespace

TEST(AudioPluginEditor, IsAttachedToItsPluginWhileItExists)
{
    KLAudioPlugin plugin;
    {
        RecordingEditor editor(plugin);
        EXPECT_EQ(plugin.getNumEditors(), 1);
    }
    EXPECT_EQ(plugin.getNumEditors(), 0);
}

TEST(AudioPluginEditor, ResizeWithNotifyTellsEveryListenerInOrder)
{
    KLAudioPlugin plugin;
    RecordingEditor editor(plugin);
    std::vector<std::string> log;
    LoggingListener first(log, "first"), second(log, "second");
    editor.addListener(&first);
    editor.addListener(&second);
    editor.addListener(&first);
    editor.resize(800, 187, true);
    editor.resize(900, 210, false);
    EXPECT_EQ(log, (std::vector<std::string>{"first size 800x187", "second size 800x187"}));
    EXPECT_EQ(editor.getSize(), Point(900, 210));
}

TEST(AudioPluginEditor, GesturesAndValuesReachTheListeners)
{
    KLAudioPlugin plugin;
    RecordingEditor editor(plugin);
    std::vector<std::string> log;
    LoggingListener listener(log, "host");
    editor.addListener(&listener);
    editor.notifyGestureBegan(3);
    editor.notifyValueChanged(0.25f, 3);
    editor.notifyGestureEnded(3);
    editor.removeListener(&listener);
    editor.notifyGestureBegan(3);
    EXPECT_EQ(log, (std::vector<std::string>{"host begin 3", "host value 3=0.250000", "host end 3"}));
}

TEST(AudioPluginEditor, MarkedParametersAreShownAgainAtTheNextTick)
{
    KLAudioPlugin plugin;
    RecordingEditor editor(plugin);
    editor.tick();
    editor.refreshed.clear();
    plugin.setParameter(0.9f, 6);
    plugin.setParameter(0.1f, 1);
    EXPECT_TRUE(editor.refreshed.empty());
    editor.tick();
    EXPECT_EQ(editor.refreshed, (std::vector<int>{1, 6}));
    editor.tick();
    EXPECT_EQ(editor.refreshed.size(), 2u);
}

TEST(AudioPluginEditor, AnAppliedProgramShowsEveryParameterAgain)
{
    KLAudioPlugin plugin;
    RecordingEditor editor(plugin);
    plugin.applyProgram();
    editor.refreshChangedControls();
    EXPECT_EQ(editor.refreshed, (std::vector<int>{0, 1, 2, 3, 4, 5, 6}));
}
