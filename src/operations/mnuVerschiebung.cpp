#include "operations/mnuVerschiebung.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/IniFiles.h"
#include "app/LisviewMoveEntrys.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "operations/Positionen.h"
#include "playback/PlayResource.h"

#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int Up = 1;
constexpr int Down = 2;
constexpr int Dialog = 4;

/// The check for doubles is off for the time of a step. Required: an absent value is not put back to 1.
class ChecksOff
{
public:
    explicit ChecksOff(Root& root) : m_root(root), m_on(readSetting(root, u"CheckEntrys"_s).is(1))
    {
        writeSetting(root, u"CheckEntrys"_s, qint16{0});
    }
    ~ChecksOff() { putBack(); }
    ChecksOff(const ChecksOff&) = delete;
    ChecksOff& operator=(const ChecksOff&) = delete;

    void putBack()
    {
        if (std::exchange(m_on, false))
            writeSetting(m_root, u"CheckEntrys"_s, qint16{1});
    }
    /// Required: they stay off behind the dialog.
    void leaveOff() { m_on = false; }

private:
    Root& m_root;
    bool m_on;
};

/// The housekeeping shows the description of whichever row is selected, and it stays where the next one has none.
bool isDescriptionOfAnother(const Root& root, int row, const QString& description)
{
    for (int other = 1; other <= root.LListView1.count(); ++other)
        if (other != row && indexValue(root, databaseFile(root), other, EntryKey::Description) == description)
            return true;
    return false;
}

/// What the moved playlist takes along: its mark, description and date. Taken before the move: a reload in between
/// reads the keys of its new number, which are not yet its own.
CatalogueEntry extrasOf(const Root& root, int row)
{
    CatalogueEntry entry = readEntry(root, databaseFile(root), row);
    if (labelsTellOf(root, row)) {
        const QString shown = root.LSoundCaption.Caption.value();
        if (root.LSoundCaption.Tag != u"1"_s)
            entry.description.clear();
        else if (shown != entry.description && !isDescriptionOfAnother(root, row, shown))
            entry.description = shown;
        entry.date = root.tDatum.Caption.value();
    }
    return entry;
}

void writeMovedRow(Root& root, int row, CatalogueEntry entry)
{
    takeCells(root, row, entry);
    // Required: the moved row's "a" is not written here.
    writeEntry(root, databaseFile(root), row, entry, EntryKey::Name);
}

/// One step of a row. Patches over what the save has just written, as that leaves description, date and
/// mark with the position.
void moveOneStep(Root& root, Command& command, int index, int row, ChecksOff& checks)
{
    ListView& list = root.LListView1;
    // Required: at the edges the cue sounds and the command goes on.
    if (index == Up && row == 1)
        PlayResource(root, u"Play"_s);
    if (index == Down && row > 0 && row == list.count())
        PlayResource(root, u"Stop"_s);

    const int neighbour = index == Up ? row - 1 : row + 1;
    // What cannot be read now must not be written back empty.
    const WholeChange together(root.files, WholeChange::Events::Served);
    const CatalogueEntry neighbourEntry = readEntry(root, databaseFile(root), neighbour);
    const RowIdentity playlist = identityOf(root, row);

    const CatalogueEntry extras = extrasOf(root, row);

    root.trackList.hold().endSorting();
    if (!command.yield() || identityOf(root, row) != playlist)
        return;
    root.bMoveDown.Tag = u"1"_s;

    if (index == Up)
        LisviewMoveEntrys::MoveUp(list, row, 1, false);
    else
        LisviewMoveEntrys::MoveDown(list, row, 1, false);
    const bool moved = row > 0 && list.has(neighbour);

    const int place = moved ? neighbour : row;
    const bool whole = row > 0 && isWholeCatalogue(root);
    const auto patch = [&] {
        // At an edge nothing has changed places: the neighbour's number is 0 or one too many, and stays so; a list
        // that stood there behind a gap has its place by now. An entry that could not be read never replaces the one
        // that the save has just written.
        if (moved ? !neighbourEntry.path.isEmpty() : neighbourEntry.name.isEmpty())
            writeEntry(root, databaseFile(root), moved ? row : neighbour, neighbourEntry);
        writeMovedRow(root, place, extras);
    };

    root.mnuSpeichern.Click();
    root.bMoveDown.Tag = u"0"_s;
    const bool goesOn = command.yield();
    // A save that met another database has loaded it: the rows have other numbers now.
    const bool same = list.key(place) == playlist.key;
    // Where an event has ended the program behind the save, its extras must not stay with the position.
    const bool saved = indexValue(root, databaseFile(root), place, EntryKey::Path) == playlist.path;
    checks.putBack();
    if (whole && same && (goesOn || saved))
        patch();
    if (goesOn)
        command.lastYield();
}

} // namespace

void mnuVerschiebung_Click(Root& root, int index)
{
    if (isFiltered(root))
        return;
    ChecksOff checks(root);

    // The next save takes the extras from the copy: that of another day would lose them.
    if (!backUpDatabase(root))
        return;

    Command command(root);
    const int selected = root.LListView1.selectedRow();
    const RowIdentity playlist = identityOf(root, selected);
    if (!command.pause(1.0))
        return;
    // The save joins it to the rows; what was to be moved has another number then.
    if (IniFiles::isForeign(root)) {
        root.mnuSpeichern.Click();
        return;
    }

    if (index != Dialog) {
        // In the wait the sequence may have gone on to another row.
        const int row = selected > 0 ? rowOf(root, playlist, selected) : 0;
        if (row > 0 || selected == 0)
            moveOneStep(root, command, index, row, checks);
        return;
    }
    checks.leaveOff();
    if (!isFiltered(root) && command.showModal(*root.positionen) && IniFiles::isForeign(root))
        root.mnuSpeichern.Click();
}

void bMoveUp_Click(Root& root)
{
    root.mnuVerschiebung[Up].Click();
}

void bMoveDown_Click(Root& root)
{
    root.mnuVerschiebung[Down].Click();
}

} // namespace orvantine
