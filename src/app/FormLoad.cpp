#include "app/FormLoad.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueView.h"
#include "playback/Volume.h"
#include "shell/Dialoge.h"
#include "shell/MainWindow.h"
#include "shell/Startup.h"
#include "shell/UpdateCheck.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Folder + separator + name, the folder standing without one.
QString programFile(const Root& root, const QString& name)
{
    return FileDirPath::join(root.services.folders.program, name);
}

/// Application-data folder + "\Orvanten Manager".
QString userFolder(const Root& root)
{
    return FileDirPath::join(SpecialFolder(root, 26), u"Orvanten Manager");
}

/// True if this process may live: it holds the one lock of the user.
bool isFirstInstance(Root& root)
{
    if (root.services.instance.acquire(u"Orvanten Manager"_s)) {
        root.services.instance.Activated = [&root] { activateWindow(root); };
        return true;
    }
    root.Caption = u"_"_s + root.Caption.value();
    root.services.instance.activateOther();
    return false;
}

void takeCommand(Root& root)
{
    root.startCommand = root.services.start.command;
    if (root.startCommand.toLower() != u"/hide"_s)
        return;
    root.State = WindowState::Minimized;
    root.startCommand = u"/play"_s;
    root.hiddenStart = true;
    root.services.events.yield();
}

void setDefaults(Root& root)
{
    root.LListenCaption.Caption = u"Klicken Sie das CD-Symbol um die Wiedergabe der Playliste zu starten."_s;
    root.tDatum.Caption = dateText(root.services.events.now().date());
    for (MenuItem* off : {&root.TagIDs, &root.mnuSuchDialog, &root.Trennung21}) {
        off->Enabled = false;
        off->Visible = false;
    }
    root.tDateiname.Caption = QString();
    root.mnuBeenden.Caption = root.mnuBeenden.Caption.value() + u"\tAlt+Q"_s;
    if (WinVersionen(root.services.system) == u"XP"_s)
        root.HookMenus.Tag = u"XP"_s;
}

void ensureSettingsKey(Root& root)
{
    for (const QString& key : {u"Software\\Verdanis"_s, settingsKey()})
        if (!Registry::KeyExists(root, Hive::CurrentUser, key))
            Registry::CreateKey(root, Hive::CurrentUser, key);
}

/// "Major.Minor"
QString versionText(const Root& root)
{
    const StartContext& start = root.services.start;
    return u"%1.%2"_s.arg(start.versionMajor).arg(start.versionMinor);
}

void noteVersion(Root& root)
{
    const QString running = versionText(root);
    const Setting stored = readSetting(root, u"Version"_s);
    const QString last = stored.present ? stored.text() : u"0.00"_s;
    if (last == running)
        return;
    writeSetting(root, u"Version"_s, running);
    root.Pointer = MousePointer::Hourglass;
    Pause(root, 1.0);
}

void resolveDataFolder(Root& root)
{
    if (!Dateiexistenz::FolderExists(root, userFolder(root)))
        root.files.makeFolder(userFolder(root));

    const Setting stored = readSetting(root, u"Database"_s);
    if (stored.present) {
        root.tDatenbank.Text = stored.text();
    } else {
        root.tDatenbank.Text = userFolder(root) + FileDirPath::separatorOf(userFolder(root));
        writeSetting(root, u"Database"_s, root.tDatenbank.Text.value());
    }
    writeSetting(root, u"InstallDir"_s, root.services.folders.program);

    for (const QString& name : {u"Burning"_s, u"Playlisten"_s, u"Resource"_s})
        ensureDataFolder(root, name);
}

void offerFont(Root& root, const QString& family, const QString& fontFile, const QString& shippedName)
{
    const QString windows = WindowsFolder(root);
    const QString target = FileDirPath::join(FileDirPath::join(windows, u"FONTS"), fontFile);
    if (Dateiexistenz::FileExists(root, target) || root.services.fonts.known(family))
        return;
    const Answer answer = root.services.messages.show(
        u"Die Schriftart ''"_s + family + u"'' konnte im Windows-Ordner nicht gefunden werden.    \n"_s +
            u"Möchten Sie diese Schriftart jetzt in Windows hinzufügen und registrieren ?"_s,
        u" Komponente hinzufügen"_s, MessageIcon::Exclamation, MessageButtons::OkCancel);
    const QString shipped = programFile(root, shippedName);
    if (answer != Answer::Ok || !Dateiexistenz::FileExists(root, shipped))
        return;
    root.files.copy(shipped, target);
    root.services.events.yield();
    FontWinRegister(root, target);
    root.services.events.yield();
}

