#include "runner/Runner.h"
#include "runner/Diff.h"
#include "runner/Run.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvantine::scenario {

using namespace Qt::StringLiterals;

namespace {

FileResult run(const char* text)
{
    return runFile(u"f"_s, text);
}

std::string printed(const FileResult& result)
{
    return result.texts.join(u'\n').toStdString();
}

/// What is printed but the line that names the failed scenario.
std::string mistakes(const char* text)
{
    FileResult result = run(text);
    EXPECT_EQ(result.failed, 1);
    QStringList rest;
    for (const QString& line : result.texts)
        if (!line.contains(u": scenario "_s))
            rest += line;
    return rest.join(u'\n').toStdString();
}

std::string words(const QString& line)
{
    QString error;
    const std::optional<QList<Word>> read = wordsOf(line, &error);
    if (!read)
        return error.toStdString();
    QStringList parts;
    for (const Word& word : *read)
        parts += rendered(word);
    return parts.join(u'|').toStdString();
}

} // namespace

TEST(Words, BareWordsKeepTheirBackslashes)
{
    EXPECT_EQ(words(u"file C:\\M\\neu.mp3 {data}/a"_s), R"(file|C:\M\neu.mp3|{data}/a)");
}

TEST(Words, DoubleQuotesTakeEscapesAndSingleQuotesTakeNone)
{
    EXPECT_EQ(words(u"\"a\\r\\n\\x41\\\\\\\"\\{ b\" 'C:\\new' ''"_s), R"("a\r\nA\\\"\{ b"|"C:\\new"|"")");
}

TEST(Words, BytesBeyondTextAreKept)
{
    QString error;
    const std::optional<QList<Word>> read = wordsOf(u"\"\\xFC\\x00ü\""_s, &error);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->first().parts.first().bytes, QByteArray("\xFC\0\xC3\xBC", 4));
}

TEST(Words, MistakesAreTold)
{
    EXPECT_EQ(words(u"a \"b"_s), "a text is not closed by a double quote");
    EXPECT_EQ(words(u"a 'b"_s), "a text is not closed by a single quote");
    EXPECT_EQ(words(u"\"a\"b"_s), "a blank is missing behind a quoted text");
    EXPECT_EQ(words(u"\"\\q\""_s), "unknown escape: there are \\r \\n \\t \\\\ \\\" \\{ and \\xHH");
    EXPECT_NE(words(u"{Nein"_s).find("begins a placeholder"), std::string::npos);
}

TEST(Diff, TellsMissingAndAdditionalLines)
{
    EXPECT_EQ(difference({u"a"_s, u"b"_s, u"c"_s}, {u"a"_s, u"c"_s, u"d"_s}).join(u'\n').toStdString(),
              "  a\n- b\n  c\n+ d");
}

TEST(Runner, AScenarioWithoutMistakesPassesSilently)
{
    const FileResult result = run("scenario eins\nstart\nexpect tDatum.Caption \"20.11.2026\"\n"
                                  "scenario zwei\n# nothing\n");
    EXPECT_EQ(printed(result), "");
    EXPECT_EQ(result.scenarios, 2);
    EXPECT_EQ(result.failed, 0);
}

TEST(Runner, MistakesOfFormAreAllToldWithTheirLinesAndNothingRuns)
{
    const FileResult result = run("press mnuX\nscenario eins\nprint clock\nprss mnuLaden\nstart \"x\nwait\nexpect nix\n"
                                  "expect rows LListView1\n");
    EXPECT_EQ(printed(result), "f:1: a command stands before the first \"scenario TITLE\"\n"
                               "f:4: there is no command \"prss\"\n"
                               "f:5: a text is not closed by a double quote\n"
                               "f:6: the form is: wait NUMBER [ms|s]\n"
                               "f:7: there is nothing called \"nix\" to expect or print\n"
                               "f:8: the block that begins here has no \"end\"");
    EXPECT_EQ(result.failed, 1);
}

