#include "operations/Favourites.h"

#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueDatabase.h"
#include "shell/MainWindow.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Required: the two commands name the file by this constant, whatever the program's file is called.
QString favouritesFile(const Root& root)
{
    return root.tDatenbank.Text.value() + u"Orvantine.dat"_s;
}

void hideOthers(Root& root)
{
    ListView& list = root.LListView1;
    const QString file = favouritesFile(root);
    const int count = list.count();
    int row = 1;
    for (int number = 1; number <= count; ++number) {
        if (indexValue(root, file, number, 'g') == u"1"_s)
            ++row;
        else
            list.remove(row);
    }
    root.nAnzeige.Caption = u"(%1)"_s.arg(list.count());
    list.select(1);
    // The rows have other numbers now: a click on any of them reads its list.
    list.Tag = u"0"_s;
}

/// The reload asks nothing of lists with one name.
void bringBack(Root& root)
{
    const bool asks = readSetting(root, u"CheckEntrys"_s).isOrAbsent(1);
    writeSetting(root, u"CheckEntrys"_s, static_cast<qint16>(0));
    root.mnuLaden.Click();
    writeSetting(root, u"CheckEntrys"_s, static_cast<qint16>(asks ? 1 : 0));
    DisabledButtons(root, 0);
    root.Pointer = MousePointer::Default;
}

} // namespace

void mnuFavoriten_Click(Root& root)
{
    ListView& list = root.LListView1;
    const int row = list.selectedRow();
    if (row == 0)
        return;
    const bool favourite = !root.mnuFavoriten.Checked.value();
    root.mnuFavoriten.Checked = favourite;
    list.setIcons(row, favourite ? u"Icon_6"_s : u"Icon_1"_s);
    if (favourite)
        writeIndexValue(root, favouritesFile(root), row, 'g', u"1"_s);
    else
        deleteIndexValue(root, favouritesFile(root), row, 'g');
}

void mnuFavoritenShow_Click(Root& root)
{
    if (root.loadingCatalogue)
        return;
    const bool on = root.mnuFavoritenShow.Tag != u"1"_s;
    root.mnuFavoritenShow.Tag = on ? u"1"_s : u"0"_s;
    root.mnuFavoritenShow.Checked = on;
    if (on)
        hideOthers(root);
    else
        bringBack(root);
}

} // namespace orvantine
