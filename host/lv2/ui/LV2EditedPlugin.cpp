#include "host/lv2/ui/LV2EditedPlugin.h"

#include "host/lv2/ui/LV2UIEffect.h"
#include "plugin/AudioPlugin.h"
#include "plugin/PluginEditorView.h"

#include <algorithm>
#include <cmath>

namespace q1framework
{

LV2EditedPlugin::LV2EditedPlugin(const LV2PortLayout& portLayout, const LV2UIEffect& uiEffect, AudioPlugin* instance)
    : layout(portLayout),
      effect(uiEffect),
      plugin(instance),
      meters(static_cast<std::size_t>(portLayout.getNumMeters()), 0.0f),
      editorWidth(uiEffect.editorWidth),
      editorHeight(uiEffect.editorHeight)
{
    for (int index = 0; index < layout.getNumParameters(); ++index)
        values.push_back(plugin != nullptr ? static_cast<float>(plugin->getParameter(index))
                                           : effect.getDefault(index));
}

LV2EditedPlugin::~LV2EditedPlugin() = default;

void LV2EditedPlugin::portChanged(uint32_t port, float value)
{
    if (!std::isfinite(value))
        return;
    const int number = layout.getNumber(port);
    switch (layout.getKind(port))
    {
    case LV2PortLayout::Kind::control:
    {
        const float converted = effect.fromPhysical(value, number);
        if (!std::isfinite(converted))
            return;
        values[static_cast<std::size_t>(number)] = converted;
        for (PluginEditorView* editor : editors)
            editor->markChanged(number);
        break;
    }
    case LV2PortLayout::Kind::meter:
        meters[static_cast<std::size_t>(number)] = value;
        break;
    case LV2PortLayout::Kind::audioInput:
    case LV2PortLayout::Kind::audioOutput:
    case LV2PortLayout::Kind::none:
    default:
        break;
    }
}

void LV2EditedPlugin::userChanged(int index, float value)
{
    if (index >= 0 && index < layout.getNumParameters() && std::isfinite(value))
        values[static_cast<std::size_t>(index)] = value;
}

int LV2EditedPlugin::getNumParameters()
{
    return layout.getNumParameters();
}

double LV2EditedPlugin::getParameter(int index)
{
    return index >= 0 && index < layout.getNumParameters() ? values[static_cast<std::size_t>(index)] : 0.0;
}

float LV2EditedPlugin::readMeter(int index)
{
    if (plugin != nullptr)
        return plugin->readMeter(index);
    return index >= 0 && index < layout.getNumMeters() ? meters[static_cast<std::size_t>(index)] : 0.0f;
}

int LV2EditedPlugin::getEditorWidth()
{
    return plugin != nullptr ? plugin->getEditorWidth() : editorWidth;
}

int LV2EditedPlugin::getEditorHeight()
{
    return plugin != nullptr ? plugin->getEditorHeight() : editorHeight;
}

void LV2EditedPlugin::setEditorSize(int width, int height)
{
    if (plugin != nullptr)
        plugin->setEditorSize(width, height);
    else
    {
        editorWidth = width;
        editorHeight = height;
    }
}

void LV2EditedPlugin::addEditor(PluginEditorView* editor)
{
    if (editor == nullptr || std::find(editors.begin(), editors.end(), editor) != editors.end())
        return;
    editors.push_back(editor);
    if (plugin != nullptr)
        plugin->addEditor(editor);
}

void LV2EditedPlugin::removeEditor(PluginEditorView* editor)
{
    const auto found = std::find(editors.begin(), editors.end(), editor);
    if (found == editors.end())
        return;
    editors.erase(found);
    if (plugin != nullptr)
        plugin->removeEditor(editor);
}

}  // namespace q1framework