void applyGeometry(Root& root)
{
    const ScreenSize screen = root.services.screen.size();
    root.Left = (screen.width - root.Width.value()) / 2;
    root.Top = (screen.height - root.Height.value()) / 2;
    root.pAnimations.Height = 4005;
    for (const int panel : {1, 2, 5})
        root.sAnzeige[panel].Caption = QString();
    root.services.events.yield();

    struct Measure
    {
        QString name;
        QProperty<Twips>& value;
    };
    for (const Measure& measure : {Measure{u"Height"_s, root.Height}, Measure{u"Width"_s, root.Width},
                                   Measure{u"Left"_s, root.Left}, Measure{u"Top"_s, root.Top}}) {
        const Setting stored = readSetting(root, measure.name);
        if (stored.hasValue() && stored.number() >= 0)
            measure.value = stored.whole();
    }
    if (readSetting(root, u"Maximized"_s).is(2))
        root.State = WindowState::Maximized;

    const Setting fontName = readSetting(root, u"Fontname"_s);
    const Setting fontSize = readSetting(root, u"Fontsize"_s);
    if (!fontName.present || !fontSize.present)
        return;
    for (ListView* list : {&root.LListView1, &root.LListView2}) {
        list->FontName = fontName.text();
        list->FontSize = fontSize.number();
    }
}

void openRememberedPlaylist(Root& root)
{
    const Setting index = readSetting(root, u"Index"_s);
    if (!index.hasValue() || index.is(0))
        return;
    root.LListView1.select(index.whole());
    root.LListView1.Click();
}

void restoreMenuStates(Root& root)
{
    if (readSetting(root, u"Position"_s).is(1))
        root.mnuPositionen.Click();

    const Setting reCall = readSetting(root, u"ReCall"_s);
    for (int mode = 1; mode <= 3; ++mode)
        if (reCall.is(mode) || (!reCall.present && mode == 3))
            root.mnuWiederholung[mode].Checked = true;
    root.mnuWiederholung[2].Enabled = reCall.is(2);

    if (readSetting(root, u"CreateFolder"_s).isOrAbsent(1))
        root.mnuHandling[6].Checked = true;
    if (readSetting(root, u"Volume"_s).is(1))
        root.mnuLautstärke.Click();
    if (!readSetting(root, u"ShowDate"_s).is(1))
        root.mnuDatumsanzeige.Click();
    if (readSetting(root, u"FolderView"_s).isOrAbsent(1))
        root.mnuAddSoundfiles.Click();

    const bool fileNames = readSetting(root, u"ShowFiles"_s).is(1);
    root.mnuOrvmenu[fileNames ? 2 : 1].Checked = true;
    for (const int view : {1, 2})
        if (root.mnuOrvmenu[view].Checked.value())
            root.mnuOrvmenu[view].Click();

    if (readSetting(root, u"Lokal"_s).isOrAbsent(1))
        root.mnuLokalePlayliste.Click();
}

void welcome(Root& root)
{
    if (!readSetting(root, u"Info"_s).present)
        root.services.forms.show(*root.dialoge);
    if (root.LListView1.count() == 0)
        root.services.forms.show(*root.dialoge);
    writeSetting(root, u"Info"_s, u"1"_s);
}

void playUnattended(Root& root)
{
    if (root.startCommand.toLower() != u"/play"_s)
        return;
    root.State = WindowState::Minimized;
    Pause(root, 1.0);
    if (root.services.events.ended())
        return;
    root.mnuWiedergabe.Click();
    root.Timer1.Enabled = true;
    root.Tag = u"1"_s;
    root.services.events.yield();
}

} // namespace

void Form_Initialize(Root&) {}

