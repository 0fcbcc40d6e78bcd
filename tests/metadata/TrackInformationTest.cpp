#include "MetadataTest.h"
#include "metadata/Mp3HeaderReader.h"
#include "metadata/ShowTrackInfo.h"

#include "platform/FileDirPath.h"
#include "playback/MediaChange.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class TrackInformation : public MetadataTest
{
protected:
    TrackInformation()
    {
        root().Visible = true;
        root().mnuErrorDisplay.Checked = true;
    }
    [[nodiscard]] QString library() const { return desktop.folders.program + u"/Orvantine.dll"_s; }
};

const FakeTrack Tagged{.title = u"Titel"_s, .artist = u"Interpret"_s};
const char* const MissingSound = "Eine Sounddatei(en) befindet sich nicht mehr am ursprünglichen Speicherordner.    \n"
                                 "Möchten Sie die Eigenschaften aufrufen um den Quellordner anzupassen ?";

} // namespace

TEST_F(TrackInformation, ShowsTheSelectedTrackAndAsksTheLibraryTwice)
{
    addTrack(u"a.mp3"_s, Tagged);
    ShowTrackInfo(root(), 1, 1);
    EXPECT_EQ("Interpret\nTitel\n\n\n\n0\n128\n00:01:00", labels());
    EXPECT_EQ(u"Interpret"_s, root().sAnzeige[2].Caption.value());
    EXPECT_EQ(u"Titel"_s, root().sAnzeige[1].Caption.value());
    EXPECT_EQ(u"128"_s, root().sAnzeige[5].Caption.value());
    EXPECT_EQ("tags.Mp3FileInfo \"/music/a.mp3\"\ntags.Mp3FileInfo \"/music/a.mp3\"", lines(libraryCalls()));
    EXPECT_EQ("", boxes());
}

TEST_F(TrackInformation, TheTwoArgumentsAreNotUsed)
{
    addTrack(u"a.mp3"_s, Tagged);
    addTrack(u"b.mp3"_s, {.title = u"Zwei"_s, .artist = u"B"_s});
    tracks().select(1);
    const std::pair<int, int> cases[] = {{1, 1}, {2, 0}, {0, 7}, {-5, -1}, {32767, 2}};
    for (const auto& [index, flag] : cases) {
        SCOPED_TRACE(index);
        root().sAnzeige[1].Caption = QString();
        const int before = reads();
        ShowTrackInfo(root(), index, flag);
        EXPECT_EQ(u"Titel"_s, root().sAnzeige[1].Caption.value());
        EXPECT_EQ(2, reads() - before);
    }
}

TEST_F(TrackInformation, AnEmptyTrackListClearsTheLabelsAndStillRunsTheReader)
{
    root().sTitle.Caption = u"alt"_s;
    root().sTrack.Caption = u"alt"_s;
    root().sAnzeige[0].Visible = false;
    ShowTrackInfo(root(), 0, 0);
    EXPECT_EQ(u""_s, root().sTitle.Caption.value());
    // What the reader alone sets.
    EXPECT_EQ(u"0"_s, root().sTrack.Caption.value());
    EXPECT_TRUE(root().sAnzeige[0].Visible.value());
    EXPECT_EQ("", lines(libraryCalls())) << "there is no track to ask for";
}

TEST_F(TrackInformation, ATrackThatIsSelectedByTheWayIsShownWithoutAWord)
{
    addTrack(u"a.mp3"_s, Tagged);
    ShowTrackInfo(root(), 1, 1);
    addTrack(u"b.mp3"_s, {.title = u"Zwei"_s, .artist = u"B"_s});
    showSelectedTrack(root());
    EXPECT_EQ("B\nZwei\n\n\n\n0\n128\n00:01:00", labels());
    EXPECT_EQ(u"Zwei"_s, root().sAnzeige[1].Caption.value());
    addRow(music(u"weg.mp3"_s));
    showSelectedTrack(root());
    EXPECT_EQ("\n\n\n\n\n\n\n", labels());
    EXPECT_EQ(u""_s, root().sAnzeige[1].Caption.value());
    EXPECT_EQ(u""_s, root().sAnzeige[2].Caption.value());
    EXPECT_EQ("", boxes());

    tracks().select(1);
    desktop.disk().remove(library());
    const int before = reads();
    showSelectedTrack(root());
    EXPECT_EQ(before, reads());
    EXPECT_EQ("", boxes());
}