TEST(Runner, AWrongExpectationFailsIsShownAsADifferenceAndTheScenarioGoesOn)
{
    EXPECT_EQ(mistakes("scenario eins\nstart\nexpect forms\nRoot\nSuchen\nend\nexpect tDatum.Caption \"heute\"\n"),
              "f:3: forms is not as expected (- expected, + found)\n"
              "      Root\n"
              "    - Suchen\n"
              "    + Dialoge\n"
              "f:7: tDatum.Caption is not as expected (- expected, + found)\n"
              "    - \"heute\"\n"
              "    + \"20.11.2026\"");
}

TEST(Runner, ABoxThatNobodyScriptedFails)
{
    EXPECT_EQ(mistakes("scenario eins\nfont \"OCR B\" unknown\nstart\nexpect ended no\n"),
              "f:3: a box came up that nobody scripted: title \" Komponente hinzufügen\", text \"Die Schriftart ''OCR "
              "B'' konnte im Windows-Ordner nicht gefunden werden.    \\nMöchten Sie diese Schriftart jetzt in Windows "
              "hinzufügen und registrieren ?\", icon exclamation, buttons ok-cancel");
}

TEST(Runner, AnAnswerThatNoBoxAskedForFails)
{
    EXPECT_EQ(mistakes("scenario eins\nanswer yes\nstart\n"), "f:3: no box asked for the answer yes");
}

TEST(Runner, AScriptedBoxIsComparedWithItsTitleAndText)
{
    EXPECT_NE(mistakes("scenario eins\nfont \"OCR B\" unknown\nanswer cancel title \"Komponente\"\nstart\n")
                  .find("a box with the title \" Komponente hinzufügen\" came up, \"Komponente\" was scripted"),
              std::string::npos);
}

TEST(Runner, NamesThatDoNotExistEndTheScenario)
{
    const struct
    {
        const char* line;
        const char* text;
    } cases[] = {
        {"press mnuGibtEsNicht", "f:3: there is no control \"mnuGibtEsNicht\""},
        {"press mnuHandling(9)", "f:3: there is no control \"mnuHandling(9)\""},
        {"press Suche.mnuLaden", "f:3: there is no form \"Suche\""},
        {"click pSoundPlayer 3", "f:3: only a list with rows has a row to click"},
        {"click LListView1 3", "f:3: LListView1 has no row 3"},
        {"expect tDatum.Farbe rot", "f:3: tDatum has no property \"Farbe\"; there are: Caption, Enabled, ForeColor, "
                                    "Height, Left, Tag, ToolTipText, Top, Visible, Width"},
        {"file {nix}/a", "f:3: there is no placeholder {nix}"},
        {"folder D:\\M", "f:3: D:\\M lies on a drive that is not mapped"},
        {"answer vielleicht", "f:3: vielleicht is not one of: ok, cancel, abort, retry, ignore, yes, no"},
        {"print calls nix", nullptr},
        {"while modal Info\ncodepage 1252\npress BAbbrechen\nend\npress mnuInfo", "f:4: this cannot stand in a block"},
    };
    for (const auto& one : cases) {
        const std::string text = std::string("scenario eins\nstart\n") + one.line + "\npress auchNicht\n";
        const std::string found = mistakes(text.c_str());
        if (one.text != nullptr)
            EXPECT_EQ(found, one.text);
        else
            EXPECT_NE(found.find("f:3: there are no calls of the kind \"nix\""), std::string::npos) << found;
    }
}

TEST(Runner, WhatAUserCannotReachIsNotPressed)
{
    EXPECT_EQ(mistakes("scenario eins\nstart\npress mnuLaden\n"), "f:3: mnuLaden is hidden");
    EXPECT_EQ(mistakes("scenario eins\nstart\npress pPausePlayer\n"), "f:3: pPausePlayer is disabled");
    EXPECT_EQ(mistakes("scenario eins\nstart\npress Info.BAbbrechen\n"), "f:3: the form Info is not open");
    EXPECT_EQ(mistakes("scenario eins\npress pStopPlayer\n"), "f:2: the program has not been started");
    EXPECT_EQ(mistakes("scenario eins\nstart\npress mnuBeenden\npress pStopPlayer\n"), "f:4: the program has ended");
    EXPECT_EQ(printed(run("scenario eins\nstart\nforce mnuLaden\n")), "");
}

