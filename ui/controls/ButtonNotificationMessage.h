#pragma once

#include "foundation/runtime/Message.h"
#include "foundation/var/Array.h"
#include "ui/controls/Button.h"

namespace q1framework
{

// The asynchronous click of a Button: its source, and the listeners the button had at the click.
class ButtonNotificationMessage : public Message
{
public:
    ButtonNotificationMessage(Button* source, const Array<Button::Listener*>& listeners)
        : source(source), listeners(listeners)
    {
    }

    Button* getSource() const { return source; }
    const Array<Button::Listener*>& getListeners() const { return listeners; }

private:
    Button* const source;
    const Array<Button::Listener*> listeners;
};

}  // namespace q1framework
