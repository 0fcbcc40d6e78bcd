#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// Edits the stored settings.
struct Optionen : Form
{
    Optionen();

    CheckBox bFolderView{controls, u"bFolderView"};
    CheckBox bLokalePlayliste{controls, u"bLokalePlayliste"};
    CheckBox bShowDialog{controls, u"bShowDialog"};
    CheckBox bShowChange{controls, u"bShowChange"};
    CheckBox bCheckEntrys{controls, u"bCheckEntrys"};
    CheckBox bCreateFolder{controls, u"bCreateFolder"};
    CheckBox bShowDate{controls, u"bShowDate"};
    CheckBox bAutoTag{controls, u"bAutoTag"};
    CheckBox bNoUpdate{controls, u"bNoUpdate"};
    Label LZipCompress{controls, u"LZipCompress"};
    ComboBox bZipCompress{controls, u"bZipCompress"};
    CheckBox bUseCDBurner{controls, u"bUseCDBurner"};
    CheckBox bLoadPlayer{controls, u"bLoadPlayer"};
    Label LSoundfiles{controls, u"LSoundfiles"};
    TextBox tSoundfiles{controls, u"tSoundfiles"};
    Button bSoundfiles{controls, u"bSoundfiles"};
    Label LRipper{controls, u"LRipper"};
    TextBox tRipper{controls, u"tRipper"};
    Button bRipper{controls, u"bRipper"};
    /// The switch for the tips in front of commands; written only if it was turned.
    CheckBox bHelpDirekt{controls, u"bHelpDirekt"};
    Button BReady{controls, u"BReady"};
    Button bAbbrechen{controls, u"bAbbrechen"};
    Button bHilfe{controls, u"bHilfe"};
};

void mnuOptionen_Click(Root& root);

void setUpOptionen(Root& root);

} // namespace orvantine
