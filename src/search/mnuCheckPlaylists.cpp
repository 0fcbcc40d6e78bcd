#include "search/mnuCheckPlaylists.h"

#include "app/AudioTypes.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/IniFiles.h"
#include "app/PlaylistFile.h"
#include "app/Quiet.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "platform/FileDirPath.h"
#include "playlists/TextDosConvert.h"
#include "search/ErrorListe.h"
#include "search/FileAfterFile.h"
#include "search/UsedLists.h"

#include <algorithm>
#include <vector>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// A list that got a copy in "Playlisten", which is its file from now on.
struct Moved
{
    QString from;
    QString to;
};

/// One run of the command on the disk.
class Tidying
{
public:
    Tidying(Root& root, Command& command, const UsedLists& used) : m_root(root), m_command(command), m_used(used) {}

    // False if the program has ended.
    bool moveAside();
    bool backUpDatabase();
    bool bringIn();

    [[nodiscard]] const std::vector<Moved>& moved() const { return m_moved; }

private:
    void moveAside(const QString& file);
    void bringIn(int number);
    void bringBack(const QString& local);
    void copyIn(int number, const QString& path, const QString& local);
    [[nodiscard]] QString localPlace(const QString& path) const;

    Root& m_root;
    Command& m_command;
    const UsedLists& m_used;
    /// Copies of this run, and lists that stayed where they are, in the form in which paths are compared.
    QSet<QString> m_backups;
    QSet<QString> m_stayed;
    std::vector<Moved> m_moved;
};

QString Tidying::localPlace(const QString& path) const
{
    return FileDirPath::join(playlistFolder(m_root), FileDirPath::FileNameOf(path));
}

bool Tidying::moveAside()
{
    m_root.LMp3Files.Path = playlistFolder(m_root);
    m_root.LMp3Files.Pattern = u"*.m3u"_s;
    const QStringList names = m_root.files.list(m_root.LMp3Files.Path, m_root.LMp3Files.Pattern);
    for (const QString& name : names) {
        moveAside(FileDirPath::join(playlistFolder(m_root), name));
        if (!m_command.yield())
            return false;
    }
    return true;
}

/// A list of the catalogue keeps its place, since its copy would come back over it in this very run: whoever opens it
/// in between finds it.
void Tidying::moveAside(const QString& file)
{
    const QString backup = backupOfList(file);
    const QString key = FileDirPath::compared(backup);
    const bool isList = m_used.contains(m_root, file);
    const bool moved =
        !m_backups.contains(key) && !m_used.contains(m_root, backup) && mayHoldPlaylist(m_root, backup) &&
        changeAlone(m_root, [&] { return backUp(m_root, file, backup) && (isList || m_root.files.remove(file)); });
    if (moved)
        m_backups += key;
    else
        m_stayed += FileDirPath::compared(file);
}

bool Tidying::backUpDatabase()
{
    m_root.LMp3Files.Pattern = AudioTypes::Pattern.toString();
    const QString database = databaseFile(m_root);
    if (Dateiexistenz::FileExists(m_root, database))
        (void)changeAlone(m_root, [&] { return backUp(m_root, database, backupFile(m_root)); });
    return m_command.yield();
}

bool Tidying::bringIn()
{
    for (int number = 1; number <= MostPlaylists; ++number) {
        if (m_used.path(number).isEmpty())
            continue;
        bringIn(number);
        if (!m_command.yield())
            return false;
    }
    return true;
}

void Tidying::bringIn(int number)
{
    const QString path = m_used.path(number);
    const QString local = localPlace(path);
    if (FileDirPath::isSameFile(path, local))
        bringBack(local);
    else if (!FileDirPath::compared(path).startsWith(FileDirPath::compared(m_root.tDatenbank.Text)) &&
             Dateiexistenz::FileExists(m_root, path))
        copyIn(number, path, local);
}

/// Its copy takes the place of a list that is missing.
void Tidying::bringBack(const QString& local)
{
    const QString backup = backupOfList(local);
    if (!Dateiexistenz::FileExists(m_root, local) && m_root.files.size(backup))
        (void)changeAlone(m_root, [&] { return copyPlaylist(m_root, backup, local); });
}

/// A list from elsewhere gets a copy, unless that would take the place of another list.
void Tidying::copyIn(int number, const QString& path, const QString& local)
{
    const auto isSame = [&](const Moved& moved) {
        return FileDirPath::isSameFile(moved.from, path) && FileDirPath::isSameFile(moved.to, local);
    };
    const bool shared = std::any_of(m_moved.begin(), m_moved.end(), isSame);
    const bool taken = std::any_of(m_moved.begin(), m_moved.end(),
                                   [&](const Moved& moved) { return FileDirPath::isSameFile(moved.to, local); });
    if (!shared && (taken || m_backups.contains(FileDirPath::compared(local)) || m_used.contains(m_root, local) ||
                    m_stayed.contains(FileDirPath::compared(local)) || !mayHoldPlaylist(m_root, path) ||
                    !mayHoldPlaylist(m_root, local)))
        return;
    const bool copied = changeAlone(m_root, [&] {
        if (!shared && !copyToOtherFolder(m_root, path, local))
            return false;
        writeIndexValue(m_root, databaseFile(m_root), number, EntryKey::Path, local);
        return true;
    });
    if (copied && !shared)
        m_moved.push_back({.from = path, .to = local});
}

/// The rows in sight point where the database does.
void pointRows(Root& root, const std::vector<Moved>& all)
{
    for (const Moved& moved : all) {
        for (int row = 1; row <= root.LListView1.count(); ++row)
            if (FileDirPath::isSameFile(playlistPath(root, row), moved.from))
                setPlaylistPath(root, row, moved.to);
        if (root.trackList.isOf(moved.from))
            root.trackList.hold().follow(moved.to);
    }
}

/// False if the program has ended.
bool tidy(Root& root, Command& command)
{
    const std::optional<UsedLists> used = UsedLists::read(root);
    if (!used) {
        // What nobody can tell from a list of the catalogue stays.
        showQuietly(root, u"Nichts bereinigt: Die Datenbank konnte nicht ganz gelesen werden."_s);
        return true;
    }
    ensurePlaylistFolder(root);
    Tidying tidying(root, command, *used);
    WholeChange together(root.files, WholeChange::Events::Served);
    const bool goesOn = tidying.moveAside() && tidying.backUpDatabase() && tidying.bringIn();
    root.LMp3Files.Pattern = AudioTypes::Pattern.toString();
    if (together.end())
        pointRows(root, tidying.moved());
    return goesOn;
}

} // namespace

void mnuCheckPlaylists_Click(Root& root)
{
    Command command(root);
    const std::optional<Answer> answer =
        command.ask({.text = u"Möchten Sie alle Wiedergabelisten überprüfen und fehlerhafte Dateien bereinigen ?  "_s,
                     .title = u' ' + root.Caption.value(),
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::YesNo});
    if (answer != Answer::Yes)
        return;
    command.wait();
    if (!tidy(root, command))
        return;
    command.endWait();
    if (!command.showModal(*root.errorListe) || !command.yield())
        return;
    openChosenFault(root);
}

} // namespace orvantine
