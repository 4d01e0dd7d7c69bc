#pragma once

#include "ui/component/Component.h"

namespace q1framework
{

class Viewport;

// The clipping area of a Viewport, which holds the viewed component as its one child. It clips
// its child to its bounds and is not hit-testable itself, so a press beside the child goes on to
// the viewport. When the child moves or changes size, the viewport's scroll bars follow.
//
// Thread contract: main thread only.
class HolderComponent : public Component
{
public:
    // owner: the viewport this holder belongs to, and whose child it is.
    explicit HolderComponent(Viewport& owner);

    Viewport& getViewport() const { return viewport; }

    void childMoved(Component* child) override;
    void childResized(Component* child) override;

private:
    Viewport& viewport;
};

}  // namespace q1framework
