#pragma once

#include "platform/Form.h"

namespace orvantine {

/// The borderless start picture that is shown while the main window loads.
struct Startup : Form
{
    Startup();

    Label RTitle{controls, u"RTitle"};
    Label RVersion{controls, u"RVersion"};
    Label RStatus{controls, u"RStatus"};
};

} // namespace orvantine