TEST_F(TrackInformation, WithoutTheLibrarysFileARefreshStopsWithTheMessage)
{
    addTrack(u"a.mp3"_s, Tagged);
    desktop.disk().remove(library());
    desktop.messages.answer(Answer::Ok, u" Fehlerhafte Systemdatei"_s,
                            u"Eine Systemkomponente für Mp3-Tag Informationen wurde nicht gefunden.    "_s);
    ShowTrackInfo(root(), 1, 1);
    EXPECT_EQ(0, reads());
    ASSERT_EQ(1U, desktop.messages.shown().size());
    EXPECT_EQ(MessageIcon::Exclamation, desktop.messages.shown()[0].icon);
    EXPECT_EQ(MessageButtons::Ok, desktop.messages.shown()[0].buttons);
}

TEST_F(TrackInformation, WithoutTheLibrarysFileAHiddenWindowStaysSilent)
{
    addTrack(u"a.mp3"_s, Tagged);
    desktop.disk().remove(library());
    root().Visible = false;
    ShowTrackInfo(root(), 1, 1);
    EXPECT_EQ(0, reads());
    EXPECT_EQ("", boxes());
}

TEST_F(TrackInformation, AMissingTrackAsksForItsFolderAndStops)
{
    addRow(music(u"weg.mp3"_s));
    int opened = 0;
    root().mnuEigenschaften.Click = [&opened] { ++opened; };
    for (const Answer answer : {Answer::Ok, Answer::Cancel}) {
        desktop.messages.answer(answer, u" Fehlerhafte Quelldatei(en)"_s, QString::fromUtf8(MissingSound));
        ShowTrackInfo(root(), 1, 1);
    }
    EXPECT_EQ(1, opened);
    EXPECT_EQ(0, reads());
    EXPECT_EQ(MessageIcon::Exclamation, desktop.messages.shown()[0].icon);
    EXPECT_EQ(MessageButtons::OkCancel, desktop.messages.shown()[0].buttons);
}

TEST_F(TrackInformation, AMissingTrackIsNoWordWorthWhereErrorsAreOffOrNobodyLooks)
{
    addRow(music(u"weg.mp3"_s));
    root().mnuErrorDisplay.Checked = false;
    ShowTrackInfo(root(), 1, 1);
    root().mnuErrorDisplay.Checked = true;
    root().Visible = false;
    ShowTrackInfo(root(), 1, 1);
    EXPECT_EQ("", boxes());
    EXPECT_EQ(0, reads());
}

TEST_F(TrackInformation, TheChecksStaySilentWhileTheSearchIsUp)
{
    addRow(music(u"weg.mp3"_s));
    desktop.disk().remove(library());
    root().suchen->Visible = true;
    ShowTrackInfo(root(), 1, 1);
    EXPECT_EQ(2, reads());
    EXPECT_EQ("", boxes());
}

TEST_F(TrackInformation, QuotesAreTakenForTheRememberedFileAndPassedToTheLibrary)
{
    addRow(u"\"/music/a.mp3\""_s);
    LoadMp3Info(root());
    EXPECT_EQ(u"/music/a.mp3"_s, root().CurrentMp3File);
    EXPECT_EQ("tags.Mp3FileInfo \"\\\"/music/a.mp3\\\"\"", lines(libraryCalls()));
    EXPECT_EQ(u"a"_s, FileDirPath::withoutQuotes(u"\"a"_s));
    EXPECT_EQ(u"a"_s, FileDirPath::withoutQuotes(u"a\""_s));
    EXPECT_EQ(u""_s, FileDirPath::withoutQuotes(u"\""_s));
}

