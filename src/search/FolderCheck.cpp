#include "search/FolderCheck.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Help.h"
#include "app/IniFiles.h"
#include "app/PlaylistFile.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/mnuLaden.h"
#include "platform/FileDirPath.h"
#include "playlists/GetPlayEntrys.h"
#include "search/FileAfterFile.h"
#include "search/FolderPreview.h"
#include "search/FolderReplacement.h"
#include "transfer/BrowseFolders2k.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// One run of the dialog.
struct Run
{
    Root& root;
    FolderCheck& form;
    Command& command;
    const QString old;
    const QString fresh;
    qint64 count = 0;

    /// False once the program has ended or the dialog was closed.
    [[nodiscard]] bool goesOn() const { return !command.ended() && form.Visible.value(); }
};

int enterAsTab(TextBox& field, int key)
{
    constexpr int Enter = 13;
    if (key != Enter)
        return key;
    field.SendTab();
    return 0;
}

void enableInput(FolderCheck& form, bool enabled)
{
    for (Control* control :
         std::initializer_list<Control*>{&form.tFolderOld, &form.tFolderNew, &form.BReady, &form.bOrdner})
        control->Enabled = enabled;
}

void stopPreview(FolderCheck& form)
{
    form.tRuhe.Enabled = false;
    form.tVorschau.Enabled = false;
    form.preview.reset();
    form.LVorschau.Caption = QString();
}

/// The folders are others now.
void changed(FolderCheck& form)
{
    stopPreview(form);
    form.tRuhe.Enabled = true;
}

void tRuhe_Tick(Root& root, FolderCheck& form)
{
    const QString old = form.tFolderOld.Text;
    const QString fresh = form.tFolderNew.Text;
    stopPreview(form);
    if (old.isEmpty() || fresh.isEmpty())
        return;
    if (FolderPreview::neverEnds(old, fresh)) {
        form.LVorschau.Caption = u"Der neue Text enthält den alten: Das Ersetzen käme nie zu einem Ende."_s;
        return;
    }
    form.preview = std::make_shared<FolderPreview>(root, old, fresh);
    form.LVorschau.Caption = u"Die Playlisten werden durchgesehen …"_s;
    form.tVorschau.Enabled = true;
}

void tVorschau_Tick(FolderCheck& form)
{
    if (form.preview->step())
        return;
    const QString text = form.preview->text();
    stopPreview(form);
    form.LVorschau.Caption = text;
}

void load(const Root& root, FolderCheck& form)
{
    stopPreview(form);
    enableInput(form, true);
    form.Pointer = MousePointer::Default;
    form.tFolderOld.Text = readSetting(root, u"Soundfiles"_s).text();
    form.tFolderNew.Text = QString();
}

void bOrdner_Click(Root& root, FolderCheck& form)
{
    Command command(root);
    const std::optional<Answer> network =
        command.ask({.text = u"Möchten Sie Dateien von einem Netzwerkordner hinzufügen ?  "_s,
                     .title = u' ' + form.Caption.value(),
                     .icon = MessageIcon::Question,
                     .buttons = MessageButtons::YesNo});
    if (!network)
        return;
    const QString folder = BrowseFolders(root, network == Answer::Yes ? FolderRoot::Network : FolderRoot::Computer);
    if (folder.isEmpty() || command.ended() || !form.Visible)
        return;
    form.tFolderNew.Text = folder;
    changed(form);
}

/// The bytes of a file behind the replacements.
struct Replaced
{
    QByteArray bytes;
    qint64 count = 0;
};

/// Serves events meanwhile; nothing if the run has ended.
std::optional<Replaced> replaced(Run& run, const QByteArray& bytes)
{
    constexpr qint64 BetweenYields = 64;
    FileReplacement replacement(bytes, run.old, run.fresh);
    while (replacement.next())
        if ((replacement.isBeyondMeasure() || replacement.count() % BetweenYields == 0) &&
            (!run.command.yield() || !run.goesOn()))
            return {};
    if (!run.command.yield() || !run.goesOn())
        return {};
    return Replaced{replacement.result(), replacement.count()};
}

