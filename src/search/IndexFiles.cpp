#include "search/IndexFiles.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueRows.h"
#include "platform/CaseFold.h"
#include "playlists/GetPlayEntrys.h"
#include "search/CatalogueWalk.h"
#include "transfer/Kopieren.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// What the run takes away, back on every way out.
class Frozen
{
public:
    explicit Frozen(Root& root) : m_root(root), m_from(root), m_errors(root.mnuErrorDisplay.Checked)
    {
        root.mnuErrorDisplay.Checked = false;
        root.pCovers.Enabled = false;
        root.Timer2.Enabled = false;
        root.Tag = u"0"_s;
    }
    ~Frozen()
    {
        m_root.services.forms.unload(*m_root.kopieren);
        if (m_errors)
            m_root.mnuErrorDisplay.Checked = true;
        if (m_root.services.events.ended())
            return;
        m_root.pCovers.Enabled = true;
        m_root.Timer2.Enabled = true;
        m_root.Tag = u"0"_s;
    }
    Frozen(const Frozen&) = delete;
    Frozen& operator=(const Frozen&) = delete;

private:
    Root& m_root;
    WalkedFrom m_from;
    bool m_errors;
};

/// The panels of the last seconds, away again unless they were in sight before or tell of a track that plays.
class Panels
{
public:
    explicit Panels(Root& root) : m_root(root), m_names(root.pDateiname.Visible), m_status(root.pCopyStatus.Visible)
    {
        root.tCopyStatus.Caption = u"Dateien werden indiziert."_s;
        root.pDateiname.Visible = true;
        root.pCopyStatus.Visible = true;
    }
    ~Panels()
    {
        if (m_root.services.events.ended())
            return;
        m_root.tCopyStatus.Caption = QString();
        m_root.pCopyStatus.Visible = m_status;
        m_root.pDateiname.Visible = m_names || !m_root.tDateiname.Caption.value().isEmpty();
    }
    Panels(const Panels&) = delete;
    Panels& operator=(const Panels&) = delete;

private:
    Root& m_root;
    bool m_names;
    bool m_status;
};

void showTexts(Root& root)
{
    root.kopieren->Caption = u" Katalogisierung"_s;
    root.kopieren->Label2.Caption = u"Bitte warten Sie, bis die Indexerstellung vollständig abgeschlossen wurde."_s;
}

enum class Outcome { Done, Stopped, Ended };

/// Appends the paths of the list in sight. Told is a file that is written anew for each track, so that a stop leaves a
/// whole one; lines that are added behind the last line end leave the same.
Outcome addTracks(Root& root, Command& command)
{
    constexpr int BetweenYields = 64;
    QStringList paths;
    for (int row = 1; row <= root.LListView2.count(); ++row)
        paths.append(root.LListView2.subItem(row, TrackItem::Path));
    const TrackList::Hold hold = root.trackList.hold();

    QString lines;
    Outcome outcome = Outcome::Done;
    for (qsizetype i = 0; i < paths.size() && outcome == Outcome::Done; ++i) {
        lines += paths[i] + u"\r\n"_s;
        if (i % BetweenYields != 0)
            continue;
        if (hold.inSight())
            root.LListView2.select(static_cast<int>(i) + 1);
        if (!command.yield())
            return Outcome::Ended;
        if (stopAsked(root))
            outcome = Outcome::Stopped;
    }
    if (!lines.isEmpty())
        root.files.appendBytes(indexFile(root), root.files.encode(lines));
    return outcome;
}

Outcome indexCatalogue(Root& root, Command& command)
{
    // The reading gives the lists back.
    const auto freeze = [&root, &command] {
        command.wait(Wait::Lists);
        root.Timer2.Enabled = false;
    };
    for (int row = 1; row <= root.LListView1.count(); ++row) {
        if (!openWalkedRow(root, command, row, freeze))
            return Outcome::Ended;
        if (stopAsked(root))
            return Outcome::Stopped;
        if (!showsTracksOf(root, row))
            continue;
        if (const Outcome outcome = addTracks(root, command); outcome != Outcome::Done)
            return outcome;
    }
    return Outcome::Done;
}

