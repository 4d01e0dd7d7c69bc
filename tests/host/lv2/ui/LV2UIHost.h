#pragma once

// GoogleTest and the X11 support first: Xlib's macros (None, Bool) would break GoogleTest.
#include <gtest/gtest.h>

#include "DisplayWithoutGL.h"
#include "TestDisplay.h"

#include "host/lv2/LV2PortLayout.h"
#include "media/geometry/Rectangle.h"
#include "media/image/Image.h"

#include <lv2/core/lv2.h>
#include <lv2/ui/ui.h>
#include <lv2/urid/urid.h>

#include <string>
#include <vector>

class KLAudioPlugin;
class MainComponent;

namespace q1framework
{
class LV2UIWrapper;
}

// A host of Kelvane's LV2 user interface, for the X11 tests, doing what LV2 hosts do with an X11
// UI: the plug-in and its interface built into the test program and reached through their
// descriptors (getLV2Descriptor, getLV2UIDescriptor), set up as the shared object sets itself up,
// with the build's resource pack. The plug-in runs at 44.1 kHz with every control and meter port
// connected to a float of the host's (the controls at their defaults); the interface is made in a
// top-level window of the test's own X connection with the features a real host passes:
//   ui:parent           that window;
//   ui:idleInterface    the host calls idle, every 20 ms in idle();
//   ui:resize           recorded, and followed by resizing the window unless acceptsResize is off;
//   ui:touch            recorded;
//   instance access     the plug-in's handle;
//   urid:map            a plain map of the host's own.
// The write function sets the control port's float, which the next block applies, and records
// the write. Each feature but the parent and idle can be left out (Features).
class LV2UIHost
{
public:
    struct Features
    {
        bool instanceAccess = true;
        bool resize = true;
        bool touch = true;
    };

    struct Write
    {
        uint32_t port;
        float value;
    };
    struct Touch
    {
        uint32_t port;
        bool grabbed;
    };

    explicit LV2UIHost(const Features& features);
    LV2UIHost() : LV2UIHost(Features()) {}
    // Closes the interface, then frees the plug-in.
    ~LV2UIHost();

    LV2UIHost(const LV2UIHost&) = delete;
    LV2UIHost& operator=(const LV2UIHost&) = delete;

    // Makes the host's window at hostBounds and instantiates the interface in it; answers whether
    // the interface was made. `features` replaces the host's feature list when not null.
    bool open(const q1framework::Rectangle& hostBounds = q1framework::Rectangle(0, 0, 1600, 400),
              const LV2_Feature* const* features = nullptr);
    // Cleans the interface up.
    void close();
    // count idle calls, each after a pause of 20 ms (a host at 50 Hz).
    void idle(int count = 1);

    // The float of a control or meter port.
    float& port(uint32_t index) { return ports[index]; }
    // port_event of the float protocol with the port's float, as hosts tell an interface; one
    // port, every control port, every meter port.
    void notify(uint32_t index);
    void notifyControls();
    void notifyMeters();
    // One block run on the calling thread, in place on the two channels.
    void process(std::vector<float>& left, std::vector<float>& right);

    // What the interface told the host since the last take.
    std::vector<Write> takeWrites();
    std::vector<Touch> takeTouches();
    std::vector<q1framework::Point> takeResizes();
    // The answer to the interface's ui:resize: whether the host resizes its window.
    bool acceptsResize = true;

    const q1framework::LV2PortLayout& getLayout() const { return layout; }
    KLAudioPlugin& getPlugin() const;
    q1framework::LV2UIWrapper* getUI() const { return ui; }
    MainComponent& getMainComponent() const;
    const LV2UI_Descriptor& getUIDescriptor() const { return *uiDescriptor; }

    TestDisplay& getDisplay() { return display; }
    ::Window getParentWindow() const { return parent; }
    // The interface's widget, its window; 0 while closed.
    ::Window getEditorWindow() const;
    // A window's place in its parent and size, once both connections have settled.
    q1framework::Rectangle getGeometry(::Window window);
    // The interface's window as it shows now.
    q1framework::Image screenshot();

private:
    static uint32_t mapUri(LV2_URID_Map_Handle handle, const char* uri);
    static int resizeHost(LV2UI_Feature_Handle handle, int width, int height);
    static void touchPort(LV2UI_Feature_Handle handle, uint32_t port, bool grabbed);
    static void writePort(LV2UI_Controller controller, uint32_t port, uint32_t size, uint32_t protocol,
                          const void* buffer);

    TestDisplay display;
    q1framework::LV2PortLayout layout;
    const LV2_Descriptor* pluginDescriptor;
    const LV2UI_Descriptor* uiDescriptor;
    LV2_Handle plugin = nullptr;
    q1framework::LV2UIWrapper* ui = nullptr;
    ::Window parent = 0;
    std::vector<float> ports;

    Features offered;
    std::vector<std::string> uris;  // URID n is uris[n - 1]
    LV2_URID_Map map;
    LV2UI_Resize resize;
    LV2UI_Touch touch;
    std::vector<LV2_Feature> featureRecords;
    std::vector<const LV2_Feature*> featureList;

    std::vector<Write> writes;
    std::vector<Touch> touches;
    std::vector<q1framework::Point> resizes;
};
