#include "app/Root.h"
#include "metadata/mnuSetTagName.h"
#include "operations/mnuFileKill.h"
#include "operations/mnuMoveEntry.h"
#include "operations/mnuSortierung.h"
#include "playback/PlayerControl.h"
#include "shell/CommandTable.h"
#include "transfer/Trackcopy.h"

namespace orvantine {

namespace {

/// All but its place and its caption a row has from the command that it stands for.
void takeFromTwin(CommandRow& row, const std::vector<CommandRow>& bar)
{
    for (const CommandRow& twin : bar) {
        if (twin.item != row.twin)
            continue;
        row.run = twin.run;
        row.index = twin.index;
        row.changes = twin.changes;
        row.tip = twin.tip;
        row.shownTip = twin.shownTip;
        row.icon = twin.icon;
    }
}

} // namespace

std::vector<CommandRow> popupRows(Root& r)
{
    std::vector<CommandRow> rows{
        {.level = 0, .item = &r.mnuSpecial, .caption = u"Spezial ", .start = Start::Hidden, .shown = Shown::Submenu},
        {.level = 1,
         .item = &r.mnuSpecials[1],
         .caption = u"Soundtrack abspielen ",
         .run = mnuSpecials_Click,
         .index = 1,
         .icon = u"media-playback-start"},
        {.level = 1,
         .item = &r.mnuSpecials[2],
         .caption = u"Soundtrack stoppen ",
         .run = mnuSpecials_Click,
         .index = 2,
         .icon = u"media-playback-stop"},
        {.level = 1,
         .item = &r.mnuFileProperties,
         .caption = u"&Eigenschaften",
         .shown = Shown::NeedsPlaylist,
         .twin = &r.mnuDateiEigenschaften},
        {.level = 1,
         .item = &r.mnxVerschiebung,
         .caption = u"T&rack verschieben ",
         .shown = Shown::Submenu,
         .twin = &r.mnuMoveEntrys},
        {.level = 2, .item = &r.mnxVerschieben[1], .caption = u"Aufwärts ", .twin = &r.mnuMoveEntry[1]},
        {.level = 2, .item = &r.mnxVerschieben[2], .caption = u"Abwärts ", .twin = &r.mnuMoveEntry[2]},
        {.level = 1, .item = &r.Trennung82, .caption = Line},
        {.level = 1,
         .item = &r.mnxBearbeiten[0],
         .caption = u"&Win-Mediaplayer senden ",
         .shown = Shown::Submenu,
         .twin = &r.mnuOpenMediaplayer},
        {.level = 2,
         .item = &r.mnxBearbeitenEx[1],
         .caption = u"&Sounddatei ... ",
         .shown = Shown::NeedsPlaylist,
         .twin = &r.mnuOpenMediaplayerEx[1]},
        {.level = 2,
         .item = &r.mnxBearbeitenEx[2],
         .caption = u"&Playliste ... ",
         .shown = Shown::NeedsPlaylist,
         .twin = &r.mnuOpenMediaplayerEx[2]},
        {.level = 1,
         .item = &r.mnxBearbeiten[1],
         .caption = u"&Eingangsordner öffnen ... ",
         .shown = Shown::NeedsPlaylist,
         .twin = &r.mnuEingangsordner},
        {.level = 1,
         .item = &r.mnxBearbeiten[2],
         .caption = u"&Kopiere Trackinformation ",
         .shown = Shown::NeedsPlaylist,
         .twin = &r.mnuCopyTrack},
        {.level = 1,
         .item = &r.mnxBearbeiten[3],
         .caption = u"&Filename als Soundname ",
         .shown = Shown::NeedsPlaylist,
         .twin = &r.mnuSetFileName},
        {.level = 1,
         .item = &r.mnxBearbeiten[4],
         .caption = u"&Tag-ID als Soundname ",
         .shown = Shown::NeedsPlaylist,
         .twin = &r.mnuSetTagName},
        {.level = 1, .item = &r.mnxBearbeiten[5], .caption = u"&Mp3-Tag bearbeiten ... ", .twin = &r.mnuGetIDTag},
        {.level = 1, .item = &r.mnxBearbeiten[6], .caption = u"&Sounddatei entfernen ", .twin = &r.mnuFileKill},
        {.level = 1, .item = &r.mnxSpecials[1], .caption = u"&Namen sortieren ", .twin = &r.mnuSortierung[1]},
        {.level = 1, .item = &r.mnxSpecials[2], .caption = u"&Dateinamen sortieren ", .twin = &r.mnuSortierung[2]},
        {.level = 1, .item = &r.mnxSpecials[3], .caption = u"N&ummer sortieren ", .twin = &r.mnuSortierung[3]},
    };
    const std::vector<CommandRow> bar = barRows(r);
    for (CommandRow& row : rows)
        if (row.twin != nullptr)
            takeFromTwin(row, bar);
    return rows;
}

} // namespace orvantine