/// As texts of paths are compared: the kind of separator and the normal form make no difference, nor does case.
QString comparedText(const QString& text)
{
    return folded(QString(text).replace(u'\\', u'/').normalized(QString::NormalizationForm_C));
}

/// The index of so many bytes is searched; a larger one would take the memory of the machine.
constexpr qint64 LargestIndex = 128LL * 1024 * 1024;

/// Characters of a run, and the factor by which its hash grows.
constexpr qsizetype Run = 16;
constexpr quint64 Factor = 0x9E3779B97F4A7C15ULL;

constexpr quint64 factorOfRun()
{
    quint64 power = 1;
    for (qsizetype i = 1; i < Run; ++i)
        power *= Factor;
    return power;
}

/// Calls `see` with the hash of each run of the text until it gives false.
template <class See>
void eachRun(const QString& text, See see)
{
    constexpr quint64 Oldest = factorOfRun();
    quint64 hash = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (i >= Run)
            hash -= Oldest * (text[i - Run].unicode() + 1U);
        hash = hash * Factor + text[i].unicode() + 1U;
        if (i + 1 >= Run && !see(hash >> 20U))
            return;
    }
}

} // namespace

bool indexIsOfToday(const Root& root)
{
    const std::optional<QDateTime> changed = root.files.modified(indexFile(root));
    return changed && dateText(changed->date()) == dateText(root.services.events.now().date());
}

void SetIndexFile(Root& root)
{
    Command command(root);
    const int selected = root.LListView1.selectedRow();
    const RowIdentity playlist = identityOf(root, selected);
    const int track = root.LListView2.selectedRow();

    Outcome outcome = Outcome::Done;
    QString opened;
    {
        const Frozen frozen(root);
        command.wait(Wait::Lists);
        showTexts(root);
        root.services.forms.show(*root.kopieren);
        if (root.files.exists(indexFile(root)))
            root.files.remove(indexFile(root));
        if (!command.yield() || !command.pause(1.0))
            return;

        outcome = indexCatalogue(root, command);
        if (outcome == Outcome::Ended)
            return;
        if (outcome == Outcome::Done) {
            root.Tag = u"1"_s;
            showTexts(root);
            const Panels panels(root);
            if (!command.yield() || !command.pause(2.0))
                return;
        }
        // Still without questions about missing files.
        if (const int row = selected > 0 ? rowOf(root, playlist, selected) : 0; row > 0)
            opened = openRow(root, row);
        if (command.ended())
            return;
    }
    command.endWait();
    // Something else may have opened a list of its own in the read.
    if (opened.isEmpty() || root.trackList.isOf(opened))
        root.LListView2.select(track);
    command.lastYield();
}

PlaylistIndex::PlaylistIndex(const Root& root)
{
    const QString file = indexFile(root);
    if (root.files.size(file).value_or(0) > LargestIndex)
        return;
    const ReadText read = root.files.readText(file);
    // Required: the last two characters are taken for the line end.
    if (!read.done() || read.text.size() <= 2)
        return;
    m_folded = comparedText(read.text.chopped(2));

    constexpr std::size_t BitsForEach = 8;
    std::size_t bits = 1024;
    while (bits < static_cast<std::size_t>(m_folded.size()) * BitsForEach)
        bits *= 2;
    m_runs.resize(bits);
    eachRun(m_folded, [this, bits](quint64 hash) {
        m_runs[hash & (bits - 1)] = true;
        return true;
    });
}

bool PlaylistIndex::mayHold(const QString& folded) const
{
    bool all = true;
    eachRun(folded, [this, &all](quint64 hash) {
        all = m_runs[hash & (m_runs.size() - 1)];
        return all;
    });
    return all;
}

int PlaylistIndex::CheckPlaylistFile(const QString& text) const
{
    if (m_folded.isEmpty())
        return 0;
    const QString wanted = comparedText(text);
    return mayHold(wanted) && m_folded.contains(wanted) ? 1 : 0;
}

} // namespace orvantine
