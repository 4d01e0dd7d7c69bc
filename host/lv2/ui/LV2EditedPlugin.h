#pragma once

#include "host/lv2/LV2PortLayout.h"
#include "plugin/EditedPlugin.h"

#include <cstdint>
#include <vector>

namespace q1framework
{

class AudioPlugin;
struct LV2UIEffect;

// What an LV2 user interface's editor edits: the plug-in as the host's port protocol shows it.
//
// Parameters: the control ports' values as the host reports them (port notifications of the
// float protocol), in their physical units, turned into the 0..1 values the editor shows
// (LV2UIEffect::fromPhysical); a value the user sets in the editor is kept as the host will have
// it. Before the host's first notification a parameter holds the plug-in's own value, or the
// default of a fresh instance where there is no plug-in at hand. Each new value marks the
// attached editors, which show it at their next idle step.
//
// Meters and the editor's size come from the plug-in's own instance where the host gives access
// to it (instance access): the meters as the plug-in measures them for an editor
// (AudioPlugin::readMeter, with the drive peak of every block), the size kept in the plug-in's
// state. Attached editors are attached to the plug-in too, which then measures its levels for
// them. Without the instance, the meters are the meter ports' last notified values (the host
// sends them because the user interface's description asks for them), and the size is the
// effect's default until the user changes it, for the life of this object only.
//
// Thread contract: the host's user-interface calls (main thread), like everything of the user
// interface; the marks as PluginEditorView says.
class LV2EditedPlugin : public EditedPlugin
{
public:
    // layout: the plug-in's ports. effect: its units and defaults, which outlive this object.
    // plugin: the plug-in's own instance where the host gives access to it, else null; not owned,
    // and it outlives this object.
    LV2EditedPlugin(const LV2PortLayout& layout, const LV2UIEffect& effect, AudioPlugin* plugin);
    // Editors must have detached.
    ~LV2EditedPlugin() override;

    LV2EditedPlugin(const LV2EditedPlugin&) = delete;
    LV2EditedPlugin& operator=(const LV2EditedPlugin&) = delete;

    // A port's value as the host reports it. A control port's physical value becomes its
    // parameter's value and marks it; a meter port's is kept for its meter (unless the plug-in's
    // instance is at hand, whose meters count). Audio ports, ports beyond the layout and values
    // that are not finite are ignored.
    void portChanged(uint32_t port, float value);
    // The user set parameter `index` to `value` (0..1) in the editor, and the host is told: kept,
    // without a mark, since the editor shows it already. An index out of range or a value that is
    // not finite is ignored.
    void userChanged(int index, float value);

    // The plug-in's instance, null without instance access.
    AudioPlugin* getInstance() const { return plugin; }
    const LV2PortLayout& getLayout() const { return layout; }

    // EditedPlugin.
    int getNumParameters() override;
    double getParameter(int index) override;
    float readMeter(int index) override;
    int getEditorWidth() override;
    int getEditorHeight() override;
    void setEditorSize(int width, int height) override;
    void addEditor(PluginEditorView* editor) override;
    void removeEditor(PluginEditorView* editor) override;

private:
    LV2PortLayout layout;
    const LV2UIEffect& effect;
    AudioPlugin* plugin;              // not owned; null without instance access
    std::vector<float> values;        // 0..1, by parameter
    std::vector<float> meters;        // the meter ports' last values, by meter
    int editorWidth;
    int editorHeight;
    std::vector<PluginEditorView*> editors;  // not owned
};

}  // namespace q1framework
