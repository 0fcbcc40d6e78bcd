#include "metadata/TrackInformation.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/IniFiles.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "metadata/Mp3HeaderReader.h"
#include "metadata/frmID3.h"
#include "playback/Sequencing.h"
#include "search/Suchen.h"
#include "shell/FeatureTips.h"

#include <QLocale>

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void clearLabels(Root& root)
{
    for (Label* label :
         {&root.sArtist, &root.sTitle, &root.sAlbum, &root.sKommentar, &root.sBitrate, &root.sTrack, &root.sJahr})
        label->Caption = QString();
}

/// False where the library or the track's file is missing; told only in a visible window.
bool passesChecks(Root& root)
{
    Services& services = root.services;
    // Events are served while a tip or a box is up, so each step looks again.
    const auto seen = [&root] { return root.Visible.value(); };
    const auto errors = [&root] { return root.mnuErrorDisplay.Checked.value(); };
    const auto missing = [&root] {
        const int row = root.LListView2.selectedRow();
        return row > 0 && !Dateiexistenz::FileExists(root, root.LListView2.subItem(row, 3));
    };

    if (seen() && missing() && errors())
        ShowFeatureTip(root, 715);
    if (!Dateiexistenz::FileExists(root, FileDirPath::join(services.folders.program, u"Orvantine.dll"))) {
        if (seen())
            services.messages.show(u"Eine Systemkomponente für Mp3-Tag Informationen wurde nicht gefunden.    "_s,
                                   u" Fehlerhafte Systemdatei"_s, MessageIcon::Exclamation, MessageButtons::Ok);
        return false;
    }
    if (!missing())
        return true;
    if (seen() && errors() &&
        services.messages.show(u"Eine Sounddatei(en) befindet sich nicht mehr am ursprünglichen Speicherordner.    \n"
                               u"Möchten Sie die Eigenschaften aufrufen um den Quellordner anzupassen ?"_s,
                               u" Fehlerhafte Quelldatei(en)"_s, MessageIcon::Exclamation,
                               MessageButtons::OkCancel) == Answer::Ok &&
        root.mnuEigenschaften.Click)
        root.mnuEigenschaften.Click();
    return false;
}

/// Required: to tenths first and from there to a 16-bit number; a longer time fails and stays nought.
int roundedTwice(double seconds)
{
    const double tenths = std::floor(seconds * 10 + 0.5) / 10;
    const double whole = std::nearbyint(tenths);
    return whole <= std::numeric_limits<qint16>::max() ? static_cast<int>(whole) : 0;
}

/// "h:nn:ss"
QString timeOfDay(int seconds)
{
    return QString::number(seconds / 3600) + u':' + padded(seconds / 60 % 60, 2) + u':' + padded(seconds % 60, 2);
}

} // namespace

void ShowTrackInfo(Root& root, int, int)
{
    constexpr Twips SymbolAlone = 1560;
    constexpr Twips SymbolBesideText = 1260;
    constexpr Twips Margin = 1170;

    if (!root.suchen->Visible.value() && !passesChecks(root))
        return;

    clearLabels(root);
    if (root.LListView2.count() > 0)
        LoadMp3Info(root);
    root.services.events.yield();
    // Required: the library is asked twice for one selection.
    ReadMp3Header(root);

    root.sAnzeige[2].Caption = root.sArtist.Caption.value();
    root.sAnzeige[1].Caption = root.sTitle.Caption.value();
    root.pMpeg.Left = root.sAnzeige[5].Caption.value().isEmpty() ? SymbolAlone : SymbolBesideText;
    for (const int label : {1, 2})
        root.sAnzeige[label].Width = std::min(root.sAnzeige[label].Width.value(), root.xpFrame1.Width.value() - Margin);

    Timer2_Tick(root);
    root.services.events.yield();
}

void LoadMp3Info(Root& root)
{
    clearLabels(root);
    if (root.LListView2.count() == 0)
        return;
    root.CurrentMp3File = withoutQuotes(root.LListView2.subItem(root.LListView2.selectedRow(), 3));
    ReadMp3Header(root);
    root.services.events.yield();
}

void LoadMp3TagID(Root& root)
{
    ListView& tracks = root.LListView2;
    root.tagForm->Load();
    root.services.events.yield();
    root.tagForm->txtMp3File.Caption = tracks.subItem(tracks.selectedRow(), 3);
    root.services.events.yield();

    ShowTrackInfo(root, tracks.selectedRow(), 1);

    const QString name = root.sAnzeige[2].Caption.value() + u" - "_s + root.sAnzeige[1].Caption.value();
    IniFiles::WriteValue(root, databaseFile(root), u"TagInfo"_s, tracks.subItem(tracks.selectedRow(), 3), name);
    tracks.setSubItem(tracks.selectedRow(), 2, name);
    root.services.events.yield();
}

void MediaChange(Root& root)
{
    constexpr qsizetype UsefulTag = 10; // two empty items still give the three characters of " - "
    constexpr Twips Margin = 1150;

    const MediaPlayer& player = root.services.mediaplayer;
    const QString url = player.currentSourceURL();
    const QString stored =
        IniFiles::ReadValue(root, root.tDatenbank.Text.value() + u"Orvantine.dat"_s, u"TagInfo"_s, url);
    const QString name = FileDirPath::without(FileDirPath::FileNameOf(url), 4);
    if (name != root.tDateiname.Caption.value())
        root.pDateiname.Tag =
            QString::number(root.pDateiname.Tag.toDouble() + 0.5, 'f', QLocale::FloatingPointShortest);

    const QString tag = player.currentItemInfo(u"Artist"_s) + u" - "_s + player.currentItemInfo(u"Title"_s);
    if (tag.size() >= UsefulTag)
        root.tDateiname.Caption = tag;
    else
        root.tDateiname.Caption = stored.isEmpty() ? name : stored;

    root.pCopyStatus.Visible = false;
    root.pDateiname.Visible = true;
    root.services.events.yield();
    root.pDateiname.Width = root.Width.value() - Margin;
    root.pDateiname.Left = (root.Width.value() - root.pDateiname.Width.value()) / 2;
}

void GetPlayTimesOLD(Root& root)
{
    ListView& tracks = root.LListView2;
    const int row = tracks.selectedRow();
    if (tracks.subItem(row, 1).isEmpty())
        return;
    MediaPlayer& player = root.services.mediaInfo;
    const auto yieldThrice = [&root] {
        for (int i = 0; i < 3; ++i)
            root.services.events.yield();
    };

    player.setURL(tracks.subItem(row, 3));
    yieldThrice();
    const QString time = timeOfDay(roundedTwice(player.currentDuration()));
    tracks.setSubItem(row, 4, time);
    root.sAnzeige[0].Caption = time;
    player.close();
    yieldThrice();
}

void ShowProperties(Root& root, const QString& path)
{
    root.services.launcher.start(
        {.kind = LaunchKind::Properties, .command = u"properties "_s + path, .target = path, .arguments = {}});
}

} // namespace orvantine
