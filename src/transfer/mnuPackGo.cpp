#include "transfer/mnuPackGo.h"

#include "app/AudioTypes.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/FeatureTips.h"
#include "app/Others.h"
#include "app/PlayButtons.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/CoverFiles.h"
#include "platform/FileDirPath.h"
#include "playback/PlayResource.h"
#include "search/CatalogueWalk.h"
#include "transfer/BrowseFolders2k.h"
#include "transfer/DataTransfer.h"
#include "transfer/Kopieren.h"
#include "transfer/PackTree.h"
#include "transfer/TargetChoice.h"

#include <algorithm>
#include <optional>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString Title = u" Pack and Go"_s;
const QString ArchiveName = u"Orvanten (Pack and Go).zip"_s;
const QString BurnerSetting = u"UseCDBurner"_s;
const QString BackupSetting = u"BackupDir"_s;

/// The folder in which the system gathers what is to be burned.
std::optional<QString> burningFolder(const Root& root)
{
    SettingVariant value;
    const QString key = u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders"_s;
    if (!Registry::ReadValue(root, Hive::CurrentUser, key, u"CD Burning"_s, value))
        return {};
    const QString* const text = std::get_if<QString>(&value);
    return text == nullptr ? std::nullopt : std::optional(cutAtNul(*text));
}

/// One run of the command.
class PackAndGo
{
public:
    PackAndGo(Root& root, Command& command) : m_root(root), m_command(command) {}
    ~PackAndGo();
    PackAndGo(const PackAndGo&) = delete;
    PackAndGo& operator=(const PackAndGo&) = delete;

    void run();

private:
    enum class Result { None = 0, Complete = 1, Stopped = 2 };

    // False: the command ends here.
    bool begin();
    bool chooseMode();
    bool chooseFolder();
    bool freeze();
    bool pack(PackTree& tree);
    bool close(bool built);
    void report(Result result);

    [[nodiscard]] QString target() const { return m_mode == PackMode::Folder ? m_packFolder : m_burnFolder; }
    void reselect();
    [[nodiscard]] bool holdsCatalogue(const QStringList& failed) const;

    Root& m_root;
    Command& m_command;
    PackMode m_mode = PackMode::Folder;
    QString m_scratch;
    QString m_packFolder;
    QString m_burnFolder;
    QString m_backupDir;
    bool m_coverHidden = false;
    bool m_errorsWereShown = false;
    int m_row = 0;
    RowIdentity m_playlist;
    std::optional<WalkedFrom> m_from;
    int m_track = 0;
    bool m_packed = false;
};

/// What is shown of missing lists is an option, which is kept also if the program ends in the middle.
PackAndGo::~PackAndGo()
{
    if (m_errorsWereShown)
        m_root.mnuErrorDisplay.Checked = true;
}

bool PackAndGo::begin()
{
    m_root.services.priority.set(ProcessPriority::High);
    if (!m_command.yield())
        return false;
    if (m_root.pCoverBack.Visible.value() && m_root.mnuCoverShow.Checked.value()) {
        m_coverHidden = true;
        m_root.mnuCoverShow.Click();
    }
    if (!m_command.yield())
        return false;
    m_scratch = scratchFolder(m_root);
    m_packFolder = m_scratch;
    if (!m_command.yield())
        return false;
    if (!ShowFeatureTip(m_root, 710))
        return false;
    stopIfRunning(m_root);
    return !m_command.ended();
}

bool PackAndGo::chooseMode()
{
    const std::optional<Answer> answer = m_command.ask(
        {.text = u"Die Sounddateien und Wiedergabelisten können in einer komprimierten Zipdatei auf den austauschbaren "
                 u"Datenträger kopiert werden. \n"
                 u"Der Packungsvorgang wird eventuell einige Zeit in Anspruch nehmen ...\n\n"
                 u"Möchten Sie die Dateien vor der Übertragung packen ?"_s,
         .title = Title,
         .icon = MessageIcon::Exclamation,
         .buttons = MessageButtons::YesNoCancel});
    // Required: a cancelled command leaves priority and cover as they are now.
    if (answer != Answer::Yes && answer != Answer::No)
        return false;
    m_mode = answer == Answer::Yes ? PackMode::Zip : PackMode::Folder;
    if (m_mode == PackMode::Zip && m_scratch.isEmpty()) {
        m_root.files.noteFault(WriteFault::NoSafePlace);
        return false;
    }
    KillTempFiles(m_root, m_scratch);
    if (m_command.ended())
        return false;
    // Required: read of the machine, written for the user, and of no effect.
    SettingVariant burner;
    (void)Registry::ReadValue(m_root, Hive::LocalMachine, settingsKey(), BurnerSetting, burner);
    ensureDataFolder(m_root, u"Burning"_s);
    m_burnFolder = withSeparator(dataFolder(m_root, u"Burning"_s));
    return true;
}

