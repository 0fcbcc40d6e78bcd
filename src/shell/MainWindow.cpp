#include "shell/MainWindow.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/SaveOptions.h"
#include "playlists/ReadPlaylists.h"
#include "shell/FeatureTips.h"
#include "shell/Info.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr Twips LeastWidth = 9365;
constexpr Twips LeastHeight = 7245;
constexpr Twips NameWidth = 2800;
constexpr Twips TracksWidth = 900;
constexpr double NarrowestStored = 500;

bool toggle(MenuItem& item)
{
    item.Checked = !item.Checked.value();
    return item.Checked.value();
}

Twips storedWidth(const Root& root, const QString& name, Twips otherwise)
{
    const Setting stored = readSetting(root, name);
    return stored.number() >= NarrowestStored ? stored.whole() : otherwise;
}

void storeWidth(Root& root, const QString& name, const ListView& list, int column)
{
    if (column <= list.columns())
        writeSetting(root, name, QString::number(list.columnWidth(column)));
}

} // namespace

void DisabledButtons(Root& root, int off)
{
    const bool on = off == 0;
    for (MenuItem* menu : {&root.mnuBearbeiten, &root.mnuAnsicht, &root.mnuVerwaltung, &root.mnuHelp})
        menu->Enabled = on;
    root.LListView1.Enabled = on;
    root.LListView2.Enabled = on;
    root.pAnimations.Enabled = on;
    root.pSymbole.Enabled = on;
    // While something runs the play button stays off: the two buttons are always opposite.
    root.pSoundPlayer.Enabled = on && !root.pPausePlayer.Enabled.value();
    root.buttonsDisabled = !on;
}

void DisabledButtons(Root& root)
{
    DisabledButtons(root, root.buttonsDisabled ? 0 : 1);
}

void Form_Resize(Root& root)
{
    if (root.State.value() == WindowState::Minimized) {
        if (root.services.tray.available())
            root.Visible = false;
        return;
    }
    if (root.State.value() == WindowState::Maximized)
        return;
    root.Width = std::max(root.Width.value(), LeastWidth);
    root.Height = std::max(root.Height.value(), LeastHeight);
}

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
    const bool on = toggle(root.mnuTrackShow);
    root.LListView1.setColumnWidth(4, on ? TracksWidth : 0);
    root.LListView1.setColumnWidth(2, on ? NameWidth : NameWidth + TracksWidth);
}

void mnuOrvmenu_Click(Root& root, int index)
{
    const bool paths = index == 1;
    ListView& tracks = root.LListView2;
    storeWidth(root, u"LV_1"_s, root.LListView1, 2);
    storeWidth(root, u"LV_2"_s, root.LListView1, 4);
    storeWidth(root, u"LV_4"_s, tracks, 2);
    // Each mode keeps a width of its own, so only that of the column in sight is stored.
    if (tracks.columnWidth(4) > 0)
        storeWidth(root, u"LV_6"_s, tracks, 4);
    if (tracks.columnWidth(5) > 0)
        storeWidth(root, u"LV_7"_s, tracks, 5);

    root.mnuOrvmenu[1].Checked = paths;
    root.mnuOrvmenu[2].Checked = !paths;
    tracks.setColumnWidth(4, paths ? storedWidth(root, u"LV_6"_s, 2900) : 0);
    tracks.setColumnWidth(5, paths ? 0 : storedWidth(root, u"LV_7"_s, 2200));
}

void mnuSchriftarten_Click(Root& root)
{
    const std::optional<FontChoice> font =
        root.services.choosers.font({root.LListView1.FontName.value(), root.LListView1.FontSize.value()});
    if (!font)
        return;
    for (ListView* list : {&root.LListView1, &root.LListView2}) {
        list->FontName = font->family;
        list->FontSize = font->size;
    }
}

void mnuSpaltenReset_Click(Root& root)
{
    ShowFeatureTip(root, 510);
    if (root.services.messages.show(u"Möchten Sie wirklich die Spaltenbreiten der Tabellen wiederherstellen ? "_s,
                                    u" Optionen zurücksetzen"_s, MessageIcon::Question,
                                    MessageButtons::YesNo) != Answer::Yes)
        return;
    root.LListView1.setColumnWidth(1, 0);
    root.LListView1.setColumnWidth(2, NameWidth);
    root.LListView1.setColumnWidth(3, 0);
    root.LListView1.setColumnWidth(4, TracksWidth);
    resetTrackColumnWidths(root);
    SaveOptions(root);
    // Saving takes the tray icon away; the program goes on and keeps it.
    root.services.tray.add(u"Orvanten Manager"_s);
}

void mnuAddSoundfiles_Click(Root& root)
{
    ShowFeatureTip(root, 512);
    toggle(root.mnuAddSoundfiles);
}

void mnuErrorDisplay_Click(Root& root)
{
    ShowFeatureTip(root, 513);
    toggle(root.mnuErrorDisplay);
}

void mnuLokalePlayliste_Click(Root& root)
{
    ShowFeatureTip(root, 514);
    toggle(root.mnuLokalePlayliste);
}

void mnuHilfe_Click(Root& root)
{
    showHelp(root, u"/1.0 Erste Schritte.htm");
}

void mnuInfo_Click(Root& root)
{
    root.services.forms.showModal(*root.info);
}

void showHelp(Root& root, const char16_t* topic)
{
    const QString help = FileDirPath::join(root.services.folders.program, u"Orvantine.chm");
    if (!Dateiexistenz::FileExists(root, help))
        return;
    const QString name = QString::fromUtf16(topic);
    root.services.launcher.start({.kind = LaunchKind::Help,
                                  .command = u"hh.exe "_s + help + u"::"_s + name,
                                  .target = help,
                                  .arguments = {name}});
}

} // namespace orvantine