/// Replaces in one file and lets `write` bring it to the disk. False if the run has ended.
bool replaceInFile(Run& run, const QString& file, const std::function<bool(const Replaced&)>& write)
{
    constexpr int Attempts = 3;
    for (int attempt = 0; attempt < Attempts; ++attempt) {
        const std::optional<FileStamp> stamp = run.root.files.stamp(file);
        const ReadBytes read = run.root.files.readBytes(file);
        if (read.outcome == ReadOutcome::Failed)
            return true;
        const std::optional<Replaced> result = replaced(run, read.bytes);
        if (!result)
            return false;
        // Somebody else may have written to it while events were served.
        if (run.root.files.stamp(file) != stamp)
            continue;
        if (write(*result))
            run.count += result->count;
        return true;
    }
    run.root.files.noteFault(WriteFault::Disk);
    return true;
}

/// Copies a list to its name with another ending, unless a list of the catalogue stands there: what is written over is
/// kept in any case.
bool backUpList(Root& root, const QString& path, const QStringList& lists)
{
    const QString backup = backupOfList(path);
    const bool isList = std::any_of(lists.begin(), lists.end(),
                                    [&backup](const QString& list) { return FileDirPath::isSameFile(list, backup); });
    return backup.isEmpty() || isList || !mayHoldPlaylist(root, backup) || backUp(root, path, backup);
}

bool writeList(Root& root, const QString& path, const QStringList& lists, const Replaced& result)
{
    if (Dateiexistenz::IsMissing(root, path)) {
        // Required: a missing list comes into being, empty. Where it cannot, nothing is lost that had to be told.
        const PartChange alone(root.files);
        root.files.writeBytes(path, {});
        return false;
    }
    const bool written = changeAlone(root, [&] {
        return backUpList(root, path, lists) && (result.count == 0 || root.files.writeBytes(path, result.bytes));
    });
    if (written && result.count > 0 && root.trackList.isOf(path))
        root.trackList.doubt();
    return written;
}

bool replaceInLists(Run& run)
{
    Root& root = run.root;
    QStringList lists;
    for (int number = 1; number <= FolderPreview::NumbersLookedAt; ++number)
        lists += indexValue(root, databaseFile(root), number, EntryKey::Path);
    for (const QString& path : std::as_const(lists))
        if (!path.isEmpty() && mayHoldPlaylist(root, path) &&
            !replaceInFile(run, path, [&](const Replaced& result) { return writeList(root, path, lists, result); }))
            return false;
    return true;
}

bool writeDatabase(Root& root, const Replaced& result)
{
    return result.count == 0 ||
           changeAlone(root, [&] { return root.files.writeBytes(databaseFile(root), result.bytes); });
}

void keepAsDefault(Root& root, const QString& folder)
{
    writeSetting(root, u"Soundfiles"_s, folder);
    (void)changeAlone(
        root, [&] { return IniFiles::WriteValue(root, databaseFile(root), u"Options"_s, u"Soundfiles"_s, folder); });
}

/// Lists and database, one after the other. `kept`: the database has its copy.
void replaceEverywhere(Run& run, bool kept)
{
    Root& root = run.root;
    WholeChange together(root.files, WholeChange::Events::Served);
    // What may be written of a database that could not be read is not known.
    if (replaceInLists(run) && kept && !root.databaseDoubted)
        replaceInFile(run, databaseFile(root), [&root](const Replaced& result) { return writeDatabase(root, result); });
    if (!together.end())
        run.count = 0;
}

