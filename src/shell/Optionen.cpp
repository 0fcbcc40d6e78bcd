#include "shell/Optionen.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Help.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "platform/FileDirPath.h"
#include "shell/MainWindow.h"
#include "transfer/BrowseFolders2k.h"

#include <array>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString runKey()
{
    return u"Software\\Microsoft\\Windows\\CurrentVersion\\Run"_s;
}

/// "stark!", which also stands for an absent choice.
constexpr int Strongest = 2;

struct BoxSetting
{
    CheckBox& box;
    QString name;
    bool onWhenAbsent;
};

/// The check boxes in front of the list of strengths, in the order in which they are written.
std::array<BoxSetting, 9> firstBoxes(Optionen& form)
{
    return {{{form.bFolderView, u"FolderView"_s, true},
             {form.bLokalePlayliste, u"Lokal"_s, true},
             {form.bShowDialog, u"ShowDialog"_s, false},
             {form.bShowChange, u"ShowChange"_s, false},
             {form.bCheckEntrys, u"CheckEntrys"_s, true},
             {form.bCreateFolder, u"CreateFolder"_s, true},
             {form.bShowDate, u"ShowDate"_s, false},
             {form.bAutoTag, u"AutoTag"_s, false},
             {form.bNoUpdate, u"NoUpdate"_s, false}}};
}

std::array<BoxSetting, 2> lastBoxes(Optionen& form)
{
    return {{{form.bUseCDBurner, u"UseCDBurner"_s, false}, {form.bLoadPlayer, u"LoadPlayer"_s, false}}};
}

void readBox(const Root& root, const BoxSetting& one)
{
    const Setting stored = readSetting(root, one.name);
    one.box.Value = stored.is(1) || (!stored.present && one.onWhenAbsent);
}

void writeBox(Root& root, const BoxSetting& one)
{
    writeSetting(root, one.name, static_cast<qint16>(one.box.Value.value() ? 1 : 0));
}

QString shellFolder(const Root& root, const QString& name)
{
    SettingVariant value;
    const QString key = u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders"_s;
    if (!Registry::ReadValue(root, Hive::CurrentUser, key, name, value))
        return {};
    return Setting{.present = true, .value = value}.text();
}

/// The first of the paths that names something.
QString firstThere(const Root& root, bool (*exists)(const Root&, const QString&), const QStringList& paths)
{
    for (const QString& path : paths)
        if (!path.isEmpty() && exists(root, path))
            return path;
    return {};
}

void load(const Root& root, Optionen& form)
{
    for (const BoxSetting& one : firstBoxes(form))
        readBox(root, one);
    const Setting strength = readSetting(root, u"ZipCompress"_s);
    const bool known = strength.isNumber() && strength.number() >= 0 && strength.number() <= Strongest;
    form.bZipCompress.ListIndex = known ? strength.whole() : Strongest;
    for (const BoxSetting& one : lastBoxes(form))
        readBox(root, one);
    SettingVariant run;
    if (Registry::ReadValue(root, Hive::CurrentUser, runKey(), u"Orvantinen"_s, run))
        form.bLoadPlayer.Value = true;
    form.tSoundfiles.Text = firstThere(root, Dateiexistenz::FolderExists,
                                       {readSetting(root, u"Soundfiles"_s).text(), shellFolder(root, u"My Music"_s)});
    form.tRipper.Text = firstThere(root, Dateiexistenz::FileExists,
                                   {readSetting(root, u"Ripper"_s).text(), programFile(root, u"CDRipper.exe"_s)});
    form.bHelpDirekt.Value = readSetting(root, u"HelpDirekt"_s).is(1);
}

void writeRunEntry(Root& root, bool wanted)
{
    if (!wanted) {
        Registry::DeleteValue(root, Hive::CurrentUser, runKey(), u"Orvantinen"_s);
        return;
    }
    if (!Registry::KeyExists(root, Hive::CurrentUser, runKey()))
        Registry::CreateKey(root, Hive::CurrentUser, runKey());
    Registry::WriteValue(root, Hive::CurrentUser, runKey(), u"Orvantinen"_s,
                         programFile(root, root.services.start.stem + u".exe"_s) + u" /hide"_s);
}

/// What the main window shows of the options follows at once.
void showMarks(Root& root, const Optionen& form)
{
    root.mnuAddSoundfiles.Checked = form.bFolderView.Value.value();
    root.mnuLokalePlayliste.Checked = form.bLokalePlayliste.Value.value();
    root.mnuHandling[6].Checked = form.bCreateFolder.Value.value();
    showDateDisplay(root, !form.bShowDate.Value.value());
}

void BReady_Click(Root& root, Optionen& form)
{
    for (const BoxSetting& one : firstBoxes(form))
        writeBox(root, one);
    writeSetting(root, u"ZipCompress"_s, static_cast<qint16>(form.bZipCompress.ListIndex.value()));
    for (const BoxSetting& one : lastBoxes(form))
        writeBox(root, one);
    writeRunEntry(root, form.bLoadPlayer.Value);
    writeSetting(root, u"Soundfiles"_s, withoutControls(form.tSoundfiles.Text));
    writeSetting(root, u"Ripper"_s, withoutControls(form.tRipper.Text));
    if (form.bHelpDirekt.Value != readSetting(root, u"HelpDirekt"_s).is(1))
        writeBox(root, {form.bHelpDirekt, u"HelpDirekt"_s, false});
    showMarks(root, form);
    root.services.forms.unload(form);
}

