#include "host/VST2Editor.h"

namespace q1framework
{

VST2Editor::VST2Editor(AudioEffect* effect, AudioPlugin* editedPlugin) : AEffEditor(effect), plugin(editedPlugin)
{
}

bool VST2Editor::getRect(ERect** rectangle)
{
    rect.top = 0;
    rect.left = 0;
    rect.bottom = static_cast<VstInt16>(height);
    rect.right = static_cast<VstInt16>(width);
    *rectangle = &rect;
    return true;
}

}  // namespace q1framework
