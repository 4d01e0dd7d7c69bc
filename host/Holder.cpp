#include "host/Holder.h"

#include "native/window/WindowFlags.h"

namespace q1framework
{

Holder::Holder(Host& windowHost, void* parent, AudioPluginEditor* content, int windowFlags)
    : ComponentsWindow(Rectangle(Point(), content->getSize()), windowFlags | WindowFlags::hostedEditor, String(),
                       parent),
      host(windowHost),
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
    if (!host.resizeHostWindow(size))
        resizeParent(size);
    setSize(size);
}

}  // namespace q1framework
