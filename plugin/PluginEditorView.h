#pragma once

namespace q1framework
{

// What a plug-in asks of an editor that shows it: to show the stored value of one parameter, or
// of all of them, again. An editor registers itself with AudioPlugin::addEditor while it exists;
// the plug-in never owns it.
//
// Thread contract: the plug-in calls these on whatever thread changed the values (a host thread,
// sometimes the audio thread when a host automates from there) with its mutex held. An
// implementation only takes note and shows the values from its own thread; it must not block, and
// it may call the plug-in's getParameter.
class PluginEditorView
{
public:
    virtual ~PluginEditorView() = default;

    // Parameter `index` has a new stored value.
    virtual void refreshControl(int index) = 0;
    // Every parameter may have a new stored value (a program or a state was applied).
    virtual void refreshAllControls() = 0;
};

}  // namespace q1framework