TEST(Runner, AModalFormIsScriptedByABlockAndMustBeClosedByIt)
{
    EXPECT_EQ(printed(run("scenario eins\nstart\nwhile modal Info\nexpect Info.Visible yes\nexpect forms\nRoot\n"
                          "Info modal\nDialoge\nend\npress BAbbrechen\nend\npress mnuInfo\n")),
              "");
    EXPECT_EQ(mistakes("scenario eins\nstart\npress mnuInfo\n"),
              "f:3: the form Info came up modal and nobody scripted it");
    EXPECT_EQ(mistakes("scenario eins\nstart\nwhile modal Info\nend\npress mnuInfo\n"),
              "f:5: the form Info is still open at the end of its script");
    EXPECT_EQ(mistakes("scenario eins\nstart\nwhile modal Info\npress mnuGridlines\nend\npress mnuInfo\n"),
              "f:4: the form Info is open above it");
    EXPECT_EQ(mistakes("scenario eins\nstart\nwhile modal Info\nend\n"),
              "f:3: the form Info was scripted and never came up modal");
}

TEST(Runner, FilesAreLaidOutByteForByte)
{
    EXPECT_EQ(printed(run("scenario eins\n"
                          "drive C: laufwerk\n"
                          "date 2020-02-29 23:59:58\n"
                          "file C:\\M\\\"x\".mp3\n"
                          "file C:\\M\\a.mp3 \"a\\r\\n\\xFC\" \"\\x00ü\"\n"
                          "file C:\\M\\b.m3u lines lf 1252\n"
                          "#EXTM3U\n"
                          "\n"
                          "C:\\\\Müll\n"
                          "end\n"
                          "append C:\\M\\b.m3u \"z\"\n"
                          "mode C:\\M\\b.m3u 0444\n"
                          "time C:\\M\\a.mp3 2001-02-03 04:05:06\n"
                          "symlink C:\\M\\link ../a.mp3\n"
                          "hardlink C:\\M\\hart C:\\M\\a.mp3\n"
                          "fifo C:\\M\\rohr\n"
                          "folder C:\\M\\leer\\tief\n"
                          "expect bytes C:\\M\\a.mp3\n"
                          "\"a\\r\\n\"\n"
                          "\"\\xFC\\x00ü\"\n"
                          "end\n"
                          "expect bytes {base}/laufwerk/M/b.m3u\n"
                          "\"#EXTM3U\\n\"\n"
                          "\"\\n\"\n"
                          "'C:\\M' # no\n"
                          "end\n")),
              "f:1: scenario eins: FAILED\n"
              "f:22: bytes {base}/laufwerk/M/b.m3u is not as expected (- expected, + found)\n"
              "      \"#EXTM3U\\n\"\n"
              "      \"\\n\"\n"
              "    - \"C:\\\\M\" # no\n"
              "    + \"C:\\\\M\\xFCll\\n\"\n"
              "    + \"z\"");
    EXPECT_EQ(printed(run("scenario eins\n"
                          "date 2020-02-29 23:59:58\n"
                          "file m/a.mp3 \"12345\"\n"
                          "mode m/a.mp3 0440\n"
                          "symlink m/link a.mp3\n"
                          "fifo m/rohr\n"
                          "folder m/leer\n"
                          "file m/weg\n"
                          "delete m/weg\n"
                          "expect mode m/a.mp3 0440\n"
                          "expect time m/a.mp3 2020-02-29 23:59:58\n"
                          "expect sizes m\n\"a.mp3\" 5\n\"leer/\"\n\"link\" -> \"a.mp3\"\n\"rohr\" fifo\nend\n"
                          "expect bytes m/weg\n(missing)\nend\n")),
              "");
}

