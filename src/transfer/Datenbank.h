#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// Where the DataFolder is looked for at the next start.
struct Datenbank : Form
{
    Datenbank();

    Label LHinweis{controls, u"LHinweis"};
    Label LDatabase{controls, u"LDatabase"};
    TextBox tDatabase{controls, u"tDatabase"};
    Button bDurchsuchen{controls, u"bDurchsuchen"};
    Button BReady{controls, u"BReady"};
    Button bAbbrechen{controls, u"bAbbrechen"};
    Button bHilfe{controls, u"bHilfe"};
};

void setUpDatenbank(Root& root);

void mnuDatabase_Click(Root& root);

} // namespace orvantine
