#pragma once

#include "foundation/runtime/MessagePoster.h"
#include "foundation/string/String.h"
#include "foundation/var/Array.h"
#include "render/font/Font.h"
#include "ui/component/Component.h"

namespace q1framework
{

class Message;

// A push button drawn by the LookAndFeel. A click is a press and a release with the pointer over
// the button; it fires buttonClicked on the listeners, either at once or, with setAsync, later
// on the main thread through the message pump (a copy of the listener list is taken at the click,
// so listeners added or removed in between do not change who hears of it). With setTriggerOnPress
// the press itself fires, and the release does not fire again.
//
// Shows the pointing-hand cursor, and repaints on enter, exit, press and release. Ignores the
// mouse while disabled; a button disabled between press and release stays down.
//
// Thread contract: main thread only; the asynchronous click is posted with the poster's lock.
class Button : public Component, public MessagePoster
{
public:
    // Not owned. Empty defaults.
    class Listener
    {
    public:
        virtual ~Listener() = default;
        // At every press.
        virtual void buttonPressed(Button*) {}
        // At a click (see above).
        virtual void buttonClicked(Button*) {}
        // At every release, whether or not it made a click.
        virtual void buttonReleased(Button*) {}
    };

    explicit Button(const String& text);
    // Cancels a click still waiting for the pump.
    ~Button() override;

    const String& getText() const { return text; }
    // Repaints.
    void setText(const String& newText);
    bool isDown() const { return down; }
    void addListener(Listener* listener);
    void removeListener(Listener* listener);
    void setTriggerOnPress(bool trigger) { triggerOnPress = trigger; }
    void setAsync(bool asynchronous) { async = asynchronous; }
    // The font of the text; a null font (the default) uses the painter's default font.
    void setFont(const Font& newFont) { font = newFont; }
    const Font& getFont() const { return font; }

    void paint(SoftwareGraphics& graphics) override;
    void mouseDown(const MouseEvent& event) override;
    void mouseUp(const MouseEvent& event) override;

    // A posted message, on the main thread: a ButtonNotificationMessage tells its listeners of
    // the click. Subclasses may handle messages of their own.
    virtual void messageReceived(Message* message);
    void handleMessage(Message* message) override;

private:
    void fire();

    String text;
    bool triggerOnPress = false;
    bool down = false;
    bool async = false;
    Array<Listener*> buttonListeners;
    Font font;
};

}  // namespace q1framework
