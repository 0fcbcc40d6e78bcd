#pragma once

#include "platform/Form.h"
#include "platform/ListView.h"

namespace orvantine {

struct Root;

/// Lists what is missing: files of playlists, and tracks of those that stand. It repairs nothing.
struct ErrorListe : Form
{
    ErrorListe();

    Label LHinweis{controls, u"LHinweis"};
    ListView LErrorView{controls, u"LErrorView"};
    /// What the selected line means.
    Label LFehler{controls, u"LFehler"};
    Label LAnzahl{controls, u"LAnzahl"};
    Button BReady{controls, u"BReady"};
    Button bAbbrechen{controls, u"bAbbrechen"};
    Button bHilfe{controls, u"bHilfe"};

    /// The fault whose list is to be opened once the form is closed; 0 for none.
    int chosen = 0;
};

void setUpErrorListe(Root& root);

/// Opens the list of the fault that was chosen, at its track.
void openChosenFault(Root& root);

} // namespace orvantine
