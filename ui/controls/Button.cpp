#include "ui/controls/Button.h"

#include "ui/controls/ButtonNotificationMessage.h"
#include "ui/lookandfeel/LookAndFeel.h"

namespace q1framework
{

Button::Button(const String& buttonText) : MessagePoster(this), text(buttonText)
{
    setCursor(Mouse::Cursor(Mouse::pointingHandCursor));
    setRepaintTriggers(true, false, true);
}

Button::~Button() = default;

void Button::setText(const String& newText)
{
    text = newText;
    repaint();
}

void Button::addListener(Listener* listener)
{
    if (listener)
        buttonListeners.addIfNotAlreadyThere(listener);
}

void Button::removeListener(Listener* listener)
{
    buttonListeners.removeFirstMatching(listener);
}

void Button::paint(SoftwareGraphics& graphics)
{
    LookAndFeel& lookAndFeel = *getLookAndFeel();
    const Rectangle area(0, 0, getWidth(), getHeight());
    lookAndFeel.drawButtonBackground(graphics, area, isEnabled(), isMouseOver(), down);
    lookAndFeel.drawButtonText(graphics, area, text, font, isEnabled(), isMouseOver(), down);
}

void Button::mouseDown(const MouseEvent&)
{
    if (!isEnabled())
        return;
    down = true;
    SafePointer self(this);
    for (int32_t index = 0; self && index < buttonListeners.getCount(); ++index)
        buttonListeners[index]->buttonPressed(this);
    if (self && triggerOnPress)
        fire();
    if (self)
        repaint();
}

void Button::mouseUp(const MouseEvent& event)
{
    if (!isEnabled())
        return;
    repaint();
    down = false;
    SafePointer self(this);
    // The release counts as a click only over the button; during the press the pointer may have
    // left it, which the pointer's capture does not report.
    if (!triggerOnPress && Rectangle(0, 0, getWidth(), getHeight()).contains(Point(event.x, event.y)))
    {
        fire();
        if (self && getParent())
            getParent()->childValueChanged(this);
    }
    for (int32_t index = 0; self && index < buttonListeners.getCount(); ++index)
        buttonListeners[index]->buttonReleased(this);
}

void Button::fire()
{
    if (async)
    {
        postMessage(new ButtonNotificationMessage(this, buttonListeners));
        return;
    }
    SafePointer self(this);
    for (int32_t index = 0; self && index < buttonListeners.getCount(); ++index)
        buttonListeners[index]->buttonClicked(this);
}

void Button::messageReceived(Message* message)
{
    auto* notification = dynamic_cast<ButtonNotificationMessage*>(message);
    if (!notification)
        return;
    // A listener may delete the button; the others then hear nothing rather than a dead pointer.
    SafePointer source(notification->getSource());
    const Array<Listener*>& listeners = notification->getListeners();
    for (int32_t index = 0; source && index < listeners.getCount(); ++index)
        listeners[index]->buttonClicked(notification->getSource());
}

void Button::handleMessage(Message* message)
{
    messageReceived(message);
}

}  // namespace q1framework
