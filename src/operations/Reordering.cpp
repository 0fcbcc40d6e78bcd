#include "operations/Reordering.h"

#include "app/Dateiexistenz.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueDatabase.h"
#include "operations/LisviewMoveEntrys.h"
#include "operations/Positionen.h"
#include "playback/PlayResource.h"
#include "shell/FeatureTips.h"

#include <QScopedValueRollback>

#include <array>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int Up = 1;
constexpr int Down = 2;
constexpr int Dialog = 4;

constexpr std::array Letters{'a', 'b', 'c', 'd', 'e', 'f', 'g'};
using Entry = std::array<QString, Letters.size()>;

Entry readEntry(const Root& root, int number)
{
    Entry entry;
    for (std::size_t i = 0; i < Letters.size(); ++i)
        entry[i] = indexValue(root, databaseFile(root), number, Letters[i]);
    return entry;
}

void writeEntry(Root& root, int number, const Entry& entry)
{
    for (std::size_t i = 0; i < Letters.size(); ++i)
        writeIndexValue(root, databaseFile(root), number, Letters[i], entry[i]);
}

/// What the window shows of the playlist that is moved. Taken before the move: a reload in between reads the keys of
/// its new number, which are not yet its own.
struct ShownExtras
{
    explicit ShownExtras(const Root& root)
        : description(root.LSoundCaption.Tag == u"1"_s ? root.LSoundCaption.Caption.value() : QString()),
          date(root.tDatum.Caption.value())
    {
    }

    QString description;
    QString date;
};

void writeMovedRow(Root& root, int row, const ShownExtras& shown, const QString& favourite)
{
    const QString database = databaseFile(root);
    const ListView& list = root.LListView1;
    // Required: the moved row's "a" is not written here.
    writeIndexValue(root, database, row, 'b', list.subItem(row, 1));
    writeIndexValue(root, database, row, 'c', list.subItem(row, 2));
    writeIndexValue(root, database, row, 'd', list.subItem(row, 3));
    writeIndexValue(root, database, row, 'e', shown.description);
    writeIndexValue(root, database, row, 'f', shown.date);
    writeIndexValue(root, database, row, 'g', favourite);
}

/// One step of the selected row. Patches over what the save has just written, as that leaves description, date and
/// mark with the position.
void moveOneStep(Root& root, int index, bool checkedEntries)
{
    ListView& list = root.LListView1;
    const int row = list.selectedRow();
    // Required: at the edges the cue sounds and the command goes on.
    if (index == Up && row == 1)
        PlayResource(root, u"Play"_s);
    if (index == Down && row > 0 && row == list.count())
        PlayResource(root, u"Stop"_s);

    const int neighbour = index == Up ? row - 1 : row + 1;
    const Entry neighbourEntry = readEntry(root, neighbour);
    const QString favourite = indexValue(root, databaseFile(root), row, 'g');

    root.LListView2.setSorted(false);
    root.services.events.yield();
    root.bMoveDown.Tag = u"1"_s;

    const ShownExtras shown(root);
    if (index == Up)
        LisviewMoveEntrys::MoveUp(list, row, 1, false);
    else
        LisviewMoveEntrys::MoveDown(list, row, 1, false);
    const bool moved = row > 0 && list.has(neighbour);
    const int place = moved ? neighbour : row;

    const WholeChange together(root.files);
    const bool whole = isWholeCatalogue(root);
    mnuSpeichern_Click(root);
    root.bMoveDown.Tag = u"0"_s;
    root.services.events.yield();
    // Required: an absent value is not put back to 1.
    if (checkedEntries)
        writeSetting(root, u"CheckEntrys"_s, qint16{1});

    if (whole && isWholeCatalogue(root) && row > 0) {
        // At an edge nothing has changed places: the neighbour's number is 0 or one too many, and stays so.
        writeEntry(root, moved ? row : neighbour, neighbourEntry);
        writeMovedRow(root, place, shown, favourite);
    }

    root.bMoveDown.Tag = u"0"_s;
    root.services.events.yield();
}

} // namespace

void mnuVerschiebung_Click(Root& root, int index)
{
    // A step inside another one's wait would take the database's copy with half of the keys rewritten; rows of half a
    // load have no place yet.
    if (root.reordering || root.loadingCatalogue)
        return;
    const QScopedValueRollback running(root.reordering, true);

    ShowFeatureTip(root, 711);

    const bool checkedEntries = readSetting(root, u"CheckEntrys"_s).is(1);
    writeSetting(root, u"CheckEntrys"_s, qint16{0});

    if (Dateiexistenz::FileExists(root, databaseFile(root))) {
        // The next save takes the extras from the copy: half of one would lose them.
        const WholeChange together(root.files);
        root.files.copy(databaseFile(root), backupFile(root));
    }

    Pause(root, 1.0);

    if (index != Dialog)
        moveOneStep(root, index, checkedEntries);
    else if (isWholeCatalogue(root) || root.LListView1.count() == 0)
        root.services.forms.showModal(*root.positionen);
}

void bMoveUp_Click(Root& root)
{
    mnuVerschiebung_Click(root, Up);
}

void bMoveDown_Click(Root& root)
{
    mnuVerschiebung_Click(root, Down);
}

} // namespace orvantine
