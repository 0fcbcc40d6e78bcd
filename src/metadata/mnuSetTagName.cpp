#include "metadata/mnuSetTagName.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/FeatureTips.h"
#include "app/Root.h"
#include "metadata/SelectedTrack.h"
#include "metadata/ShowProperties.h"
#include "metadata/ShowTrackInfo.h"
#include "metadata/TrackNames.h"
#include "platform/FileDirPath.h"

#include <optional>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Stores what the labels say of the selected track as its name.
void nameByTag(Root& root, TrackList::Hold& hold)
{
    if (root.sAnzeige[2].Caption.value().isEmpty())
        return;
    const QString name = nameByLabels(root);
    storeTrackName(root, databaseFile(root), selectedTrackPath(root), name);
    hold.setName(root.LListView2.selectedRow(), name);
}

/// Lets the view follow a loop over the rows now and then: drawing each step would take longer than the loop.
class NowAndThen
{
public:
    explicit NowAndThen(Root& root) : m_root(root), m_shown(root.services.events.secondsOfDay())
    {
        m_together.emplace(m_root.LListView2);
    }

    void step()
    {
        constexpr double Seconds = 0.1;
        const double now = m_root.services.events.secondsOfDay();
        if (now >= m_shown && now - m_shown < Seconds)
            return;
        m_shown = now;
        m_together.reset();
        m_together.emplace(m_root.LListView2);
    }

private:
    Root& m_root;
    double m_shown;
    std::optional<ListView::Batch> m_together;
};

/// The names of a stretch of rows are one change: to bring each to the disk alone would take longer than the loop. It
/// ends now and then, so that a program that dies in a long loop leaves all but the last names, and before somebody is
/// asked, who may take his time or change something himself.
class Stretches
{
public:
    explicit Stretches(Root& root) : m_root(root) { begin(); }
    ~Stretches() { rest(); }
    Stretches(const Stretches&) = delete;
    Stretches& operator=(const Stretches&) = delete;

    void step()
    {
        constexpr double Seconds = 1;
        const double now = m_root.services.events.secondsOfDay();
        if (m_change && now >= m_begun && now - m_begun < Seconds)
            return;
        rest();
        begin();
    }
    /// What is stored from now on up to the next step stands for itself.
    void rest()
    {
        // The file that it made has gone again.
        if (m_change && !m_change->end() && m_awaited)
            m_root.databaseAwaited = true;
        m_change.reset();
    }

private:
    void begin()
    {
        m_awaited = m_root.databaseAwaited;
        m_begun = m_root.services.events.secondsOfDay();
        m_change.emplace(m_root.files, WholeChange::Events::Served);
    }

    Root& m_root;
    std::optional<WholeChange> m_change;
    double m_begun = 0;
    bool m_awaited = false;
};

} // namespace

void mnuSetTagName_Click(Root& root)
{
    if (root.mnuSpeichern.Tag != u"1"_s && !ShowFeatureTip(root, 410))
        return;
    if (Dateiexistenz::FileExists(root, databaseFile(root))) {
        // The next save takes the extras from the copy: half of one would lose them.
        const WholeChange whole(root.files);
        backUp(root, namedDatabaseFile(root), namedBackupFile(root));
    }

    if (root.sAnzeige[2].Caption.value().isEmpty())
        return;
    const Command command(root);
    TrackList::Hold hold = root.trackList.hold();
    ListView& tracks = root.LListView2;
    NowAndThen view(root);
    Stretches stretches(root);
    nameByTag(root, hold);

    const int remembered = tracks.selectedRow();
    for (int row = 1; row <= tracks.count(); ++row) {
        tracks.select(row);
        if (isAskedAbout(root))
            stretches.rest();
        // Required: a row that cannot be read leaves the labels alone and gets the name of the row before it.
        ShowTrackInfo(root, row, 1);
        // The labels and rows of another list have nothing to do with this one.
        if (command.ended() || !hold.inSight())
            return;
        nameByTag(root, hold);
        view.step();
        stretches.step();
    }
    stretches.rest();
    tracks.select(remembered);
    ShowTrackInfo(root, remembered, 1);
}

void mnuSetFileName_Click(Root& root)
{
    const int row = root.LListView2.selectedRow();
    const QString path = trackPath(root, row);
    forgetTrackName(root, databaseFile(root), path);
    root.trackList.hold().setName(row, FileDirPath::titleOf(path));
}

void mnuGetIDTag_Click(Root& root)
{
    LoadMp3TagID(root);
}

void mnuDateiEigenschaften_Click(Root& root)
{
    ShowProperties(root, selectedTrackPath(root));
}

} // namespace orvantine
