#include "shell/FormLoad.h"

#include "app/ColumnWidths.h"
#include "app/Command.h"
#include "app/CopyToAppDataDir.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/DisabledButtons.h"
#include "app/FormResize.h"
#include "app/Others.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "app/TooltipRegister.h"
#include "catalogue/GetPlayListe.h"
#include "platform/FileDirPath.h"
#include "playback/Volume.h"
#include "shell/Dialoge.h"
#include "shell/HandedFiles.h"
#include "shell/Startup.h"
#include "shell/UpdateCheck.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The stored DataFolder, else the one of a first start.
QString dataFolderOf(const Root& root)
{
    const QString stored = readForCertain(root, u"Database"_s).value_or(Setting()).text();
    return stored.isEmpty() ? userFolder(root) + FileDirPath::separatorOf(userFolder(root)) : stored;
}

bool takesLocks(const Root& root)
{
    return root.services.instance.acquire(u"Orvanten Manager"_s) &&
           root.services.instance.acquireFolder(dataFolderOf(root));
}

/// True if this process may live: it holds the one lock of the user, and no process of another desktop works on the
/// same files.
bool isFirstInstance(Root& root)
{
    Instance& instance = root.services.instance;
    if (!takesLocks(root)) {
        const QString caption = root.Caption;
        root.Caption = u"_"_s + caption;
        // One that is about to end does not answer any more, and this start would lead to nothing.
        if (instance.activateOther() || !instance.awaitEnd() || !takesLocks(root))
            return false;
        root.Caption = caption;
    }
    instance.Activated = [&root] { activateWindow(root); };
    instance.TakesFiles = [&root] { return takesFiles(root); };
    instance.Handed = [&root](const QStringList& paths) {
        activateWindow(root);
        takeHandedFiles(root, paths);
    };
    return true;
}

/// Says once why nothing can be changed. False if the program has ended.
bool tellTrouble(const Root& root, Command& command)
{
    const std::optional<FilesTrouble> trouble = root.files.trouble();
    if (!trouble)
        return true;
    const QString reason =
        trouble == FilesTrouble::NoSafePlace
            ? u"Der Ordner, in dem die bisherigen Fassungen Ihrer Dateien aufbewahrt werden, fehlt oder gehört nicht "
              u"Ihnen allein.    \n"_s
            : u"Ein unterbrochener Vorgang kann noch nicht zurückgenommen werden: Der Datenträger ist voll, "
              u"schreibgeschützt oder nicht erreichbar.    \n"_s;
    return command
        .ask({.text = reason + u"Solange das so ist, wird keine Datei geändert."_s,
              .title = u" Orvanten Manager"_s,
              .icon = MessageIcon::Exclamation})
        .has_value();
}

/// What keeps some files from being written, the settings or those of an interrupted command whose disk is away.
void tellWaiting(Root& root)
{
    // Whatever was said of the database weighs more.
    if (root.databaseDoubted)
        return;
    if (!Registry::KeyExists(root, Hive::CurrentUser, settingsKey())) {
        showQuietly(root,
                    u"Die Einstellungen können nicht gelesen oder geschrieben werden. Sie bleiben, wie sie sind."_s);
        return;
    }
    const QStringList waiting = root.files.waiting();
    if (waiting.isEmpty())
        return;
    const QString others = waiting.size() > 1 ? u" und %1 weitere"_s.arg(waiting.size() - 1) : QString();
    showQuietly(root, u"Wird beim nächsten Start zurückgenommen, wenn der Datenträger da ist: "_s +
                          FileDirPath::FileNameOf(waiting.front()) + others);
}