void bRipper_Click(Root& root, Optionen& form)
{
    const std::optional<ChosenFile> chosen =
        Command(root).openFile({.title = u"Datei öffnen"_s,
                                .folder = FileDirPath::join(WindowsFolder(root), u"Desktop"),
                                .fileName = {},
                                .filter = u"Programme|*.exe; *.com; *.bat|Alle Dateitypen|*.*"_s,
                                .defaultExtension = {}});
    if (chosen && !chosen->fileName.isEmpty())
        form.tRipper.Text = FileDirPath::join(chosen->folder, chosen->fileName);
}

void bSoundfiles_Click(Root& root, Optionen& form)
{
    const QString folder = BrowseFolders(root, FolderRoot::Computer);
    if (!folder.isEmpty())
        form.tSoundfiles.Text = folder;
}

void bShowChange_Click(Root& root, const Optionen& form)
{
    if (form.bShowChange.Value)
        Command(root).tell(
            {.text = u"Haben Sie die Option ''Alle Playlisten nacheinander abspielen'' aktiviert, dann springt die "
                     u"Listenanzeige zur nächsten Wiedergabeliste sobald die vorherige den letzten Song abgespielt "
                     u"hat. Wenn Sie diese Option aktivieren, verändert sich die markierte Position in der "
                     u"Listenanzeige nicht."_s,
             .title = u" Wiedergabelisten abspielen"_s,
             .icon = MessageIcon::Information});
}

} // namespace

Optionen::Optionen() : Form(u"Optionen"_s)
{
    Caption = u" Einstellungen"_s;
    bFolderView.Caption = u"&Sounddateien hinzufügen zeigt Ordnerauswahl "_s;
    bLokalePlayliste.Caption = u"&Neue Playlisten im lokalen Ordner speichern "_s;
    bShowDialog.Caption = u"&Zeige Dialog bei Hinzufügen vorhandener Playlisten "_s;
    bShowChange.Caption = u"&Nächste Playliste ohne Wechselanzeige abspielen "_s;
    bCheckEntrys.Caption = u"&Prüfen vor Hinzufügen doppelte Playlisten-Einträge "_s;
    bCreateFolder.Caption = u"&Bei Übertragung den Interpreten als Unterordner "_s;
    bShowDate.Caption = u"&Erstellungsdatum und Soundanzahl nicht anzeigen "_s;
    bAutoTag.Caption = u"&Tag-ID automatisch nach Hinzufügen ausführen "_s;
    bNoUpdate.Caption = u"&Keine Update-Überprüfung nach dem Start "_s;
    LZipCompress.Caption = u"&Komprimierungsstärke der Datensicherungen:"_s;
    bZipCompress.List = QStringList{u"einfach"_s, u"mäßig"_s, u"stark!"_s};
    bUseCDBurner.Caption = u"&Verwende CD-Burning bei Übertragung von Pack'n Go "_s;
    bLoadPlayer.Caption = u"&Windows-Start und automatische Wiedergabe "_s;
    LSoundfiles.Caption = u"&Ordner für Sounddateien:"_s;
    bSoundfiles.Caption = u"&Durchsuchen ..."_s;
    LRipper.Caption = u"&CD-Ripper/Kopierer:"_s;
    bRipper.Caption = u"Du&rchsuchen ..."_s;
    bHelpDirekt.Caption = u"T&ipps vor den Befehlen nicht anzeigen "_s;
    BReady.Caption = u"OK"_s;
    bAbbrechen.Caption = u"&Abbrechen"_s;
    bHilfe.Caption = u"&Hilfe"_s;
}

void mnuOptionen_Click(Root& root)
{
    // One that changes the catalogue may hold the check for doubles off meanwhile, and puts it back as it was: the
    // dialog would show what is not chosen, and the choice would be lost.
    if (!root.commands.admits(Changes::Catalogue))
        return;
    (void)Command(root).showModal(*root.optionen);
}

void setUpOptionen(Root& root)
{
    Optionen& form = *root.optionen;
    form.Load = [&root, &form] { load(root, form); };
    form.bShowChange.Click = [&root, &form] { bShowChange_Click(root, form); };
    form.bSoundfiles.Click = [&root, &form] { bSoundfiles_Click(root, form); };
    form.bRipper.Click = [&root, &form] { bRipper_Click(root, form); };
    form.BReady.Click = [&root, &form] { BReady_Click(root, form); };
    form.bAbbrechen.Click = [&root, &form] { root.services.forms.unload(form); };
    form.bHilfe.Click = [&root] { showHelp(root, u"/4.0 Einstellungen festlegen.htm"); };
}

} // namespace orvantine