TEST_F(TrackInformation, AQuoteGoesOnlyFromTheEndThatHasOne)
{
    const std::pair<QString, const char*> cases[] = {{u"\"/music/a.mp3"_s, "/music/a.mp3"},
                                                     {u"/music/a.mp3\""_s, "/music/a.mp3"},
                                                     {u"/music/\"a\".mp3"_s, "/music/\"a\".mp3"},
                                                     {u"\"\"/music/a.mp3\"\""_s, "\"/music/a.mp3\""}};
    for (const auto& [path, remembered] : cases) {
        tracks().clear();
        addRow(path);
        LoadMp3Info(root());
        EXPECT_EQ(remembered, root().CurrentMp3File.toStdString()) << path.toStdString();
    }
}

TEST_F(TrackInformation, WithoutRowsTheLabelsAreClearedAndNothingIsRead)
{
    Root& r = root();
    const std::initializer_list<Label*> labels = {&r.sArtist,  &r.sTitle, &r.sAlbum, &r.sKommentar,
                                                  &r.sBitrate, &r.sTrack, &r.sJahr};
    for (Label* label : labels)
        label->Caption = u"alt"_s;
    r.CurrentMp3File = u"/music/last.mp3"_s;
    LoadMp3Info(r);
    for (Label* label : labels)
        EXPECT_EQ("", label->Caption.value().toStdString()) << label->name.toStdString();
    EXPECT_EQ(0, reads());
    EXPECT_EQ(u"/music/last.mp3"_s, r.CurrentMp3File);
}

TEST_F(TrackInformation, EachStepLooksAtTheSelectedRowAnew)
{
    addTrack(u"a.mp3"_s, Tagged);
    addTrack(u"b.mp3"_s, {.title = u"Zwei"_s, .artist = u"B"_s});
    const auto selectInTheYield = [this] {
        tracks().select(1);
        desktop.events().after(std::chrono::milliseconds{0}, [this] { tracks().select(2); });
    };
    selectInTheYield();
    ShowTrackInfo(root(), 1, 1);
    EXPECT_EQ("tags.Mp3FileInfo \"/music/a.mp3\"\ntags.Mp3FileInfo \"/music/b.mp3\"", lines(libraryCalls()));
    EXPECT_EQ(u"Zwei"_s, root().sAnzeige[1].Caption.value());

    selectInTheYield();
    LoadMp3TagID(root());
    EXPECT_EQ(music(u"b.mp3"_s), root().tagForm->txtMp3File.Caption.value());
    EXPECT_EQ(u"Name"_s, name(1));
    EXPECT_EQ(u"B - Zwei"_s, name(2));
    EXPECT_EQ(u"B - Zwei"_s, stored(music(u"b.mp3"_s)));
    EXPECT_EQ(u""_s, stored(music(u"a.mp3"_s)));
}

TEST_F(TrackInformation, TheSymbolMovesAsideForTheRate)
{
    addTrack(u"a.mp3"_s, Tagged);
    root().sAnzeige[5].Caption = QString();
    ShowTrackInfo(root(), 1, 1);
    EXPECT_EQ(1560, root().pMpeg.Left.value());
    ShowTrackInfo(root(), 1, 1);
    EXPECT_EQ(1260, root().pMpeg.Left.value());
}

TEST_F(TrackInformation, WideLabelsAreLimitedToTheFrame)
{
    addTrack(u"a.mp3"_s, Tagged);
    root().xpFrame1.Width = 5000;
    root().sAnzeige[1].Width = 9000;
    root().sAnzeige[2].Width = 100;
    ShowTrackInfo(root(), 1, 1);
    EXPECT_EQ(3830, root().sAnzeige[1].Width.value());
    EXPECT_EQ(100, root().sAnzeige[2].Width.value());
}

