#pragma once

#include "editor/KLAudioPluginEditor.h"
#include "editor/MainComponent.h"
#include "media/resource/ResourcePack.h"
#include "native/null/NullWindowPeer.h"
#include "native/window/WindowFlags.h"
#include "plugin/KLAudioPlugin.h"
#include "plugin/SharedResourcePack.h"
#include "ui/window/ComponentsWindow.h"

#include <memory>

// What a plug-in needs for its editor in a test program: the editor's pack read from the build's
// bundle folder, and the editor factory. Registered for the life of the object; make it before
// the plug-in and let it go after.
struct EditorServices
{
    EditorServices()
    {
        q1framework::ResourcePack::setResourcePathFunction(
            [](const q1framework::String& name) { return q1framework::String(EDITOR_PACK_FOLDER "/") + name; });
        q1framework::SharedResourcePack::setFunctions(
            [](const char* fileName) { return q1framework::ResourcePack::loadResourcePack(q1framework::String(fileName)); },
            [](q1framework::ResourcePack* pack) { delete pack; });
        KLAudioPlugin::setEditorFactory(&KLAudioPluginEditor::create);
    }
    ~EditorServices()
    {
        KLAudioPlugin::setEditorFactory(nullptr);
        q1framework::SharedResourcePack::setFunctions(nullptr, nullptr);
        q1framework::ResourcePack::setResourcePathFunction(nullptr);
    }
};

// Kelvane's editor in a window of the null backend, as a host adapter shows it: the editor is
// the window's content and draws its overlay. The window's pixels are the peer's screen.
struct EditorWindow
{
    explicit EditorWindow(int width = 750, int height = 175)
    {
        plugin.setEditorSize(width, height);
        editor = static_cast<KLAudioPluginEditor*>(plugin.createEditor());
        window = std::make_unique<q1framework::ComponentsWindow>(q1framework::Rectangle(0, 0, 10, 10),
                                                                 q1framework::WindowFlags::imageSurface,
                                                                 q1framework::String(), reinterpret_cast<void*>(1));
        window->setContent(editor, true);
        window->setOverlayDrawing(true);
        peer = q1framework::NullWindowPeer::of(*window);
        frame();
    }

    void frame() { q1framework::Window::runFrame(); }
    MainComponent& main() const { return editor->getMainComponent(); }
    // A pointer event at a window position.
    void mouse(int type, q1framework::Point position, int button = 0)
    {
        peer->injectMouse(type, position, button, type == 1 ? 1 : 0, 0.0f, 0.0f);
    }
    // Moves to from, presses the left button, drags to to and releases it there.
    void drag(const q1framework::Point& from, const q1framework::Point& to)
    {
        mouse(2, from);
        mouse(1, from, 1);
        mouse(2, to);
        mouse(3, to, 1);
    }
    // Window pixels of a picture position, at the editor's present size.
    q1framework::Point toWindow(int pictureX, int pictureY) const
    {
        return q1framework::Point(pictureX * editor->getWidth() / MainComponent::pictureWidth,
                                  pictureY * editor->getHeight() / MainComponent::pictureHeight);
    }

    EditorServices services;
    KLAudioPlugin plugin;
    KLAudioPluginEditor* editor = nullptr;  // owned by the window
    std::unique_ptr<q1framework::ComponentsWindow> window;
    q1framework::NullWindowPeer* peer = nullptr;
};