TEST(Runner, WhatTheMachineIsMadeWithCountsWhereverItStands)
{
    EXPECT_EQ(printed(run("common\nfile C:\\a\nend\nscenario eins\nstart\ndrive C: c\nexpect tree c\n\"a\"\nend\n")),
              "");
}

TEST(Runner, ARelativePathOfTheProgramStaysOnTheMachine)
{
    const QString folder = QDir::currentPath();
    const QStringList before = QDir(folder).entryList(QDir::AllEntries | QDir::Hidden);
    const FileResult result = run("scenario a\n  setting Database sz \"x\"\n  start\n  enter \"Neu\"\n  press mnuNeu\n"
                                  "  expect bytes xPlaylisten/Neu.m3u\n    \"\\r\\n\"\n  end\n");
    EXPECT_EQ(printed(result), "");
    EXPECT_EQ(QDir::currentPath(), folder);
    EXPECT_EQ(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden), before);
}

TEST(Runner, SettingsKeepTheirTypes)
{
    EXPECT_EQ(printed(run("scenario eins\n"
                          "setting Index binary 05 00 00 00\n"
                          "setting Error dword 0\n"
                          "setting key Software\\Test Text multi-sz \"a\\r\\n\"\n"
                          "setting Weg sz \"x\"\n"
                          "setting Weg none\n"
                          "expect settings\nIndex binary 05 00 00 00\nError dword 0\nend\n"
                          "expect settings Software\\Test\nText multi-sz \"a\\r\\n\"\nend\n"
                          "expect setting Index binary 05 00 00 00\n"
                          "expect setting Weg none\n")),
              "");
}

TEST(Runner, VirtualTimePassesOnlyWhenItIsWaitedFor)
{
    EXPECT_EQ(printed(run("scenario eins\ndate 2026-12-31 23:59:00\nstart\nafter 500 ms\nexpect clock 2026-12-31 "
                          "23:59:01.500\npress mnuGridlines\nend\nwait 2 s\nexpect clock 2026-12-31 23:59:03.000\n"
                          "expect mnuGridlines.Checked no\n")),
              "");
}

TEST(Runner, ARestartFindsTheFilesAndSettingsOfTheFirstRun)
{
    EXPECT_EQ(printed(run("scenario eins\nstart\npress mnuBeenden\nexpect ended yes\nstart\nexpect ended no\n"
                          "expect forms\nRoot\nDialoge\nend\nkill\nstart\n")),
              "");
    EXPECT_EQ(mistakes("scenario eins\nstart\nstart\n"), "f:3: the program still runs: end it, or \"kill\" it");
}

TEST(Runner, CommonCommandsRunInEveryScenario)
{
    EXPECT_EQ(printed(run("common\nfile a \"x\"\nend\nscenario eins\nexpect bytes a\n\"x\"\nend\ndelete a\n"
                          "scenario zwei\nexpect bytes a\n\"x\"\nend\n")),
              "");
}

TEST(Runner, CallsAreTakenSinceTheLastLookAtTheirKind)
{
    EXPECT_EQ(printed(run("scenario eins\nstart\nexpect calls tray\ntray.add \"Orvanten Manager\"\nend\n"
                          "expect calls tray\nend\npress mnuBeenden\nexpect calls tray events\n"
                          "tray.remove\ntray.remove\nevents.endProcess\nend\n")),
              "");
}

TEST(Runner, WhatIsForgottenIsNotSeenByTheNextLook)
{
    EXPECT_EQ(printed(run("scenario eins\nstart\nforget calls tray\npress mnuBeenden\nexpect calls tray\n"
                          "tray.remove\ntray.remove\nend\n")),
              "");
    EXPECT_EQ(printed(run("scenario eins\nforget\nforget rows\nforget nix\n")),
              "f:2: the form is: forget SUBJECT …\n"
              "f:3: the form is: forget rows LIST … end\n"
              "f:4: there is nothing called \"nix\" to expect or print");
}