TEST_F(TrackInformation, LoadMp3TagIDStoresTheNameAndShowsIt)
{
    addTrack(u"a.mp3"_s, Tagged);
    LoadMp3TagID(root());
    EXPECT_EQ(u"Interpret - Titel"_s, stored(music(u"a.mp3"_s)));
    EXPECT_EQ(u"Interpret - Titel"_s, name(1));
    EXPECT_EQ(music(u"a.mp3"_s), root().tagForm->txtMp3File.Caption.value());
    EXPECT_EQ("", calls({u"Forms.show frmID3V1"_s, u"Forms.showModal frmID3V1"_s}));
}

TEST_F(TrackInformation, ATrackWithNeitherArtistNorTitleStoresTheDash)
{
    addTrack(u"song.flac"_s, {});
    LoadMp3TagID(root());
    EXPECT_TRUE(bytes(data() + u"Orvantine.dat"_s).contains("/music/song.flac= - \r\n"))
        << bytes(data() + u"Orvantine.dat"_s).toStdString();
    EXPECT_EQ(u" - "_s, name(1));
}

class PlayedTrack : public TrackInformation
{
protected:
    /// Another item is the current one, its data known.
    void play(const QString& file)
    {
        put(music(file), "sound");
        desktop.mediaplayer().MediaChange = [] {};
        desktop.mediaplayer().setURL(music(file));
        desktop.mediaplayer().pretendPlaying();
    }
    [[nodiscard]] QString shown() { return root().tDateiname.Caption.value(); }
    void store(const QString& file, const QString& value)
    {
        desktop.profiles().setValue(data() + u"Orvantine.dat"_s, u"TagInfo"_s, music(file), value);
    }
};

TEST_F(PlayedTrack, WithNothingElseKnownTheFileNameIsShownLessFourCharacters)
{
    play(u"song.mp3"_s);
    MediaChange(root());
    EXPECT_EQ(u"song"_s, shown());
    play(u"track.flac"_s);
    MediaChange(root());
    EXPECT_EQ(u"track."_s, shown());
}

TEST_F(PlayedTrack, AStoredNameWinsOverTheFileName)
{
    play(u"song.mp3"_s);
    store(u"song.mp3"_s, u"Interpret - Titel"_s);
    MediaChange(root());
    EXPECT_EQ(u"Interpret - Titel"_s, shown());
}

TEST_F(PlayedTrack, ADashAloneIsAStoredName)
{
    play(u"song.mp3"_s);
    store(u"song.mp3"_s, u" - "_s);
    MediaChange(root());
    // The form of the file drops the blanks around a value.
    EXPECT_EQ(u"-"_s, shown());
}

TEST_F(PlayedTrack, ATagOfTenCharactersWinsOverBoth)
{
    play(u"song.mp3"_s);
    store(u"song.mp3"_s, u"stored"_s);
    desktop.mediaplayer().setItemInfo(u"Artist"_s, u"abc"_s);
    desktop.mediaplayer().setItemInfo(u"Title"_s, u"def"_s);
    MediaChange(root());
    EXPECT_EQ(u"stored"_s, shown());
    desktop.mediaplayer().setItemInfo(u"Title"_s, u"defg"_s);
    MediaChange(root());
    EXPECT_EQ(u"abc - defg"_s, shown());
}

TEST_F(PlayedTrack, EachNotificationOfAnotherNameCountsOneHalf)
{
    play(u"song.mp3"_s);
    root().pDateiname.Tag = u"3"_s;
    MediaChange(root());
    EXPECT_EQ(u"3.5"_s, root().pDateiname.Tag);
    // The name is shown by now.
    MediaChange(root());
    EXPECT_EQ(u"3.5"_s, root().pDateiname.Tag);
    store(u"song.mp3"_s, u"stored"_s);
    MediaChange(root());
    EXPECT_EQ(u"3.5"_s, root().pDateiname.Tag);
    MediaChange(root());
    EXPECT_EQ(u"4"_s, root().pDateiname.Tag);
}

