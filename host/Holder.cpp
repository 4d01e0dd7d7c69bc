#include "host/Holder.h"

#include "host/AudioEffectX.h"
#include "host/VST2Editor.h"
#include "native/window/WindowFlags.h"

namespace q1framework
{

Holder::Holder(VST2Editor& editorOwner, void* parent, AudioPluginEditor* content, int windowFlags)
    : ComponentsWindow(Rectangle(Point(), content->getSize()), windowFlags | WindowFlags::hostedEditor, String(),
                       parent),
      owner(editorOwner),
      editor(content)
{
    setContent(editor, true);
    setOverlayDrawing(editor->drawsOverlay());
    editor->addListener(this);
}

Holder::~Holder()
{
    editor->removeListener(this);
}

void Holder::sizeChanged(const Point& size)
{
    if (size == getClientSize())
        return;
    owner.setSize(size.x, size.y);
    auto* effect = dynamic_cast<AudioEffectX*>(owner.getEffect());
    if (effect == nullptr || !effect->sizeWindow(size.x, size.y))
        resizeParent(size);
    setSize(size);
}

}  // namespace q1framework
