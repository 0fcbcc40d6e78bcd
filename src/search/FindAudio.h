#pragma once

#include "catalogue/CatalogueRows.h"
#include "platform/Form.h"

namespace orvantine {

struct Root;

/// The audio finder: scans a folder tree for playlists or audio files, and takes what it finds into the catalogue or
/// into the open list.
struct FindAudio : Form
{
    FindAudio();

    /// The entries of `LFindType`
    enum Type : int { Heading = 0, Playlists = 1, NamesAndFolders = 2, NamesOnly = 3 };

    Label startFolder{controls, u"startFolder"};
    TextBox TDrives{controls, u"TDrives"};
    Button bDurchsuchen{controls, u"bDurchsuchen"};
    Label searchType{controls, u"searchType"};
    ComboBox LFindType{controls, u"LFindType"};
    CheckBox bOnlyAudio{controls, u"bOnlyAudio"};
    Button Command1{controls, u"Command1"};
    /// What was found: folder, tab, file name.
    ListBox LFileList{controls, u"LFileList"};
    /// What the scan does, or came to.
    Label progress{controls, u"progress"};
    Button BReady{controls, u"BReady"};
    Button bAbbrechen{controls, u"bAbbrechen"};
    Button bHilfe{controls, u"bHilfe"};

    // Hidden: where the scan begins, the folders of its three levels, and the files that it looks for
    FileList LOrdner{controls, u"LOrdner"};
    ListBox List1{controls, u"List1"};
    ListBox List2{controls, u"List2"};
    ListBox List3{controls, u"List3"};
    FileList LCheckFiles{controls, u"LCheckFiles"};

    enum class Work { None, Scan, Add };
    Work work = Work::None;
    /// Cancel was pressed while it works.
    bool stopped = false;
    /// What the lines in LFileList are.
    int found = Heading;

    /// The list that was open when the finder came up: the one that the user adds tracks to.
    RowIdentity row;
    QString listPath;
};

void setUpFindAudio(Root& root);

} // namespace orvantine