void BReady_Click(Root& root, FolderCheck& form)
{
    if (!form.BReady.Enabled.value() || form.tFolderOld.Text.value().isEmpty() ||
        form.tFolderNew.Text.value().isEmpty())
        return;
    Command command(root);
    const QString title = u' ' + form.Caption.value();
    const std::optional<Answer> asDefault =
        command.ask({.text = u"Möchten Sie den neuen Ordner als Standardverzeichnis verwenden ?  "_s,
                     .title = title,
                     .icon = MessageIcon::Question,
                     .buttons = MessageButtons::YesNo});
    if (!asDefault || !form.Visible.value())
        return;

    if (asDefault == Answer::Yes)
        keepAsDefault(root, form.tFolderNew.Text);
    const bool kept = Dateiexistenz::FileExists(root, databaseFile(root)) &&
                      changeAlone(root, [&] { return backUp(root, databaseFile(root), backupFile(root)); });
    stopPreview(form);
    form.LVorschau.Caption = u"Der Ordner wird überall ersetzt. Abbrechen beendet das."_s;
    enableInput(form, false);
    form.Pointer = MousePointer::Hourglass;
    command.wait();
    Run run{.root = root, .form = form, .command = command, .old = form.tFolderOld.Text, .fresh = form.tFolderNew.Text};
    if (!command.yield())
        return;
    replaceEverywhere(run, kept);
    if (command.ended())
        return;
    command.endWait();
    form.Pointer = MousePointer::Default;
    if (!run.goesOn()) {
        // The tracks in sight may be those of a list that was written before the dialog was closed.
        (void)ownTracks(root);
        return;
    }

    if (!command.yield() || !command.ask({.text = u"In den gespeicherten Wiedergabelisten wurde "_s +
                                                  QString::number(run.count) + u" Einträge geändert.  "_s,
                                          .title = title,
                                          .icon = MessageIcon::Information}))
        return;
    {
        const DoublesUnasked quiet(root);
        GetLoadListe(root);
    }
    if (!command.ended())
        root.services.forms.unload(form);
}

} // namespace

FolderCheck::FolderCheck() : Form(u"FolderCheck"_s)
{
    Caption = u" Aktualisierung von Speicherordnern"_s;
    LFolderOld.Caption = u"Geben Sie den alten Speicherordner ein:"_s;
    // Required: the second prompt has the words of the first.
    LFolderNew.Caption = u"Geben Sie den alten Speicherordner ein:"_s;
    bOrdner.Caption = u"Aus&suchen ..."_s;
    BReady.Caption = u"&OK"_s;
    bAbbrechen.Caption = u"&Abbrechen"_s;
    bHilfe.Caption = u"&Hilfe"_s;
}

void setUpFolderCheck(Root& root)
{
    FolderCheck& form = *root.folderCheck;
    form.Load = [&root, &form] { load(root, form); };
    form.Unload = [&form] { stopPreview(form); };
    for (TextBox* field : {&form.tFolderOld, &form.tFolderNew}) {
        field->KeyPress = [field](int key) { return enterAsTab(*field, key); };
        field->Change = [&form] { changed(form); };
    }
    form.tRuhe.Tick = [&root, &form] { tRuhe_Tick(root, form); };
    form.tVorschau.Tick = [&form] { tVorschau_Tick(form); };
    for (Timer* timer : {&form.tRuhe, &form.tVorschau})
        root.services.events.attach(*timer);
    form.bOrdner.Click = [&root, &form] { bOrdner_Click(root, form); };
    form.BReady.Click = [&root, &form] {
        runCommand(root, Changes::Both, [&root, &form] { BReady_Click(root, form); });
    };
    form.bAbbrechen.Click = [&root, &form] { root.services.forms.unload(form); };
    form.bHilfe.Click = [&root] { showHelp(root, u"/3.3 Medienordner zuweisen.htm"); };
}

void mnuFolderCheck_Click(Root& root)
{
    // Its OK would be passed over in front of a command that waits.
    if (!isAdmitted(root, Changes::Both))
        return;
    (void)Command(root).showModal(*root.folderCheck);
}

} // namespace orvantine
