#include "metadata/ShowTrackInfo.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/FeatureTips.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "metadata/Mp3HeaderReader.h"
#include "metadata/SelectedTrack.h"
#include "metadata/TrackNames.h"
#include "metadata/frmID3.h"
#include "platform/FileDirPath.h"
#include "search/Suchen.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void clearLabels(Root& root)
{
    for (Label* label :
         {&root.sArtist, &root.sTitle, &root.sAlbum, &root.sKommentar, &root.sBitrate, &root.sTrack, &root.sJahr})
        label->Caption = QString();
}

bool isLibraryThere(const Root& root)
{
    return Dateiexistenz::FileExists(root, programFile(root, u"Orvantine.dll"_s));
}

bool isTrackMissing(const Root& root)
{
    return root.LListView2.selectedRow() > 0 && !Dateiexistenz::FileExists(root, selectedTrackPath(root));
}

/// False where the library or the track's file is missing; told only in a visible window.
bool passesChecks(Root& root, Command& command)
{
    // Events are served while a tip or a box is up, so each step looks again.
    const auto seen = [&root] { return root.Visible.value(); };
    const auto errors = [&root] { return root.mnuErrorDisplay.Checked.value(); };

    if (seen() && isTrackMissing(root) && errors() && !ShowFeatureTip(root, 715))
        return false;
    if (!isLibraryThere(root)) {
        if (seen())
            command.tell({.text = u"Eine Systemkomponente für Mp3-Tag Informationen wurde nicht gefunden.    "_s,
                          .title = u" Fehlerhafte Systemdatei"_s,
                          .icon = MessageIcon::Exclamation});
        return false;
    }
    if (!isTrackMissing(root))
        return true;
    if (seen() && errors() &&
        command.ask({.text = u"Eine Sounddatei(en) befindet sich nicht mehr am ursprünglichen Speicherordner.    \n"
                             u"Möchten Sie die Eigenschaften aufrufen um den Quellordner anzupassen ?"_s,
                     .title = u" Fehlerhafte Quelldatei(en)"_s,
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::OkCancel}) == Answer::Ok)
        root.mnuEigenschaften.Click();
    return false;
}

/// Required: to tenths first and from there to a 16-bit number; nothing for a time that does not fit.
std::optional<int> roundedTwice(double seconds)
{
    const double tenths = std::floor(seconds * 10 + 0.5) / 10;
    const double whole = std::nearbyint(tenths);
    return whole <= std::numeric_limits<qint16>::max() ? std::optional(static_cast<int>(whole)) : std::nullopt;
}

/// "h:nn:ss"
QString timeOfDay(int seconds)
{
    return QString::number(seconds / 3600) + u':' + padded(seconds / 60 % 60, 2) + u':' + padded(seconds % 60, 2);
}

void refresh(Root& root, Command& command)
{
    constexpr Twips SymbolAlone = 1560;
    constexpr Twips SymbolBesideText = 1260;
    constexpr Twips Margin = 1170;

    clearLabels(root);
    if (root.LListView2.count() > 0)
        LoadMp3Info(root);
    if (!command.yield())
        return;
    // Required: the library is asked twice for one selection.
    ReadMp3Header(root);

    root.sAnzeige[2].Caption = root.sArtist.Caption.value();
    root.sAnzeige[1].Caption = root.sTitle.Caption.value();
    root.pMpeg.Left = root.sAnzeige[5].Caption.value().isEmpty() ? SymbolAlone : SymbolBesideText;
    for (const int label : {1, 2})
        root.sAnzeige[label].Width = std::min(root.sAnzeige[label].Width.value(), root.xpFrame1.Width.value() - Margin);

    root.Timer2.Tick();
    command.lastYield();
}

} // namespace

void ShowTrackInfo(Root& root, int, int)
{
    Command command(root);
    if (root.suchen->Visible.value() || root.suchen->searching || passesChecks(root, command))
        refresh(root, command);
}

bool isAskedAbout(const Root& root)
{
    return root.Visible.value() &&
           (!isLibraryThere(root) || (root.mnuErrorDisplay.Checked.value() && isTrackMissing(root)));
}

void showSelectedTrack(Root& root)
{
    if (!isLibraryThere(root))
        return;
    Command command(root);
    if (Dateiexistenz::FileExists(root, selectedTrackPath(root)))
        return refresh(root, command);
    clearLabels(root);
    for (const int label : {0, 1, 2})
        root.sAnzeige[label].Caption = QString();
    root.Timer2.Tick();
    command.lastYield();
}

void LoadMp3Info(Root& root)
{
    clearLabels(root);
    if (root.LListView2.count() == 0)
        return;
    root.CurrentMp3File = FileDirPath::withoutQuotes(selectedTrackPath(root));
    ReadMp3Header(root);
    Command(root).lastYield();
}

void LoadMp3TagID(Root& root)
{
    Command command(root);
    TrackList::Hold hold = root.trackList.hold();
    root.tagForm->Load();
    if (!command.yield())
        return;
    root.tagForm->txtMp3File.Caption = selectedTrackPath(root);
    if (!command.yield())
        return;

    ShowTrackInfo(root, root.LListView2.selectedRow(), 1);
    // The labels are those of a track of another list.
    if (command.ended() || !hold.inSight())
        return;

    const QString name = nameByLabels(root);
    storeTrackName(root, databaseFile(root), selectedTrackPath(root), name);
    hold.setName(root.LListView2.selectedRow(), name);
    command.lastYield();
}

void GetPlayTimesOLD(Root& root)
{
    const int row = root.LListView2.selectedRow();
    if (root.LListView2.subItem(row, TrackItem::Number).isEmpty())
        return;
    Command command(root);
    TrackList::Hold hold = root.trackList.hold();
    MediaPlayer& player = root.services.mediaInfo;
    const auto yieldThrice = [&command] { return command.yield() && command.yield() && command.yield(); };

    player.setURL(selectedTrackPath(root));
    if (!yieldThrice())
        return;
    if (const std::optional<int> seconds = roundedTwice(player.currentDuration())) {
        const QString time = timeOfDay(*seconds);
        hold.setTime(row, time);
        root.sAnzeige[0].Caption = time;
    }
    player.close();
    (void)yieldThrice();
}

} // namespace orvantine
