#pragma once

#include "media/geometry/Colour.h"
#include "render/graphics/SoftwareGraphics.h"
#include "ui/component/Component.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

// A component for the toolkit's tests. Each call it receives appends "<name>.<call>" to a log the
// test shares, then runs the action the test set for that call, if any (an action may delete the
// probe itself; nothing of it is touched afterwards). It paints its whole paint area with its
// colour, blended, once per painted rectangle, and remembers those rectangles.
class Probe : public q1framework::Component
{
public:
    using Log = std::vector<std::string>;

    Probe(std::string name, Log* log, q1framework::Colour colour = q1framework::Colour(200, 100, 50, 255))
        : name(std::move(name)), log(log), colour(colour)
    {
    }

    // Adds a probe child at bounds, visible.
    Probe* addProbe(const std::string& childName, const q1framework::Rectangle& bounds,
                    q1framework::Colour childColour = q1framework::Colour(200, 100, 50, 255))
    {
        auto* child = new Probe(childName, log, childColour);
        child->setBounds(bounds, false);
        addAndMakeVisible(child);
        return child;
    }

    void mouseEnter(const q1framework::MouseEvent& event) override { note("enter", event); }
    void mouseExit(const q1framework::MouseEvent& event) override { note("exit", event); }
    void mouseMove(const q1framework::MouseEvent& event) override { note("move", event); }
    void mouseDrag(const q1framework::MouseEvent& event) override { note("drag", event); }
    void mouseDown(const q1framework::MouseEvent& event) override { note("down", event); }
    void mouseUp(const q1framework::MouseEvent& event) override { note("up", event); }
    bool mouseWheel(const q1framework::MouseEvent& event) override
    {
        const bool used = usesWheel;
        note("wheel", event);
        return used;
    }
    void popupDismissed(Component*) override { record("popupDismissed"); }
    void moved() override { record("moved"); }
    void resized() override { record("resized"); }
    void childMoved(Component* child) override { record("childMoved " + nameOf(child)); }
    void childResized(Component* child) override { record("childResized " + nameOf(child)); }
    void childRemoved(Component* child) override { record("childRemoved " + nameOf(child)); }
    void childValueChanged(Component* child) override { record("childValueChanged " + nameOf(child)); }
    void focusGained() override { record("focusGained"); }
    void focusLost() override { record("focusLost"); }
    bool keyPressed(const q1framework::KeyEvent& key) override
    {
        const bool used = usesKey == key.code;
        if (record("key " + std::to_string(key.code)) && !used)
            return Component::keyPressed(key);
        return used;
    }
    bool globalKeyPressed(const q1framework::KeyEvent& key) override
    {
        record("globalKey " + std::to_string(key.code));
        return usesGlobalKey == key.code;
    }
    bool isInterestedInFiles(q1framework::Point position, const q1framework::Array<q1framework::String>&) override
    {
        record("filesInterest " + std::to_string(position.x) + "," + std::to_string(position.y));
        return wantsFiles;
    }
    bool filesDropped(q1framework::Point position, const q1framework::Array<q1framework::String>& files) override
    {
        record("filesDropped " + std::to_string(position.x) + "," + std::to_string(position.y) + " "
               + std::to_string(files.getCount()));
        return takesFiles;
    }
    void scaleChanged(double newScale, double oldScale) override
    {
        record("scale " + std::to_string(newScale) + " from " + std::to_string(oldScale));
    }
    void tick() override
    {
        if (logTicks)
            record("tick");
    }
    bool isDragTarget() override { return dragTarget; }
    bool isInterestedInDrag(Component* source, Component*, void*, q1framework::Point position) override
    {
        record("interested " + nameOf(source) + " " + std::to_string(position.x) + "," + std::to_string(position.y));
        return acceptsDrags;
    }
    void itemDropped(Component* source, Component* target, void*, q1framework::Point position) override
    {
        record("dropped " + nameOf(source) + " on " + nameOf(target) + " " + std::to_string(position.x) + ","
               + std::to_string(position.y));
    }
    void paint(q1framework::SoftwareGraphics& graphics) override
    {
        paintedClips.push_back(graphics.getClip(false));
        if (logPaints)
            record("paint");
        q1framework::Colour fill = colour;
        graphics.fillRect(getLocalPaintArea(), fill, true);
    }

    // The paint area in local coordinates.
    q1framework::Rectangle getLocalPaintArea()
    {
        const q1framework::Rectangle area = getPaintBounds();
        return area.translated(q1framework::Point() - getPosition());
    }

    static std::string nameOf(Component* component)
    {
        auto* probe = dynamic_cast<Probe*>(component);
        return probe ? probe->name : component ? "?" : "null";
    }

    std::string name;
    Log* log;
    q1framework::Colour colour;
    std::map<std::string, std::function<void()>> actions;  // by call name, run after logging it
    std::vector<q1framework::Rectangle> paintedClips;      // buffer coordinates
    q1framework::MouseEvent lastEvent;
    bool usesWheel = false;
    int64_t usesKey = -1;
    int64_t usesGlobalKey = -1;
    bool dragTarget = false;
    bool acceptsDrags = true;
    bool logPaints = false;
    bool logTicks = false;
    bool wantsFiles = false;
    bool takesFiles = false;

private:
    void note(const std::string& call, const q1framework::MouseEvent& event)
    {
        lastEvent = event;
        record(call);
    }

    // Logs the call and runs its action; false when the action deleted this probe.
    bool record(const std::string& call)
    {
        if (log)
            log->push_back(name + "." + call);
        const auto found = actions.find(call);
        if (found == actions.end())
            return true;
        SafePointer self(this);
        const std::function<void()> action = found->second;
        action();
        return static_cast<bool>(self);
    }
};