TEST_F(PlayedTrack, TheCountKeepsItsHalfHoweverFarItGoes)
{
    for (const QString& before : {u"100000"_s, u"9999999"_s}) {
        play(u"song.mp3"_s);
        root().tDateiname.Caption = QString();
        root().pDateiname.Tag = before;
        MediaChange(root());
        EXPECT_EQ((before + u".5"_s).toStdString(), root().pDateiname.Tag.toStdString());
    }
}

TEST_F(PlayedTrack, TheHiddenPlayerNotifiesToo)
{
    play(u"song.mp3"_s);
    desktop.mediaInfo().MediaChange();
    EXPECT_EQ(u"song"_s, shown());
    EXPECT_EQ(u"0.5"_s, root().pDateiname.Tag);
}

// Required: only what is written follows the name of the program's file; what plays is looked up under the fixed one.
TEST_F(PlayedTrack, TheStemOfTheProgramIsForWritingOnly)
{
    desktop.context.stem = u"Anders"_s;
    desktop.newProcess();
    start();
    addTrack(u"song.mp3"_s, Tagged);
    LoadMp3TagID(root());
    EXPECT_EQ(u"Interpret - Titel"_s,
              desktop.profiles().value(data() + u"Anders.dat"_s, u"TagInfo"_s, music(u"song.mp3"_s)));
    EXPECT_EQ(u""_s, stored(music(u"song.mp3"_s)));

    play(u"song.mp3"_s);
    MediaChange(root());
    EXPECT_EQ(u"song"_s, shown());
    store(u"song.mp3"_s, u"stored"_s);
    MediaChange(root());
    EXPECT_EQ(u"stored"_s, shown());
}

TEST_F(PlayedTrack, TheNameTakesThePlaceOfTheStatusInTheMiddleOfTheWindow)
{
    play(u"song.mp3"_s);
    root().pCopyStatus.Visible = true;
    root().pDateiname.Visible = false;
    root().Width = 12000;
    MediaChange(root());
    EXPECT_FALSE(root().pCopyStatus.Visible.value());
    EXPECT_TRUE(root().pDateiname.Visible.value());
    EXPECT_EQ(10850, root().pDateiname.Width.value());
    EXPECT_EQ(575, root().pDateiname.Left.value());
}

TEST_F(TrackInformation, TheHiddenPlayerMeasuresATrackWithALength)
{
    addTrack(u"a.mp3"_s, Tagged);
    GetPlayTimesOLD(root());
    EXPECT_EQ("", calls({u"MediaInfo"_s}));
    tracks().setSubItem(1, 1, u"x"_s);
    desktop.mediaInfo().setDuration(3725.4);
    desktop.mediaInfo().MediaChange = [this] { desktop.mediaInfo().pretendPlaying(); };
    GetPlayTimesOLD(root());
    EXPECT_EQ(tracks().subItem(1, 4), root().sAnzeige[0].Caption.value());
    EXPECT_EQ("1:02:05", tracks().subItem(1, 4).toStdString());
    EXPECT_EQ("MediaInfo.URL = /music/a.mp3\nMediaInfo.close", calls({u"MediaInfo"_s}));
}

TEST_F(TrackInformation, AMeasuredLengthIsRoundedToTenthsAndThenToSeconds)
{
    addTrack(u"a.mp3"_s, Tagged);
    tracks().setSubItem(1, 1, u"x"_s);
    desktop.mediaInfo().MediaChange = [this] { desktop.mediaInfo().pretendPlaying(); };
    const std::pair<double, const char*> cases[] = {
        {1.46, "0:00:02"}, {0.46, "0:00:00"}, {2.46, "0:00:02"}, {59.6, "0:01:00"}, {32767, "9:06:07"}};
    for (const auto& [seconds, shown] : cases) {
        desktop.mediaInfo().setDuration(seconds);
        GetPlayTimesOLD(root());
        EXPECT_EQ(shown, tracks().subItem(1, 4).toStdString()) << seconds;
        EXPECT_EQ(shown, root().sAnzeige[0].Caption.value().toStdString()) << seconds;
    }
}

