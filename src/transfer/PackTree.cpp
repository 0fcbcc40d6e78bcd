#include "transfer/PackTree.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/FreeSpace.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/CoverFiles.h"
#include "platform/FileDirPath.h"
#include "playlists/TextDosConvert.h"
#include "playlists/TrackRow.h"
#include "search/CatalogueWalk.h"
#include "transfer/Kopieren.h"
#include "transfer/TargetChoice.h"

#include <QLocale>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The width of a text in the bars of the window, as near as the logic knows it.
Twips widthOf(const QString& text)
{
    constexpr Twips Character = 90;
    return static_cast<Twips>(text.size()) * Character;
}

} // namespace

PackTree::PackTree(Root& root, Command& command, PackMode mode, const QString& folder, const QString& measured)
    : m_root(root), m_command(command), m_mode(mode), m_folder(folder), m_measured(measured)
{
    m_carrier.emplace(root, command, std::nullopt);
}

/// The cells may hold anything.
int PackTree::countSteps() const
{
    double steps = m_root.LListView1.count();
    for (int row = 1; row <= m_root.LListView1.count(); ++row)
        steps += leadingNumber(m_root.LListView1.subItem(row, CatalogueItem::Tracks));
    constexpr double Most = 1'000'000'000;
    return static_cast<int>(std::clamp(steps, 0.0, Most));
}

/// Loading turns some of it on again.
void PackTree::freeze()
{
    m_errorsWereShown = m_errorsWereShown || m_root.mnuErrorDisplay.Checked.value();
    m_root.mnuErrorDisplay.Checked = false;
    m_command.wait(Wait::Lists);
    m_root.Timer2.Enabled = false;
}

void PackTree::packDatabase()
{
    const QString database = namedDatabaseFile(m_root);
    (void)m_carrier->carryBesides(database, m_folder + FileDirPath::FileNameOf(database));
}

PackTree::Outcome PackTree::build()
{
    m_root.tCopyStatus.Tag = QString::number(countSteps());
    m_root.tCopyStatus.Caption = QString();
    packDatabase();
    if (!spareTracks())
        return Outcome::Ended;
    for (int row = 1; row <= m_root.LListView1.count(); ++row)
        if (const Outcome outcome = packRow(row); outcome != Outcome::Built)
            return outcome;
    packDatabase();
    (void)m_carrier->carryText(m_log, m_folder + m_root.services.start.stem + u".log"_s);
    m_carrier->settle(m_folder);
    return m_command.ended() ? Outcome::Ended : Outcome::Built;
}

/// The tracks of all lists may lie where they are to go to: one is not put in the place of another. False after the
/// end of the program.
bool PackTree::spareTracks()
{
    for (int row = 1; m_mode == PackMode::Folder && row <= m_root.LListView1.count(); ++row) {
        const QString list = playlistPath(m_root, row);
        const QStringList entries =
            entriesOfFile(m_root, list).value_or(QString()).split(u"\r\n"_s, Qt::SkipEmptyParts);
        QStringList tracks;
        for (const QString& entry : entries)
            tracks += fullPath(entry, FileDirPath::FolderOf(list));
        m_carrier->spare(tracks);
        if (!m_command.yield())
            return false;
    }
    return !m_command.ended();
}

PackTree::Outcome PackTree::packRow(int row)
{
    if (!openWalkedRow(m_root, m_command, row, [this] { freeze(); }))
        return Outcome::Ended;
    m_name = playlistName(m_root, row);
    m_place = FileDirPath::canBeFolderName(m_name) ? withSeparator(m_folder + m_name) : QString();
    m_lines.clear();
    m_tracks.clear();
    m_hold = m_root.trackList.hold();
    const QString list = playlistPath(m_root, row);
    for (int track = 1; showsTracksOf(m_root, row) && track <= m_root.LListView2.count(); ++track)
        m_tracks += m_root.LListView2.subItem(track, TrackItem::Path);
    if (!m_tracks.isEmpty()) {
        m_carrier->spare(m_tracks);
        const Outcome outcome = packTracks();
        if (outcome == Outcome::Ended)
            return outcome;
        packList(list);
        if (outcome != Outcome::Built)
            return outcome;
    } else {
        // Without tracks, too short to be read, or not to be read at all.
        packAsFile(list);
    }
    packCover();
    if (!m_place.isEmpty())
        m_carrier->settle(m_place);
    m_log += m_folder + m_name + u"\r\n"_s;
    return m_command.yield() ? Outcome::Built : Outcome::Ended;
}

PackTree::Outcome PackTree::packTracks()
{
    for (int track = 1; track <= m_tracks.size(); ++track)
        if (const Outcome outcome = packTrack(track); outcome != Outcome::Built)
            return outcome;
    return Outcome::Built;
}

