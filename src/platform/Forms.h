#pragma once

#include "platform/Form.h"

namespace orvantine {

/// Brings forms onto the screen. A form's Load runs before it is seen, its Unload when it goes.
class Forms
{
public:
    virtual ~Forms() = default;

    /// Returns when the form has been unloaded or hidden.
    virtual void showModal(Form& form) = 0;
    virtual void show(Form& form) = 0;
    /// Also for a form that is not shown.
    virtual void unload(Form& form) = 0;
    /// Brings a form that is shown before the other windows.
    virtual void toFront(Form& form) = 0;
};

} // namespace orvantine
