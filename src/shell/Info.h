#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// What the program is and whom to write to.
struct Info : Form
{
    Info();

    Label RName{controls, u"RName"};
    Label RVersion{controls, u"RVersion"};
    Label RWerbung{controls, u"RWerbung"};
    Label RContact{controls, u"RContact"};
    Button BMail{controls, u"BMail"};
    Button BWebseite{controls, u"BWebseite"};
    Button BAbbrechen{controls, u"BAbbrechen"};
};

/// Fills the texts and wires the buttons.
void setUpInfo(Root& root);

} // namespace orvantine