bool takeCommand(Root& root, Command& command)
{
    root.startCommand = root.services.start.command;
    if (root.startCommand.toLower() != u"/hide"_s)
        return true;
    root.State = WindowState::Minimized;
    root.startCommand = u"/play"_s;
    root.hiddenStart = true;
    return command.yield();
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

bool noteVersion(Root& root, Command& command)
{
    const QString running = versionText(root);
    const Setting stored = readSetting(root, u"Version"_s);
    const QString last = stored.present ? stored.text() : u"0.00"_s;
    if (last == running)
        return true;
    writeSetting(root, u"Version"_s, running);
    root.Pointer = MousePointer::Hourglass;
    return command.pause(1.0);
}

void resolveDataFolder(Root& root)
{
    if (!Dateiexistenz::FolderExists(root, userFolder(root)))
        root.files.makeFolder(userFolder(root));

    root.tDatenbank.Text = dataFolderOf(root);
    if (const std::optional<Setting> stored = readForCertain(root, u"Database"_s); stored && stored->text().isEmpty())
        writeSetting(root, u"Database"_s, root.tDatenbank.Text.value());
    writeSetting(root, u"InstallDir"_s, root.services.folders.program);
}

void ensureDataFolders(Root& root)
{
    for (const QString& name : dataFolderNames())
        ensureDataFolder(root, name);
}

/// A folder that was not there when the process started can be locked only now.
bool isAloneOnTheData(Root& root)
{
    if (root.services.instance.acquireFolder(root.tDatenbank.Text.value()))
        return true;
    root.services.instance.activateOther();
    root.services.forms.unload(*root.startup);
    root.services.events.endProcess();
    return false;
}

bool offerFont(Root& root, Command& command, const QString& family, const QString& fontFile, const QString& shippedName)
{
    const QString shipped = programFile(root, shippedName);
    if (!root.services.fonts.known(family) && Dateiexistenz::FileExists(root, shipped))
        root.services.fonts.provide(family, shipped);
    const QString windows = WindowsFolder(root);
    const QString target = FileDirPath::join(FileDirPath::join(windows, u"FONTS"), fontFile);
    if (Dateiexistenz::FileExists(root, target) || root.services.fonts.known(family))
        return true;
    const std::optional<Answer> answer = command.ask(
        {.text = u"Die Schriftart ''"_s + family + u"'' konnte im Windows-Ordner nicht gefunden werden.    \n"_s +
                 u"Möchten Sie diese Schriftart jetzt in Windows hinzufügen und registrieren ?"_s,
         .title = u" Komponente hinzufügen"_s,
         .icon = MessageIcon::Exclamation,
         .buttons = MessageButtons::OkCancel});
    if (answer != Answer::Ok || !Dateiexistenz::FileExists(root, shipped))
        return answer.has_value();
    root.files.copy(shipped, target);
    if (!command.yield())
        return false;
    FontWinRegister(root, target);
    return command.yield();
}

bool applyGeometry(Root& root, Command& command)
{
    const std::vector<DesktopScreen> screens = root.services.screen.screens();
    const ScreenArea screen = screens.empty() ? ScreenArea() : screens.front().geometry;
    root.Left = screen.left + (screen.width - root.Width.value()) / 2;
    root.Top = screen.top + (screen.height - root.Height.value()) / 2;
    root.pAnimations.Height = 4005;
    for (const int panel : {1, 2, 5})
        root.sAnzeige[panel].Caption = QString();
    if (!command.yield())
        return false;

    struct Measure
    {
        QString name;
        QProperty<Twips>& value;
    };
    for (const Measure& measure : {Measure{u"Height"_s, root.Height}, Measure{u"Width"_s, root.Width},
                                   Measure{u"Left"_s, root.Left}, Measure{u"Top"_s, root.Top}}) {
        const Setting stored = readSetting(root, measure.name);
        if (stored.isNumber() && stored.number() >= 0)
            measure.value = stored.whole();
    }
    // A window that comes up from the tray is put onto the screen then.
    if (!root.hiddenStart)
        keepOnScreen(root);
    if (readSetting(root, u"Maximized"_s).is(2))
        root.State = WindowState::Maximized;

    if (const Setting pane = readSetting(root, u"CatalogueWidth"_s); pane.isNumber() && pane.number() > 0)
        root.CatalogueWidth = pane.whole();

    const Setting fontName = readSetting(root, u"Fontname"_s);
    const Setting fontSize = readSetting(root, u"Fontsize"_s);
    if (!fontName.present || !fontSize.present)
        return true;
    for (ListView* list : {&root.LListView1, &root.LListView2}) {
        list->FontName = fontName.text();
        list->FontSize = fontSize.number();
    }
    return true;
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

bool playUnattended(Root& root, Command& command)
{
    if (root.startCommand.toLower() != u"/play"_s)
        return true;
    root.State = WindowState::Minimized;
    if (!command.pause(1.0))
        return false;
    root.mnuWiedergabe.Click();
    if (command.ended())
        return false;
    root.Timer1.Enabled = true;
    root.Tag = u"1"_s;
    return command.yield();
}

/// Out of the tray, where the place of a hidden start has waited as it was stored.
void comeIntoSight(Root& root)
{
    if (!root.Visible.value())
        keepOnScreen(root);
    root.Visible = true;
}

/// The steps in their order; false if the program has ended on the way.
bool startUp(Root& root, Command& command)
{
    Services& services = root.services;

    if (!takeCommand(root, command) || !tellTrouble(root, command))
        return false;
    DisabledButtons(root, 1);
    root.startup->RVersion.Caption = u"Version "_s + versionText(root);
    if (!root.hiddenStart)
        services.forms.show(*root.startup);
    if (!command.yield())
        return false;

    LoadVolume(root);
    if (command.ended())
        return false;
    setDefaults(root);
    ensureSettingsKey(root);
    if (!noteVersion(root, command))
        return false;
    resolveDataFolder(root);
    if (!isAloneOnTheData(root))
        return false;
    ensureDataFolders(root);

    if (!offerFont(root, command, u"Maiandra GD"_s, u"MAIAN.TTF"_s, u"Orvantine.sys"_s) ||
        !offerFont(root, command, u"OCR B"_s, u"OCR_B.TTF"_s, u"Orvantine.ttf"_s))
        return false;

    if (Dateiexistenz::FileExists(root, programFile(root, u"Orvantine.dat"_s)))
        CopyToAppDataDir(root);
    if (command.ended())
        return false;
    ensurePlaylistFolder(root);
    ensureDataFolder(root, u"Resource"_s);

    root.pCoverBack.BackColor = 0xEBEBEB;
    root.pCoverBack.Height = root.xpFrame1.Height.value();
    root.pCoverBack.Top = root.xpFrame1.Top.value();
    root.Tag = u"0"_s;
    if (!command.yield())
        return false;

    if (readSetting(root, u"Error"_s).isOrAbsent(1))
        root.mnuErrorDisplay.Click();

    GetPlayListe(root, {});
    // No list may be there to be read, and its read is what applies them otherwise.
    applyStoredCatalogueWidths(root);
    root.mnuLaden.Click();
    if (!command.yield() || !applyGeometry(root, command))
        return false;

    services.tray.add(u"Orvanten Manager"_s);
    if (root.hiddenStart && !services.tray.stands())
        keepOnScreen(root);
    root.tCopyStatus.Caption = QString();

    root.Pointer = MousePointer::Default;
    DisabledButtons(root, 0);
    services.forms.unload(*root.startup);
    if (!command.yield())
        return false;

    openRememberedPlaylist(root);
    if (command.ended())
        return false;
    restoreMenuStates(root);
    welcome(root);

    TooltipRegister(root, 1);
    if (!command.yield())
        return false;
    root.LListView2.Click();
    root.LListView1.SetFocus();
    if (!command.yield())
        return false;
    tellWaiting(root);
    UpdateCheck(root);
    return !command.ended() && playUnattended(root, command);
}

} // namespace

void Form_Load(Root& root)
{
    if (!isFirstInstance(root)) {
        root.services.events.endProcess();
        return;
    }
    Command command(root);
    const bool started = startUp(root, command);
    root.loaded = true;
    if (!started)
        return;
    // Without an item in a tray a minimised window stays in the task bar.
    if (root.State.value() != WindowState::Minimized || !root.services.tray.stands())
        root.Visible = true;
    Form_Resize(root);
}

void trayChanged(Root& root)
{
    if (!root.loaded || root.services.events.ended() || root.State.value() != WindowState::Minimized)
        return;
    if (root.services.tray.stands())
        root.Visible = false;
    else
        comeIntoSight(root);
}

void activateWindow(Root& root)
{
    if (!root.loaded)
        return;
    if (root.State.value() == WindowState::Minimized)
        root.State = WindowState::Normal;
    comeIntoSight(root);
    root.services.forms.toFront(root);
}

} // namespace orvantine
