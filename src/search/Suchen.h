#pragma once

#include "platform/Form.h"

namespace orvantine {

/// The search dialog. While it is visible, the checks of the track display stay silent.
struct Suchen : Form
{
    Suchen();
};

} // namespace orvantine