TEST_F(TrackInformation, ALengthThatDoesNotFitLeavesCellAndLabelAndClosesAllTheSame)
{
    addTrack(u"a.mp3"_s, Tagged);
    tracks().setSubItem(1, 1, u"x"_s);
    tracks().setSubItem(1, 4, u"a.mp3"_s);
    root().sAnzeige[0].Caption = u"00:01:00"_s;
    desktop.mediaInfo().MediaChange = [this] { desktop.mediaInfo().pretendPlaying(); };
    for (const double seconds : {32768.0, 40000.0, 1e12}) {
        desktop.mediaInfo().setDuration(seconds);
        desktop.log.take();
        const int before = desktop.events().yields();
        GetPlayTimesOLD(root());
        EXPECT_EQ("a.mp3", tracks().subItem(1, 4).toStdString()) << seconds;
        EXPECT_EQ("00:01:00", root().sAnzeige[0].Caption.value().toStdString()) << seconds;
        EXPECT_EQ("MediaInfo.URL = /music/a.mp3\nMediaInfo.close", calls({u"MediaInfo"_s}));
        EXPECT_EQ(6, desktop.events().yields() - before);
    }
}

TEST_F(TrackInformation, TheMeasuringYieldsThreeTimesBeforeAndAfter)
{
    addTrack(u"a.mp3"_s, Tagged);
    tracks().setSubItem(1, 1, u"x"_s);
    int opened = -1;
    int measured = -1;
    desktop.mediaInfo().MediaChange = [&] { opened = desktop.events().yields(); };
    const auto watch = root().sAnzeige[0].Caption.addNotifier([&] { measured = desktop.events().yields(); });
    root().sAnzeige[0].Caption = u"alt"_s;
    GetPlayTimesOLD(root());
    EXPECT_EQ(3, measured - opened);
    EXPECT_EQ(3, desktop.events().yields() - measured);
}

TEST_F(TrackInformation, ShowPropertiesAsksForTheSheetOfTheFile)
{
    addTrack(u"a.mp3"_s, Tagged);
    addTrack(u"b.mp3"_s, Tagged);
    root().mnuDateiEigenschaften.Click();
    tracks().select(1);
    root().mnuFileProperties.Click();
    EXPECT_EQ("launcher.start properties command \"properties /music/b.mp3\" target \"/music/b.mp3\"\n"
              "launcher.start properties command \"properties /music/a.mp3\" target \"/music/a.mp3\"",
              calls({u"launcher"_s}));
}

class DesignTime : public DesktopTest
{
};

TEST_F(DesignTime, TheFixedCaptionsOfTheTrackDisplay)
{
    EXPECT_EQ(u"Titel:"_s, root().sAnzeige[3].Caption.value());
    EXPECT_EQ(u"Artist:"_s, root().sAnzeige[4].Caption.value());
    EXPECT_EQ(u"0 kBit (VBR)"_s, root().sAnzeige[5].Caption.value());
}

TEST_F(TrackInformation, LoadMp3TagIDAsksTheLibraryOnceForTheDialogAndTwiceForTheLabels)
{
    addTrack(u"a.mp3"_s, Tagged);
    LoadMp3TagID(root());
    EXPECT_EQ("tags.Mp3FileInfo \"/music/a.mp3\"\ntags.Mp3FileInfo \"/music/a.mp3\"\ntags.Mp3FileInfo \"/music/a.mp3\"",
              lines(libraryCalls()));
}

} // namespace orvantine::fake
