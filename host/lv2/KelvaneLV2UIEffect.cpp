// Kelvane's part of its LV2 user interface: its parameter table and meters, the default size of
// its editor, its resource pack and its editor.

#include "editor/KLAudioPluginEditor.h"
#include "host/lv2/ui/LV2UIEffect.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/KLMeters.h"
#include "plugin/KLParameters.h"
#include "plugin/KLStateDocument.h"

namespace q1framework
{

namespace
{
AudioPluginEditor* createEditor(EditedPlugin& plugin)
{
    return new KLAudioPluginEditor(plugin);
}
}  // namespace

const LV2UIEffect& getLV2UIEffect()
{
    static const LV2UIEffect effect = {KLParameters::count,
                                       KLMeters::count,
                                       &KLParameters::getDefault,
                                       &KLParameters::toPhysical,
                                       &KLParameters::fromPhysical,
                                       KLStateDocument::defaultEditorWidth,
                                       KLStateDocument::defaultEditorHeight,
                                       KLAudioPlugin::resourceFileName,
                                       &createEditor};
    return effect;
}

}  // namespace q1framework
