#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// A folder is chosen in a tree of the file system. The result goes to tBrowseFolder: the folder and "1", or "" and "0"
/// on Cancel. The key of section `Options` that keeps the folder for the next time is left alone while Tag is "1"; the
/// mark goes with the form.
struct FolderDialog : Form
{
    FolderDialog(const QString& formName, const QString& caption);

    FolderTree LTreeview{controls, u"LTreeview"};
    Button BReady{controls, u"BReady"};
    Button bAbbrechen{controls, u"bAbbrechen"};

    /// The folder that was chosen last could be kept.
    bool stored = true;
};

/// The target folder of a transfer, kept as `CopyStick` with today's date as `CopyDate`.
struct FilesCopy : FolderDialog
{
    FilesCopy();
};

/// A folder of sound files, kept as `Soundfiles`.
struct Ordner : FolderDialog
{
    Ordner();
};

void setUpFolderDialogs(Root& root);

} // namespace orvantine
