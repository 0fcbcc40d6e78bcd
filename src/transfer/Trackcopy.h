#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// Links the selected track into another playlist. No file is copied.
struct Trackcopy : Form
{
    Trackcopy();

    Label LHinweis{controls, u"LHinweis"};
    Label tTrackname{controls, u"tTrackname"};
    ListBox LListen{controls, u"LListen"};
    Button BReady{controls, u"BReady"};
    Button bAbbrechen{controls, u"bAbbrechen"};
};

void setUpTrackcopy(Root& root);

/// Shows the dialog for the selected track.
void mnuCopyTrack_Click(Root& root);

} // namespace orvantine
