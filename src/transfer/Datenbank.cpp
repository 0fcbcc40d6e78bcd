#include "transfer/Datenbank.h"

#include "app/Command.h"
#include "app/Help.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"
#include "transfer/BrowseFolders2k.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void changed(Datenbank& form)
{
    // Nothing would name a folder of nobody's.
    form.BReady.Enabled = !form.tDatabase.Text.value().isEmpty();
}

void load(const Root& root, Datenbank& form)
{
    form.tDatabase.Text = root.tDatenbank.Text.value();
    changed(form);
}

void bDurchsuchen_Click(Root& root, Datenbank& form)
{
    if (const QString folder = BrowseFolders(root, FolderRoot::Computer); !folder.isEmpty())
        form.tDatabase.Text = folder;
    changed(form);
}

void BReady_Click(Root& root, Datenbank& form)
{
    Command command(root);
    const std::optional<Answer> answer =
        command.ask({.text = u"Änderungen an der Datenbank erfordern einen Neustart der Anwendung, damit die "
                             u"Einstellungen neu geladen werden können. Soweit keine Datenbank im Ordner vorhanden "
                             u"ist, wird diese nach dem Neustart erstellt und zugewiesen.\n"
                             u"\n"
                             u"Möchten Sie die Anwendung neustarten ?"_s,
                     .title = form.Caption.value() + u' ',
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::YesNoCancel});
    if (!answer || answer == Answer::Cancel)
        return;
    if (answer == Answer::Yes) {
        const QString folder = FileDirPath::join(form.tDatabase.Text.value(), u"");
        // The start makes what lies in it, not the folder itself.
        if (!root.files.isFolder(folder))
            root.files.makeFolder(FileDirPath::withoutSeparator(folder));
        writeSetting(root, u"Database"_s, folder);
    }
    root.services.forms.unload(form);
}

} // namespace

Datenbank::Datenbank() : Form(u"Datenbank"_s)
{
    Caption = u" Datenbank-Ordner"_s;
    LHinweis.Caption = u"Im Datenbank-Ordner werden die Einträge des Orvanten Manager und die Wiedergabelisten und "
                       u"CD-Covers gespeichert."_s;
    LDatabase.Caption = u"&Datenbank-Ordner:"_s;
    bDurchsuchen.Caption = u"Aus&suchen ..."_s;
    BReady.Caption = u"&OK"_s;
    bAbbrechen.Caption = u"&Abbrechen"_s;
    bHilfe.Caption = u"&Hilfe"_s;
}

void setUpDatenbank(Root& root)
{
    Datenbank& form = *root.datenbank;
    form.Load = [&root, &form] { load(root, form); };
    form.tDatabase.Change = [&form] { changed(form); };
    form.bDurchsuchen.Click = [&root, &form] { bDurchsuchen_Click(root, form); };
    form.BReady.Click = [&root, &form] { BReady_Click(root, form); };
    form.bAbbrechen.Click = [&root, &form] { root.services.forms.unload(form); };
    form.bHilfe.Click = [&root] { showHelp(root, u"/4.2 Sicherungen und Datenbank.htm"); };
}

void mnuDatabase_Click(Root& root)
{
    (void)Command(root).showModal(*root.datenbank);
}

} // namespace orvantine