bool PackAndGo::chooseFolder()
{
    std::optional<QString> folder;
    if (m_mode == PackMode::Folder) {
        const std::optional<Answer> answer =
            m_command.ask({.text = u"Mit Windows CD-Burning können Sie die Orvanten auf CD-Rom brennen.   \n"
                                   u"Klicken Sie ''Ok'' um alle Dateien in den CD-Burning Ordner zu kopieren.\n"
                                   u"Wählen Sie ''Abbrechen'' um eine Ordnerauswahl anzuzeigen."_s,
                           .title = u" CD-Burning for Windows XP"_s,
                           .icon = MessageIcon::Question,
                           .buttons = MessageButtons::OkCancel});
        if (!answer)
            return false;
        if (answer == Answer::Ok)
            folder = burningFolder(m_root);
        if (folder)
            writeSetting(m_root, BurnerSetting, qint16{1});
    }
    for (;;) {
        if (!folder) {
            writeSetting(m_root, BurnerSetting, qint16{0});
            folder = BrowseFolders(m_root, FolderRoot::Computer);
        }
        if (folder->isEmpty() || m_command.ended())
            return false;
        (m_mode == PackMode::Folder ? m_packFolder : m_burnFolder) = withSeparator(*folder);
        if (!Dateiexistenz::FileExists(m_root, target() + u"Orvantine.dat"_s))
            return true;
        const std::optional<Answer> answer = m_command.ask(
            {.text = u"In dem ausgewählten Ordner für ''Pack and Go'' sind bereits Dateien enthalten.   \n"
                     u"Die Orvanten werden zwar in einen Unterordner kopiert, jedoch könnten   \n"
                     u"eventl. Probleme beim Wiederherstellen der Wiedergabelisten auftreten.\n\n"
                     u"Möchten Sie den Ordner für ''Pack and Go'' trotzdem verwenden ?"_s,
             .title = Title,
             .icon = MessageIcon::Exclamation,
             .buttons = MessageButtons::OkCancel});
        if (answer == Answer::Ok || !answer)
            return answer.has_value();
        m_root.Pointer = MousePointer::Default;
        folder.reset();
    }
}

bool PackAndGo::freeze()
{
    m_from.emplace(m_root);
    m_row = m_root.LListView1.selectedRow();
    m_playlist = identityOf(m_root, m_row);
    m_track = m_root.LListView2.selectedRow();
    m_command.wait(Wait::Lists);
    m_root.Timer2.Enabled = false;
    m_root.Tag = u"0"_s;
    showTransfer(m_root);
    return m_command.yield() && m_command.pause(1);
}

void PackAndGo::reselect()
{
    if (const int row = m_row > 0 ? rowOf(m_root, m_playlist, m_row) : 0; row > 0) {
        m_root.LListView1.select(row);
        m_root.LListView1.Click();
    }
    if (!m_command.ended())
        m_root.LListView2.select(m_track);
}

/// Without the database or a list nothing could be brought back from what was packed.
bool PackAndGo::holdsCatalogue(const QStringList& failed) const
{
    return std::none_of(failed.begin(), failed.end(), [this](const QString& path) {
        return FileDirPath::isSameFile(path, databaseFile(m_root)) || isUsedByAnother(m_root, 0, path);
    });
}

/// False if the program has ended.
bool PackAndGo::pack(PackTree& tree)
{
    // The row that was selected has been read once more, which gives the lists back.
    m_command.wait(Wait::Lists);
    m_root.Timer2.Enabled = false;
    m_root.Pointer = MousePointer::Hourglass;
    if (!m_command.yield())
        return false;
    m_root.Tag = u"1"_s;
    m_root.tCopyStatus.Caption = u"Dateien werden komprimiert."_s;
    m_root.kopieren->Caption = u" Datenkomprimierung"_s;
    m_root.kopieren->Label2.Caption =
        u"Bitte warten Sie, bis die Datenkomprimierung vollständig abgeschlossen wurde."_s;
    forbidStop(m_root);
    m_root.pCopyStatus.Visible = true;
    if (!m_command.yield() || !m_command.pause(2))
        return false;
    const ArchiveJob job{.archive = m_burnFolder + ArchiveName,
                         .trees = {{.folder = FileDirPath::withoutSeparator(m_packFolder), .foldersToo = true}},
                         .compression = chosenCompression(m_root),
                         .takes = {}};
    const ArchiveOutcome outcome = m_root.services.zip.add(job, [this, &tree](qint64 done, qint64 total) {
        tree.carrier().progress().showWork(done, total);
        return m_command.yield();
    });
    m_packed = outcome.done && outcome.leftOut.isEmpty() && holdsCatalogue(tree.carrier().failed());
    if (outcome.done && !outcome.leftOut.isEmpty())
        showQuietly(m_root, u"Nicht im Archiv: "_s + outcome.leftOut.join(u", "_s));
    // The player has this mark too.
    m_root.Tag = u"1"_s;
    if (!m_command.yield() || !m_command.pause(1))
        return false;
    KillTempFiles(m_root, m_scratch);
    // In the pause the player has left its own.
    m_root.Tag = u"1"_s;
    return !m_command.ended();
}