void Form_Load(Root& root)
{
    Services& services = root.services;

    if (!isFirstInstance(root)) {
        services.events.endProcess();
        return;
    }

    takeCommand(root);
    DisabledButtons(root, 1);
    root.startup->RVersion.Caption = u"Version "_s + versionText(root);
    if (!root.hiddenStart)
        services.forms.show(*root.startup);
    services.events.yield();

    LoadVolume(root);
    setDefaults(root);
    ensureSettingsKey(root);
    noteVersion(root);
    resolveDataFolder(root);

    offerFont(root, u"Maiandra GD"_s, u"MAIAN.TTF"_s, u"Orvantine.sys"_s);
    offerFont(root, u"OCR B"_s, u"OCR_B.TTF"_s, u"Orvantine.ttf"_s);

    if (Dateiexistenz::FileExists(root, programFile(root, u"Orvantine.dat"_s)))
        CopyToAppDataDir(root);
    ensureDataFolder(root, u"Playlisten"_s);
    ensureDataFolder(root, u"Resource"_s);

    root.pCoverBack.BackColor = 0xEBEBEB;
    root.pCoverBack.Height = root.xpFrame1.Height.value();
    root.pCoverBack.Top = root.xpFrame1.Top.value();
    root.Tag = u"0"_s;
    services.events.yield();

    if (readSetting(root, u"Error"_s).isOrAbsent(1))
        root.mnuErrorDisplay.Click();

    GetPlayListe(root, {});
    root.mnuLaden.Click();
    services.events.yield();

    applyGeometry(root);

    services.tray.add(u"Orvanten Manager"_s);
    root.tCopyStatus.Caption = QString();

    root.Pointer = MousePointer::Default;
    DisabledButtons(root, 0);
    services.forms.unload(*root.startup);
    services.events.yield();

    openRememberedPlaylist(root);
    restoreMenuStates(root);
    welcome(root);

    TooltipRegister(root, 1);
    services.events.yield();
    root.LListView2.Click();
    root.LListView1.SetFocus();
    services.events.yield();
    UpdateCheck(root);

    playUnattended(root);

    root.loaded = true;
    if (services.events.ended())
        return;
    // A desktop without a tray keeps a minimised window in its task bar.
    if (root.State.value() != WindowState::Minimized || !services.tray.available())
        root.Visible = true;
    Form_Resize(root);
}

void CopyToAppDataDir(Root& root)
{
    if (readSetting(root, u"NoDataCopy"_s).present)
        return;

    for (const QString& name : {u"Orvantine.dat"_s, u"Orvantine.bak"_s}) {
        const QString target = FileDirPath::join(userFolder(root), name);
        if (!Dateiexistenz::FileExists(root, target) && Dateiexistenz::FileExists(root, programFile(root, name)))
            root.files.copy(programFile(root, name), target);
    }

    root.Pointer = MousePointer::Hourglass;
    DisabledButtons(root, 1);

    const QString formerPath = root.LMp3Files.Path;
    const QString formerPattern = root.LMp3Files.Pattern;
    for (const QString& name : {u"Burning"_s, u"Playlisten"_s, u"Resource"_s}) {
        ensureDataFolder(root, name);
        root.LMp3Files.Path = programFile(root, name);
        root.LMp3Files.Pattern = u"*.*"_s;
        const QString target = root.tDatenbank.Text.value() + name;
        for (const QString& file : root.files.list(root.LMp3Files.Path, root.LMp3Files.Pattern))
            root.files.copy(FileDirPath::join(root.LMp3Files.Path, file), FileDirPath::join(target, file));
    }
    root.LMp3Files.Path = formerPath;
    root.LMp3Files.Pattern = formerPattern;

    root.Pointer = MousePointer::Default;
    DisabledButtons(root, 0);
    writeSetting(root, u"NoDataCopy"_s, qint16{1});
    root.services.messages.show(u"Datenbanken wurden vom Installationsordner in den Benutzerordner kopiert. Die "
                                u"Datenbank und Playlisten befinden sich nun im AppData-Roaming Verzeichnis."_s,
                                root.Caption.value() + u' ', MessageIcon::Exclamation, MessageButtons::Ok);
}

void activateWindow(Root& root)
{
    if (!root.loaded)
        return;
    if (root.State.value() == WindowState::Minimized)
        root.State = WindowState::Normal;
    root.Visible = true;
    root.services.forms.toFront(root);
}

} // namespace orvantine
