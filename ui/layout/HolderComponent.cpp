#include "ui/layout/HolderComponent.h"

#include "ui/layout/Viewport.h"

namespace q1framework
{

HolderComponent::HolderComponent(Viewport& owner) : viewport(owner)
{
    setClipsChildren(true);
    setHitTestable(false);
}

void HolderComponent::childMoved(Component*)
{
    viewport.updateScrollBars();
    repaint();
}

void HolderComponent::childResized(Component*)
{
    viewport.updateScrollBars();
    repaint();
}

}  // namespace q1framework
