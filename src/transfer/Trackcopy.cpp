#include "transfer/Trackcopy.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "metadata/SelectedTrack.h"
#include "playlists/AddPlayEntrys.h"
#include "playlists/GetPlayEntrys.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// While the chosen list is read events are served: a second choice, or Cancel, would come too late.
void enableChoice(Trackcopy& form, bool enabled)
{
    form.LListen.Enabled = enabled;
    form.BReady.Enabled = enabled;
    form.bAbbrechen.Enabled = enabled;
}

void load(Root& root)
{
    Trackcopy& form = *root.trackcopy;
    QStringList names;
    for (int row = 1; row <= root.LListView1.count(); ++row)
        names.append(playlistName(root, row));
    enableChoice(form, true);
    form.LListen.List = names;
    form.LListen.ListIndex = names.isEmpty() ? -1 : 0;
    // While the dialog is up the sequence may open another list: the track is the one that is named.
    form.tTrackname.Tag = selectedTrackPath(root);
}

/// True if the tracks of the row are the ones that are shown.
bool showTracks(Root& root, Command& command, int row)
{
    if (!root.LListView1.select(row))
        return false;
    const QString path = playlistPath(root, row);
    if (!root.trackList.isOf(path) || !ownTracks(root))
        openSelectedAnew(root);
    else
        LoadPlayEntrysTmp(root);
    return command.yield() && root.LListView1.selectedRow() == row && root.trackList.isOf(playlistPath(root, row)) &&
           ownTracks(root);
}

void BReady_Click(Root& root)
{
    Trackcopy& form = *root.trackcopy;
    if (!form.BReady.Enabled.value())
        return;
    Command command(root);
    const int chosen = form.LListen.ListIndex;
    // Required: no name at all is that of a row that is not there.
    const QString name = form.LListen.List.value().value(chosen);
    if (name == selectedName(root))
        return command.tell({.text = u"Diese Wiedergabeliste ist der Quellplayliste des markierten Soundtracks. "_s,
                             .title = form.Caption.value() + u' ',
                             .icon = MessageIcon::Critical});
    // A list that could not be opened leaves the tracks of the other one in sight: they are not its own.
    enableChoice(form, false);
    const bool opened = showTracks(root, command, chosen + 1);
    // The end of the program takes the dialog with it.
    if (command.ended() || !form.Visible.value())
        return;
    if (opened) {
        AddPlayEntrys(root, form.tTrackname.Tag, 0);
        // The read of a list without entries left the tracks out of sight.
        root.LListView2.Visible = true;
    }
    root.services.forms.unload(form);
}

} // namespace

Trackcopy::Trackcopy() : Form(u"Trackcopy"_s)
{
    Caption = u" Sounddatei kopieren"_s;
    LHinweis.Caption = u"Die ausgewählte Sounddatei in der markierten Wiedergabeliste verknüpfen."_s;
    BReady.Caption = u"&OK"_s;
    bAbbrechen.Caption = u"&Abbrechen"_s;
}

void setUpTrackcopy(Root& root)
{
    Trackcopy& form = *root.trackcopy;
    form.Load = [&root] { load(root); };
    const auto accept = [&root] { runCommand(root, Changes::Tracks, [&root] { BReady_Click(root); }); };
    form.BReady.Click = accept;
    form.LListen.DblClick = accept;
    form.bAbbrechen.Click = [&root, &form] {
        if (form.bAbbrechen.Enabled.value())
            root.services.forms.unload(form);
    };
}

void mnuCopyTrack_Click(Root& root)
{
    root.trackcopy->tTrackname.Caption = root.LListView2.subItem(root.LListView2.selectedRow(), TrackItem::Name);
    (void)Command(root).showModal(*root.trackcopy);
}

} // namespace orvantine
