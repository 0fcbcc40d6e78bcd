#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// The welcome wizard: three pages over Picture0 to Picture3. Page 0 greets, page 1 takes the folder, page 2 waits.
struct Dialoge : Form
{
    Dialoge();

    ControlArray<PictureBox, 0, 3> Picture{controls, u"Picture"};
    /// 0 "Abbruch", 1 "Zurück", 2 "Weiter".
    ControlArray<Button, 0, 2> bButton{controls, u"bButton"};
    ControlArray<Label, 0, 2> bLabel{controls, u"bLabel"};
    Label RCaption{controls, u"RCaption"};
    Label RHinweis{controls, u"RHinweis"};
    Label LOrdner{controls, u"LOrdner"};
    TextBox tOrdner{controls, u"tOrdner"};
    Button bOrdner{controls, u"bOrdner"};
    ListBox LFindDir{controls, u"LFindDir"};
    CheckBox bSubDir{controls, u"bSubDir"};
    CheckBox bSndfiles{controls, u"bSndfiles"};
    Label Label1{controls, u"Label1"};
    Label Label2{controls, u"Label2"};

    /// The page that is seen, 0 to 2.
    QProperty<int> page{0};
};

/// Wires the buttons. The first page stands alone as long as nothing can add the folder's lists.
void setUpDialoge(Root& root);

} // namespace orvantine
