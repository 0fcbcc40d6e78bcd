#include "transfer/FolderDialogs.h"

#include "app/DataFolder.h"
#include "app/IniFiles.h"
#include "app/Others.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "platform/FileDirPath.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void load(Root& root, FolderDialog& form, const QString& key)
{
    const QString kept = IniFiles::ReadValue(root, databaseFile(root), u"Options"_s, key);
    const bool stands = !kept.isEmpty() && root.files.isFolder(kept);
    form.stored = true;
    form.LTreeview.RootCaption = u"Arbeitsplatz"_s;
    form.LTreeview.SelectedFolder =
        FileDirPath::withoutSeparator(stands ? kept : SpecialFolder(root, Csidl::Documents));
    form.LTreeview.Change();
}

void BReady_Click(Root& root, FolderDialog& form, const QString& key, const QString& dateKey)
{
    const QString folder = FileDirPath::withoutSeparator(form.LTreeview.SelectedFolder);
    if (folder.isEmpty())
        return;
    if (form.Tag != u"1"_s) {
        const QString database = databaseFile(root);
        form.stored = IniFiles::WriteValue(root, database, u"Options"_s, key, FileDirPath::join(folder, {}));
        if (!dateKey.isEmpty() &&
            !IniFiles::WriteValue(root, database, u"Options"_s, dateKey, dateText(root.services.events.now().date())))
            form.stored = false;
    }
    root.tBrowseFolder.Text = folder;
    root.tBrowseFolder.Tag = u"1"_s;
    root.LMp3Files.Path = folder;
    root.services.forms.unload(form);
}

void bAbbrechen_Click(Root& root, FolderDialog& form)
{
    root.tBrowseFolder.Text = QString();
    root.tBrowseFolder.Tag = u"0"_s;
    root.services.forms.unload(form);
}

void setUp(Root& root, FolderDialog& form, const QString& key, const QString& dateKey)
{
    form.Load = [&root, &form, key] { load(root, form, key); };
    form.Unload = [&form] { form.Tag = QString(); };
    form.LTreeview.NativePath = [&root](const QString& folder) { return root.files.nativePath(folder); };
    // A heading of the tree is no folder.
    form.LTreeview.Change = [&form] { form.BReady.Enabled = !form.LTreeview.SelectedFolder.value().isEmpty(); };
    form.BReady.Click = [&root, &form, key, dateKey] { BReady_Click(root, form, key, dateKey); };
    form.bAbbrechen.Click = [&root, &form] { bAbbrechen_Click(root, form); };
}

} // namespace

FolderDialog::FolderDialog(const QString& formName, const QString& caption) : Form(formName)
{
    Caption = caption;
    BReady.Caption = u"&OK"_s;
    bAbbrechen.Caption = u"&Abbrechen"_s;
}

FilesCopy::FilesCopy() : FolderDialog(u"FilesCopy"_s, u" Zielordner festlegen"_s) {}

Ordner::Ordner() : FolderDialog(u"Ordner"_s, u" Ordner auswählen"_s) {}

void setUpFolderDialogs(Root& root)
{
    setUp(root, *root.filesCopy, u"CopyStick"_s, u"CopyDate"_s);
    setUp(root, *root.ordner, u"Soundfiles"_s, {});
}

} // namespace orvantine
