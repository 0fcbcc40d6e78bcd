#include "search/FolderPreview.h"

#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/PlaylistFile.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "platform/CaseFold.h"
#include "platform/FileDirPath.h"
#include "platform/PlaylistWalk.h"
#include "playlists/TrackRow.h"
#include "search/FolderReplacement.h"

#include <QLocale>
#include <QSet>

#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString german(qint64 number)
{
    return QLocale(QLocale::German).toString(number);
}

} // namespace

FolderPreview::FolderPreview(Root& root, QString old, QString fresh)
    : m_root(root), m_old(std::move(old)), m_fresh(std::move(fresh))
{
    const int failedReads = root.services.profiles.failedReads();
    QSet<QString> seen;
    for (int number = 1; number <= NumbersLookedAt; ++number) {
        const QString path = indexValue(root, databaseFile(root), number, EntryKey::Path);
        const QString compared = FileDirPath::compared(path);
        if (!path.isEmpty() && !seen.contains(compared))
            m_lists += path;
        seen += compared;
    }
    m_doubted = root.databaseDoubted || root.services.profiles.failedReads() != failedReads;
}

bool FolderPreview::step()
{
    if (m_next == m_lists.size())
        return false;
    lookAt(m_lists[m_next++]);
    return true;
}

void FolderPreview::lookAt(const QString& path)
{
    if (!mayHoldPlaylist(m_root, path))
        return;
    const ReadBytes read = m_root.files.readBytes(path);
    m_doubted = m_doubted || read.outcome == ReadOutcome::Failed;
    const QByteArray& bytes = read.bytes;
    FileReplacement replacement(bytes, m_old, m_fresh);
    // A pair that puts together ever more of the old text is left to the run, which can be closed.
    while (replacement.next())
        if (replacement.count() > bytes.size())
            return;
    if (replacement.count() == 0)
        return;

    const QList<PlaylistEntry> before = playlistEntries({}, m_root.files.decode(bytes));
    const QList<PlaylistEntry> after = playlistEntries({}, m_root.files.decode(replacement.result()));
    if (before.size() != after.size())
        return;
    qint64 changed = 0;
    for (qsizetype i = 0; i < before.size(); ++i) {
        if (before[i] == after[i])
            continue;
        ++changed;
        if (Dateiexistenz::FileExists(m_root, fullPath(after[i].sourceURL, FileDirPath::FolderOf(path))))
            ++m_existing;
    }
    m_entries += changed;
    if (changed > 0)
        ++m_changedLists;
}

QString FolderPreview::text() const
{
    if (m_doubted)
        return u"Nicht alle Playlisten konnten gelesen werden."_s;
    if (m_entries == 0)
        return u"Kein Eintrag in den Playlisten würde sich ändern."_s;
    const QString entries =
        m_entries == 1 ? u"Ein Eintrag würde sich ändern"_s : german(m_entries) + u" Einträge würden sich ändern"_s;
    const QString lists =
        m_changedLists == 1 ? u" (in einer Playliste). "_s : u" (in "_s + german(m_changedLists) + u" Playlisten). "_s;
    const QString existing = m_existing == 0           ? u"Keine der neuen Dateien ist vorhanden."_s
                             : m_existing == m_entries ? u"Alle neuen Dateien sind vorhanden."_s
                                                       : german(m_existing) + u" der neuen Dateien sind vorhanden."_s;
    return entries + lists + existing;
}

bool FolderPreview::neverEnds(const QString& old, const QString& fresh)
{
    return folded(fresh).contains(folded(old));
}

} // namespace orvantine