namespace {

/// One tagged track in the open list, then these lines.
std::string withTaggedTrack(const char* lines)
{
    const std::string text =
        std::string("scenario eins\ndrive C: c\nfile C:\\a.mp3 \"1\"\n"
                    "file C:\\N\\L.m3u \"C:\\\\a.mp3\\r\\n\"\nsetting Info sz \"1\"\n"
                    "file {data}/Orvantine.dat \"[Index]\\r\\n1b=L\\r\\n1c=C:\\\\N\\\\L.m3u\\r\\n1d=1\\r"
                    "\\n\"\n"
                    "track C:\\a.mp3 title \"Lied \" artist \"Wir\" album \"Müll\" year \"1999\" "
                    "comment \"a\\x00b\" track 7 bitrate 192 seconds 3661\nstart\n") +
        lines;
    return printed(run(text.c_str()));
}

} // namespace

TEST(Runner, ATrackIsWhatTheTagLibraryReadsAndRecordsThatItWritesArePrinted)
{
    EXPECT_EQ(withTaggedTrack("expect sTitle.Caption \"Lied\"\nexpect sAlbum.Caption \"Müll\"\n"
                              "expect sJahr.Caption \"1999\"\nexpect sTrack.Caption \"7\"\n"
                              "expect sBitrate.Caption \"192\"\nexpect sAnzeige(0).Caption \"01:01:01\"\n"
                              "expect written\nend\nforce frmID3V1.cmdUpdate\nexpect written\n"
                              "title \"Lied\" artist \"Wir\" album \"M\\xFCll\" year \"1999\" comment \"a\\x00b\" "
                              "genre 0 track 7 flags 2 2 bitrate 192\n"
                              "extended title \"Lied\" artist \"Wir\" album \"M\\xFCll\" year \"1999\" comment "
                              "\"a\\x00b\" genre \"\" track \"7\" bitrate \"192\"\nend\nexpect written\nend\n"),
              "");
}

TEST(Runner, AMistakeInATrackEndsTheScenario)
{
    EXPECT_EQ(mistakes("scenario eins\ntrack a.mp3 title\nstart\n"),
              "f:2: each field of a track is followed by its value");
    EXPECT_EQ(mistakes("scenario eins\ntrack a.mp3 titel \"x\"\n"),
              "f:2: titel is not one of: title, artist, album, year, comment, track, bitrate, seconds");
}

TEST(Runner, TheWindowTellsFormResizeOfItsStateAndSize)
{
    EXPECT_EQ(printed(run("scenario eins\nstart\nwindow minimize\nexpect Root.Visible no\nwindow activate\nexpect "
                          "Root.State normal\nexpect Root.Visible yes\nwindow size 10 20\nexpect Root.Width 9365\n"
                          "expect Root.Height 7245\n")),
              "");
}

TEST(Program, ReturnsZeroOneAndTwo)
{
    const QTemporaryDir folder;
    const auto file = [&](const QString& name, const QByteArray& text) {
        QFile written(folder.path() + u'/' + name);
        EXPECT_TRUE(written.open(QIODevice::WriteOnly));
        written.write(text);
        return written.fileName();
    };
    const QString good = file(u"gut"_s, "scenario eins\nstart\n");
    const QString bad = file(u"schlecht"_s, "scenario eins\nstart\nexpect ended yes\n");
    QStringList output;

    EXPECT_EQ(runProgram({good}, output), 0);
    EXPECT_EQ(output.last(), u"1 scenarios, 0 failed"_s);
    EXPECT_EQ(runProgram({good, bad}, output), 1);
    EXPECT_EQ(output.last(), u"2 scenarios, 1 failed"_s);
    EXPECT_EQ(runProgram({}, output), 2);
    EXPECT_EQ(runProgram({u"--nein"_s, good}, output), 2);
    EXPECT_EQ(runProgram({folder.path() + u"/fehlt"_s}, output), 2);

    output.clear();
    EXPECT_EQ(runProgram({u"--print"_s, bad}, output), 1);
    EXPECT_TRUE(output.contains(bad + u":3: ended"_s)) << output.join(u'\n').toStdString();
    EXPECT_TRUE(output.contains(u"    no"_s));
}

} // namespace orvantine::scenario
