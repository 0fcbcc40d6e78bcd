#include "shell/MainWindow.h"

#include "app/ColumnWidths.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Help.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/mnuSpeichern.h"
#include "shell/Info.h"
#include "shell/SaveOptions.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool toggle(MenuItem& item)
{
    item.Checked = !item.Checked.value();
    return item.Checked.value();
}

} // namespace

void mnuGridlines_Click(Root& root)
{
    const bool on = toggle(root.mnuGridlines);
    root.LListView1.GridLines = on;
    root.LListView2.GridLines = on;
}

void mnuDatumsanzeige_Click(Root& root)
{
    const bool on = toggle(root.mnuDatumsanzeige);
    root.pDatum.Visible = on;
    root.tSoundzahl.Visible = on;
    writeSetting(root, u"ShowDate"_s, static_cast<qint16>(on ? 0 : 1));
}

void showDateDisplay(Root& root, bool on)
{
    if (root.mnuDatumsanzeige.Checked.value() == on)
        return;
    root.mnuDatumsanzeige.Checked = on;
    const bool visible = on && !root.mnuPositionen.Checked.value();
    root.pDatum.Visible = visible;
    root.tSoundzahl.Visible = visible;
}

void mnuLautstärke_Click(Root& root)
{
    if (root.mnuPositionen.Checked.value())
        mnuPositionen_Click(root);
    root.pVolume.Visible = toggle(root.mnuLautstärke);
}

void mnuPositionen_Click(Root& root)
{
    if (root.mnuLautstärke.Checked.value())
        mnuLautstärke_Click(root);
    const bool on = toggle(root.mnuPositionen);
    for (Button* button : {&root.bMoveUp, &root.bMoveDown, &root.bEntryUp, &root.bEntryDown}) {
        button->Visible = on;
        button->Enabled = on;
    }
    root.tSoundzahl.Visible = !on;
    root.nAnzeige.Visible = !on;
    root.pDatum.Visible = !on;
}

void mnuTrackShow_Click(Root& root)
{
    constexpr int Name = columnOf(CatalogueItem::Name);
    constexpr int Tracks = columnOf(CatalogueItem::Tracks);
    const Twips nameWidth = CatalogueColumns[Name - 1].width;
    const Twips tracksWidth = CatalogueColumns[Tracks - 1].width;
    const bool on = toggle(root.mnuTrackShow);
    root.LListView1.setColumnWidth(Tracks, on ? tracksWidth : 0);
    root.LListView1.setColumnWidth(Name, on ? nameWidth : nameWidth + tracksWidth);
}

void mnuOrvmenu_Click(Root& root, int index)
{
    constexpr int Path = columnOf(TrackItem::Path);
    constexpr int File = columnOf(TrackItem::File);
    const bool paths = index == 1;
    ListView& tracks = root.LListView2;
    for (const int item : {CatalogueItem::Name, CatalogueItem::Tracks})
        storeWidth(root, root.LListView1, columnOf(item));
    // Each mode keeps a width of its own.
    for (const int column : {columnOf(TrackItem::Number), Path, File})
        storeWidth(root, tracks, column);

    root.mnuOrvmenu[1].Checked = paths;
    root.mnuOrvmenu[2].Checked = !paths;
    tracks.setColumnWidth(Path, paths ? shownWidth(root, tracks, Path) : 0);
    tracks.setColumnWidth(File, paths ? 0 : shownWidth(root, tracks, File));
}

void mnuSchriftarten_Click(Root& root)
{
    Command command(root);
    const std::optional<FontChoice> font =
        command.font({root.LListView1.FontName.value(), root.LListView1.FontSize.value()});
    if (!font)
        return;
    for (ListView* list : {&root.LListView1, &root.LListView2}) {
        list->FontName = font->family;
        list->FontSize = font->size;
    }
}

void mnuSpaltenReset_Click(Root& root)
{
    Command command(root);
    if (command.ask({.text = u"Möchten Sie wirklich die Spaltenbreiten der Tabellen wiederherstellen ? "_s,
                     .title = u" Optionen zurücksetzen"_s,
                     .icon = MessageIcon::Question,
                     .buttons = MessageButtons::YesNo}) != Answer::Yes)
        return;
    resetCatalogueColumnWidths(root);
    resetTrackColumnWidths(root);
    SaveOptions(root);
    // Saving takes the tray icon away; the program goes on and keeps it.
    if (!command.ended())
        root.services.tray.add(u"Orvanten Manager"_s);
}

void mnuAddSoundfiles_Click(Root& root)
{
    toggle(root.mnuAddSoundfiles);
}

void mnuErrorDisplay_Click(Root& root)
{
    toggle(root.mnuErrorDisplay);
}

void mnuLokalePlayliste_Click(Root& root)
{
    toggle(root.mnuLokalePlayliste);
}

void saveAndTell(Root& root)
{
    const std::optional<FileStamp> before = root.files.stamp(databaseFile(root));
    showQuietly(root, {});
    mnuSpeichern_Click(root);
    const std::optional<FileStamp> after = root.files.stamp(databaseFile(root));
    // What went wrong on the way has been told in the same place.
    if (!root.services.events.ended() && after && after != before && root.quietLine.Caption.value().isEmpty())
        showQuietly(root, u"Gespeichert"_s);
}

void mnuHilfe_Click(Root& root)
{
    showHelp(root, u"/1.0 Erste Schritte.htm");
}

void mnuInfo_Click(Root& root)
{
    (void)Command(root).showModal(*root.info);
}

} // namespace orvantine
