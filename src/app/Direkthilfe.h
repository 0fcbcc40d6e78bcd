#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// The tip that is shown in front of a command.
struct Direkthilfe : Form
{
    Direkthilfe();

    Label RProblem{controls, u"RProblem"};
    /// The tip's number.
    Label RHelpID{controls, u"RHelpID"};
    Label RText{controls, u"RText"};
    PictureBox Picture{controls, u"Picture"};
    CheckBox BHelpShow{controls, u"BHelpShow"};
    CheckBox BHelpDisabled{controls, u"BHelpDisabled"};
    Button BReady{controls, u"BReady"};

    /// The button was pressed since the form came up.
    bool pressed = false;
};

void setUpDirekthilfe(Root& root);

} // namespace orvantine