/// What was taken away comes back. False if the program has ended.
bool PackAndGo::close(bool built)
{
    m_root.tDateiname.Caption = QString();
    m_root.pDateiname.Visible = false;
    reselect();
    if (m_command.ended() || !m_command.yield() || !m_command.pause(1))
        return false;
    if (m_coverHidden && !m_root.pCoverBack.Visible.value() && !coverFile(m_root, selectedName(m_root)).isEmpty())
        m_root.mnuCoverShow.Click();
    m_root.pCopyStatus.Visible = false;
    m_root.tCopyStatus.Caption = QString();
    m_root.services.priority.set(ProcessPriority::Normal);
    m_backupDir = built && m_packed ? m_burnFolder : QString();
    writeSetting(m_root, BackupSetting, m_backupDir);
    if (m_errorsWereShown)
        m_root.mnuErrorDisplay.Checked = true;
    m_command.endWait();
    m_root.Timer2.Enabled = true;
    m_root.Tag = u"0"_s;
    m_root.services.forms.unload(*m_root.kopieren);
    if (!m_command.yield())
        return false;
    PlayResource(m_root, u"Ready"_s);
    return m_command.yield();
}

void PackAndGo::report(Result result)
{
    switch (result) {
    case Result::None:
        return;
    case Result::Complete:
        if (m_mode == PackMode::Folder)
            return m_command.tell(
                {.text =
                     u"Die Sounddateien wurden erfolgreich in den Ordner ''%1'' kopiert.    \n\r\n"
                     u"Zusätzlich enthalten die Ordner auch die entsprechenden Wiedergabelisten."_s.arg(m_packFolder),
                 .title = Title,
                 .icon = MessageIcon::Information});
        return m_command.tell(
            {.text = u"Die Sounddateien wurden erfolgreich in die komprimierte Datei ''%1'' gepackt. \n\r\n"
                     u"Die Zip-Datei befindet sich im Ordner: \n\r\n\"%2\""_s.arg(ArchiveName, m_burnFolder),
             .title = Title,
             .icon = MessageIcon::Information});
    case Result::Stopped:
        return m_command.tell(
            {.text = u"Der Vorgang wurde abgebrochen, bevor die Dateien vollständig kopiert wurden. "_s,
             .title = Title,
             .icon = MessageIcon::Exclamation});
    }
}

void PackAndGo::run()
{
    if (!begin() || !chooseMode() || !chooseFolder() || !freeze())
        return;
    PackTree tree(m_root, m_command, m_mode, m_packFolder, target());
    const PackTree::Outcome outcome = tree.build();
    m_errorsWereShown = tree.errorsWereShown();
    if (outcome == PackTree::Outcome::Ended)
        return;
    if (outcome == PackTree::Outcome::Built) {
        reselect();
        if (m_command.ended() || (m_mode == PackMode::Zip && !pack(tree)))
            return;
    }
    Result result = m_root.Tag == u"1"_s                    ? Result::Complete
                    : outcome == PackTree::Outcome::Stopped ? Result::Stopped
                                                            : Result::None;
    if (!close(outcome == PackTree::Outcome::Built))
        return;
    // Required: a folder copy has no archive, and so always ends as a stopped one.
    if (m_backupDir.isEmpty() || !Dateiexistenz::FileExists(m_root, m_backupDir + ArchiveName))
        result = Result::Stopped;
    report(result);
}

} // namespace

QString scratchFolder(Root& root)
{
    const QString folder = root.files.privateFolder(FileDirPath::join(TempFolder(root), u"PackFolder"));
    return folder.isEmpty() ? QString() : withSeparator(folder);
}

void KillTempFiles(Root& root, const QString& folder)
{
    Command command(root);
    const QString files = root.LMp3Files.Path;
    const QString folders = root.LRipper.Path;
    root.LRipper.Path = folder;
    root.LMp3Files.Path = folder;
    root.LMp3Files.Pattern = u"*.*"_s;
    if (!folder.isEmpty())
        (void)root.files.emptyPrivate(FileDirPath::withoutSeparator(folder), [&command] { return command.yield(); });
    root.LRipper.Path = folders;
    root.LMp3Files.Path = files;
    root.LMp3Files.Pattern = AudioTypes::Pattern.toString();
}

void mnuPackGo_Click(Root& root)
{
    Command command(root);
    PackAndGo(root, command).run();
}

} // namespace orvantine
