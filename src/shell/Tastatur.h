#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// The table of the keys; nothing in it acts. A line is key, tab, text.
struct Tastatur : Form
{
    Tastatur();

    Label LHeading{controls, u"LHeading"};
    ListBox LKeys{controls, u"LKeys"};
    /// The keys that this desktop adds.
    Label LMoreHeading{controls, u"LMoreHeading"};
    ListBox LMoreKeys{controls, u"LMoreKeys"};
    Button bAbbrechen{controls, u"bAbbrechen"};
};

void mnuTastenbefehle_Click(Root& root);

void setUpTastatur(Root& root);

} // namespace orvantine
