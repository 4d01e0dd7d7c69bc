#include "host/AEffEditor.h"

namespace q1framework
{
AEffEditor::AEffEditor(AudioEffect* effect) : effect(effect), systemWindow(nullptr)
{
}

AEffEditor::~AEffEditor() = default;

AudioEffect* AEffEditor::getEffect()
{
    return effect;
}

bool AEffEditor::getRect(ERect** rect)
{
    *rect = nullptr;
    return false;
}

bool AEffEditor::open(void* parent)
{
    systemWindow = parent;
    return false;
}

void AEffEditor::close()
{
    systemWindow = nullptr;
}

bool AEffEditor::isOpen()
{
    return systemWindow != nullptr;
}

void AEffEditor::idle()
{
}

bool AEffEditor::onKeyDown(VstKeyCode&)
{
    return false;
}

bool AEffEditor::onKeyUp(VstKeyCode&)
{
    return false;
}

bool AEffEditor::onWheel(float)
{
    return false;
}

bool AEffEditor::setKnobMode(VstInt32)
{
    return false;
}
}
