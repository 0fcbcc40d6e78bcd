#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// The welcome wizard: three pages over Picture0 to Picture3, and on the third one, when the lists stand, what came of
/// them.
struct Dialoge : Form
{
    Dialoge();

    enum Page : int { Greeting = 0, Folder = 1, Work = 2 };

    ControlArray<PictureBox, 0, 3> Picture{controls, u"Picture"};
    /// 0 "Abbruch", 1 "Zurück", 2 "Weiter".
    ControlArray<Button, 0, 2> bButton{controls, u"bButton"};
    ControlArray<Label, 0, 2> bLabel{controls, u"bLabel"};
    Label RCaption{controls, u"RCaption"};
    /// On the greeting's page: the tips in front of commands come up.
    CheckBox tips{controls, u"tips"};
    /// What it showed at first: the options may have another word meanwhile.
    bool tipsAtFirst = true;
    Label RHinweis{controls, u"RHinweis"};
    Label LOrdner{controls, u"LOrdner"};
    TextBox tOrdner{controls, u"tOrdner"};
    Button bOrdner{controls, u"bOrdner"};
    /// The folders of the lists that were made, each with the number of its tracks.
    ListBox LFindDir{controls, u"LFindDir"};
    CheckBox bSubDir{controls, u"bSubDir"};
    CheckBox bSndfiles{controls, u"bSndfiles"};
    Label Label1{controls, u"Label1"};
    Label Label2{controls, u"Label2"};
    /// What is at work, and at last what came of it; or why the folder's page goes no further.
    Label progress{controls, u"progress"};
    Label refusal{controls, u"refusal"};
    /// Seen behind the work: play the first list that was made.
    CheckBox play{controls, u"play"};

    /// The page that is seen.
    QProperty<int> page{Greeting};
    /// The lists are being made.
    QProperty<bool> working{false};
    /// Cancel was pressed, or the form has gone, while it works.
    bool stopped = false;
    /// Path of the first list that was made.
    QString firstList;
};

void setUpDialoge(Root& root);

} // namespace orvantine
