#pragma once

#include "ui/component/Component.h"

namespace q1framework
{

class PopupMenu;

// The items of a PopupMenu, one below the other at the look-and-feel's item height: the item
// under the pointer is highlighted, and a release over an item chooses it.
//
// Thread contract: main thread only.
class PopupMenuInnerComponent : public Component
{
public:
    explicit PopupMenuInnerComponent(PopupMenu& menu);

    // The item at a local height, -1 for none.
    int getItemAt(int y);
    int getHighlightedItem() const { return highlighted; }

    bool isPopup() override;
    void mouseMove(const MouseEvent& event) override;
    void mouseDrag(const MouseEvent& event) override;
    void mouseExit(const MouseEvent& event) override;
    void mouseUp(const MouseEvent& event) override;
    void paint(SoftwareGraphics& graphics) override;

private:
    void highlight(int item);

    PopupMenu& menu;
    int highlighted = -1;
};

}  // namespace q1framework
