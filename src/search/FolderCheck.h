#pragma once

#include "platform/Form.h"

#include <memory>

namespace orvantine {

class FolderPreview;
struct Root;

/// Puts a new folder in the place of an old one in all lists of the catalogue and in the database. It is plain text
/// that is replaced, whatever it stands for.
struct FolderCheck : Form
{
    FolderCheck();

    Label LFolderOld{controls, u"LFolderOld"};
    TextBox tFolderOld{controls, u"tFolderOld"};
    Label LFolderNew{controls, u"LFolderNew"};
    TextBox tFolderNew{controls, u"tFolderNew"};
    Button bOrdner{controls, u"bOrdner"};
    /// What would be changed.
    Label LVorschau{controls, u"LVorschau"};
    Button BReady{controls, u"BReady"};
    Button bAbbrechen{controls, u"bAbbrechen"};
    Button bHilfe{controls, u"bHilfe"};
    /// Nobody has typed for a while: the preview begins, and goes on list after list.
    Timer tRuhe{controls, u"tRuhe", std::chrono::milliseconds{400}};
    Timer tVorschau{controls, u"tVorschau", std::chrono::milliseconds{10}};
    std::shared_ptr<FolderPreview> preview;
};

void setUpFolderCheck(Root& root);

/// Shows the dialog.
void mnuFolderCheck_Click(Root& root);

} // namespace orvantine
