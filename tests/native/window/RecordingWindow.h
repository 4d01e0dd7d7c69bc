#pragma once

#include "native/window/Window.h"

#include <string>
#include <vector>

// A Window that writes down every virtual call it receives, one line each, such as
// "mouse 1 (10,20) button 1 clicks 2 wheel 0,0" or "key down 268435461 native 0". Used by the
// tests of both backends, which then compare the lines with the calls they expect.
class RecordingWindow : public q1framework::Window
{
public:
    using q1framework::Window::Window;

    std::vector<std::string> calls;
    // Answers of keyPressed, keyReleased and isInterestedInFiles.
    bool usesKeys = true;
    bool takesFiles = true;
    // Counts of the calls that come in numbers.
    int frameTicks = 0;
    int paints = 0;

    void backingScaleChanged() override { calls.push_back("scale " + std::to_string(getBackingScale())); }
    void closeRequested() override { calls.push_back("close"); }
    bool isInterestedInFiles(const q1framework::Point& position, const q1framework::Array<q1framework::String>& paths) override
    {
        calls.push_back("interested " + describe(position) + " " + describe(paths));
        return takesFiles;
    }
    void filesDropped(const q1framework::Point& position, const q1framework::Array<q1framework::String>& paths) override
    {
        calls.push_back("dropped " + describe(position) + " " + describe(paths));
    }
    void mouseEvent(int type, q1framework::Point position, int button, int clickCount, float deltaX, float deltaY) override
    {
        calls.push_back("mouse " + std::to_string(type) + " " + describe(position) + " button " + std::to_string(button)
                        + " clicks " + std::to_string(clickCount) + " wheel " + number(deltaX) + "," + number(deltaY));
    }
    void mouseLeft(q1framework::Point position) override { calls.push_back("left " + describe(position)); }
    void activeChanged(bool active) override { calls.push_back(active ? "active" : "inactive"); }
    void resized() override { calls.push_back("resized " + describe(getClientSize())); }
    void frameTick() override { ++frameTicks; }
    void paint() override { ++paints; }
    bool keyPressed(int key, int nativeKeyCode) override
    {
        calls.push_back("key down " + std::to_string(key) + " native " + std::to_string(nativeKeyCode));
        return usesKeys;
    }
    bool keyReleased(int key, int nativeKeyCode) override
    {
        calls.push_back("key up " + std::to_string(key) + " native " + std::to_string(nativeKeyCode));
        return usesKeys;
    }

    // Calls whose line starts with prefix.
    std::vector<std::string> callsStartingWith(const std::string& prefix) const
    {
        std::vector<std::string> found;
        for (const std::string& call : calls)
            if (call.compare(0, prefix.size(), prefix) == 0)
                found.push_back(call);
        return found;
    }

    static std::string describe(const q1framework::Point& point)
    {
        return "(" + std::to_string(point.x) + "," + std::to_string(point.y) + ")";
    }

    static std::string describe(const q1framework::Array<q1framework::String>& paths)
    {
        std::string text = "[";
        for (const q1framework::String& path : paths)
            text += (text.size() > 1 ? " " : "") + std::string(path.getCString());
        return text + "]";
    }

    static std::string number(float value)
    {
        const int whole = static_cast<int>(value);
        return whole == value ? std::to_string(whole) : std::to_string(value);
    }
};
