// Component: the tree (adding, removing, z-order, search) and hit testing.

#include "ui/component/Component.h"

#include "ui/container/ComponentsContainer.h"

#include <algorithm>

namespace q1framework
{

namespace
{
// How deep forgetting a subtree walks; deeper components are left alone.
constexpr int forgetDepth = 256;
}

void Component::addChild(Component* child, int index)
{
    // A component cannot hold itself or one of its ancestors.
    if (!child || child == this || isDescendantOf(child))
        return;
    if (child->parent == this)
    {
        const int count = children.getCount();
        const int target = index >= 0 && index < count ? index : count - 1;
        if (children.getFirstIndexOf(child) == target)
            return;
    }
    if (child->parent)
        child->parent->removeChild(child, false);
    child->parent = this;
    children.insert(index, child);
    child->refresh();
}

void Component::addAndMakeVisible(Component* child, int index)
{
    addChild(child, index);
    if (child && child->parent == this)
        child->setVisible(true);
}

void Component::removeChild(Component* child, bool deleteIt)
{
    const int index = children.getFirstIndexOf(child);
    if (index >= 0)
        removeChildAt(index, deleteIt);
}

void Component::removeChildAt(int index, bool deleteIt)
{
    Component* child = getChild(index);
    if (!child)
        return;
    SafePointer watched(child);
    SafePointer self(this);
    child->repaint();
    childRemoved(child);
    if (!watched || !self)
        return;
    forgetSubtree(child);
    // childRemoved may have reordered the children.
    children.removeAt(children.getFirstIndexOf(child));
    child->parent = nullptr;
    if (deleteIt)
        delete child;
}

void Component::removeFromParent()
{
    if (parent)
        parent->removeChild(this, false);
}

void Component::removeAllChildren(bool deleteThem)
{
    for (int32_t index = 0; index < children.getCount(); ++index)
        forgetSubtree(children[index]);
    if (!deleteThem)
    {
        children.clear();
        return;
    }
    while (!children.isEmpty())
    {
        Component* child = children.getLast();
        children.removeAt(children.getCount() - 1);
        delete child;
    }
}

Component* Component::getChild(int index) const
{
    return index >= 0 && index < children.getCount() ? children[index] : nullptr;
}

int Component::getIndexOfChild(const Component* child) const
{
    return children.getFirstIndexOf(const_cast<Component*>(child));
}

Component* Component::getRootComponent()
{
    Component* root = this;
    while (root->parent)
        root = root->parent;
    return root;
}

bool Component::isDescendantOf(const Component* ancestor) const
{
    for (const Component* above = parent; above; above = above->parent)
        if (above == ancestor)
            return true;
    return false;
}

void Component::collectDescendants(Array<Component*>& descendants)
{
    for (int32_t index = 0; index < children.getCount(); ++index)
    {
        descendants.add(children[index]);
        children[index]->collectDescendants(descendants);
    }
}

void Component::moveInZOrder(int delta)
{
    if (!parent)
        return;
    Array<Component*>& siblings = parent->children;
    const int index = siblings.getFirstIndexOf(this);
    if (index < 0)
        return;
    siblings.removeAt(index);
    siblings.insert(std::max(index + delta, 0), this);
    parent->repaint();
}

Component* Component::findChildById(int64_t id, bool recursive)
{
    if (componentId == id)
        return this;
    for (int32_t index = 0; index < children.getCount(); ++index)
    {
        Component* found = recursive ? children[index]->findChildById(id, true)
                                     : (children[index]->componentId == id ? children[index] : nullptr);
        if (found)
            return found;
    }
    return nullptr;
}

void Component::forgetSubtree(Component* top)
{
    ComponentsContainer* owner = top->getContainer();
    if (!owner)
        return;
    owner->forgetComponent(top);
    // Depth first without recursion: the path from top and, per level, the next child to visit.
    Component* path[forgetDepth];
    int32_t next[forgetDepth];
    int depth = 0;
    path[0] = top;
    next[0] = 0;
    while (depth >= 0)
    {
        Component* node = path[depth];
        if (next[depth] >= node->children.getCount())
        {
            --depth;
            continue;
        }
        Component* child = node->children[next[depth]++];
        owner->forgetComponent(child);
        if (depth + 1 < forgetDepth)
        {
            ++depth;
            path[depth] = child;
            next[depth] = 0;
        }
    }
}

// ---- Hit testing ----

Component* Component::getComponentAt(const Point& position)
{
    const Point parentOrigin = parent ? parent->getAbsoluteBounds(false).getPosition() : Point();
    return hitTest(position.x, position.y, parentOrigin);
}

Component* Component::getDragTargetAt(const Point& position)
{
    for (Component* candidate = getComponentAt(position); candidate; candidate = candidate->parent)
        if (candidate->isDragTarget())
            return candidate;
    return nullptr;
}

Component* Component::hitTest(int x, int y, const Point& parentOrigin)
{
    if (x < 0 || y < 0 || !isVisible())
        return nullptr;
    const Rectangle absolute = bounds.translated(parentOrigin);
    if (!absolute.contains(Point(x, y)))
        return nullptr;
    if (children.isEmpty())
        return this;
    for (int32_t index = children.getCount() - 1; index >= 0; --index)
    {
        Component* child = children[index];
        if (child->hitTestExcluded)
            continue;
        Component* found = child->hitTest(x, y, absolute.getPosition());
        if (found && found->isHitTestable())
            return found;
    }
    return this;
}

}  // namespace q1framework