/// True to go on.
bool PackTree::tellRoom()
{
    constexpr double Step = 1024;
    constexpr double Least = 3000;
    // Required: nothing at all, as on a stick, counts as 0 here.
    const double free = FreeSpace::FreeBytes(m_root, m_root.services.volumes.rootOf(m_measured)).toDouble() / Step;
    const double megabytes = free / Step;
    const QString number = QLocale(QLocale::German, QLocale::Germany).toString(megabytes, 'f', 0);
    m_root.tDateiname.Caption = number + (m_mode == PackMode::Folder ? u" MB freier Speicher auf dem USB-Datenträger"_s
                                                                     : u" MB freier Speicher im temporären Ordner"_s);
    constexpr Twips ToSpare = 1500;
    m_root.pDateiname.Width = widthOf(m_root.tDateiname.Caption) + ToSpare;
    m_root.pDateiname.Left = (m_root.Width.value() - m_root.pDateiname.Width.value()) / 2;
    m_root.pDateiname.Visible = true;
    if (!m_command.yield())
        return false;
    return free > Least ||
           m_command.ask({.text = u"Der Zieldatenträger hat nur wenig freien Speicherplatz zur Verfügung.   \n"
                                  u"Der Vorgang wird ohne ein erfolgreichen Abschluss abgebrochen."_s,
                          .title = u" Pack and Go"_s,
                          .icon = MessageIcon::Exclamation,
                          .buttons = MessageButtons::RetryCancel}) == Answer::Retry;
}

PackTree::Outcome PackTree::packTrack(int track)
{
    if (stopAsked(m_root))
        return Outcome::Stopped;
    if (!tellRoom()) {
        if (m_command.ended())
            return Outcome::Ended;
        m_root.Tag = u"2"_s;
        return Outcome::Stopped;
    }
    if (m_hold->inSight())
        m_root.LListView2.select(track);
    ++m_done;
    m_carrier->progress().setSteps(m_done, m_root.tCopyStatus.Tag.toInt());
    if (!m_command.yield())
        return Outcome::Ended;

    const QString& from = m_tracks[track - 1];
    const QString name = FileDirPath::FileNameOf(from);
    if (m_place.isEmpty()) {
        if (Dateiexistenz::FileExists(m_root, from))
            m_carrier->refuse(from);
    } else {
        if (!Dateiexistenz::FolderExists(m_root, m_place))
            m_root.files.makeFolder(m_place);
        if (m_carrier->carry(from, m_place + name) == Carrier::Outcome::BrokenOff)
            return m_command.ended() ? Outcome::Ended : Outcome::Stopped;
    }
    if (!m_command.yield())
        return Outcome::Ended;
    showShare();
    if (!m_command.yield())
        return Outcome::Ended;
    // Told is a list that is written anew for each track; what stands at the end of the row is the same.
    m_lines += name;
    return m_command.yield() ? Outcome::Built : Outcome::Ended;
}

/// Required: a list whose cell counts too few takes it past 100.
void PackTree::showShare()
{
    constexpr int Whole = 100;
    const int all = m_root.tCopyStatus.Tag.toInt();
    const qint64 share = all > 0 ? qint64{m_done} * Whole / all : 0;
    m_root.tCopyStatus.Caption = QString::number(share) + u"% der Dateien kopiert"_s;
    constexpr Twips FromEdge = 380;
    m_root.pCopyStatus.Width = widthOf(m_root.tCopyStatus.Caption);
    m_root.pCopyStatus.Left = m_root.Width.value() - m_root.pCopyStatus.Width.value() - FromEdge;
    m_root.pCopyStatus.Visible = true;
}

/// An older list stays until the new one is whole.
void PackTree::packList(const QString& list)
{
    if (!m_place.isEmpty() && !m_lines.isEmpty())
        (void)m_carrier->carryText(m_lines.join(u"\r\n"_s) + u"\r\n"_s, m_place + FileDirPath::FileNameOf(list), list);
}

void PackTree::packAsFile(const QString& list)
{
    if (m_place.isEmpty() || !Dateiexistenz::FileExists(m_root, list))
        return;
    if (!Dateiexistenz::FolderExists(m_root, m_place))
        m_root.files.makeFolder(m_place);
    const QString place = m_place + FileDirPath::FileNameOf(list);
    if (!isCatalogueFile(m_root, place))
        (void)m_carrier->carryBesides(list, place);
    else if (!FileDirPath::isSameFile(list, place))
        m_carrier->noteFailure(list);
}

void PackTree::packCover()
{
    if (m_command.ended())
        return;
    const QString cover = coverFile(m_root, m_name);
    if (cover.isEmpty()) {
        if (m_root.pCoverBack.Visible.value() && m_root.mnuCoverShow.Checked.value())
            m_root.mnuCoverShow.Click();
        return;
    }
    // Required: a list without tracks has no folder that a cover could go to.
    if (Dateiexistenz::FolderExists(m_root, m_place))
        (void)m_carrier->carryBesides(cover, m_place + FileDirPath::FileNameOf(cover));
}

} // namespace orvantine
