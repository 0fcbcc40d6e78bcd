#include "playlists/PlaylistText.h"
#include "support/Wav.h"
#include "system/app/Program.h"
#include "system/app/Shelf.h"

#include <QFile>
#include <QFileInfo>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

constexpr auto Catalogue = "Wiedergabelisten";
constexpr auto Tracks = "Einträge in der Playliste";
constexpr int CopyAction = 1;
const QString UriList = u"text/uri-list"_s;

/// The program beside a window of another one; its only list "Eins" holds one track.
class DraggedFiles : public ::testing::Test
{
protected:
    DraggedFiles()
    {
        desk.settle();
        const QString list = desk.dataPath(u"Playlisten/Eins.m3u"_s);
        desk.write(list, (track(u"erster.wav"_s) + u"\r\n"_s).toUtf8());
        desk.writeCatalogue({list});
    }

    void SetUp() override
    {
        ASSERT_TRUE(program.awaitWindow()) << program.complaints();
        // Beside the other window.
        ASSERT_TRUE(await([this] {
            const QString number = desk.window(u"Orvanten Manager"_s);
            return !number.isEmpty() && desk.tool(u"xdotool"_s, {u"windowsize"_s, number, u"1000"_s, u"700"_s,
                                                                 u"windowmove"_s, number, u"20"_s, u"40"_s});
        }));
        ASSERT_TRUE(await([this] {
            const auto list = program.control(QString::fromUtf8(Tracks));
            return list && list->place.right() > 900 && list->place.right() < 1030 &&
                   program.control(u"erster"_s).has_value();
        }));
        // Not before: a window that comes up on the way counts as one of the program's boxes.
        shelf.emplace(desk, QList<Content>{{UriList, {}}});
    }
    void TearDown() override
    {
        shelf.reset();
        EXPECT_TRUE(program.closes()) << program.complaints();
    }

    QString track(const QString& name)
    {
        QString path = desk.path(u"music/"_s + name);
        desk.write(path, fake::wav({.milliseconds = 50, .hertz = 440}));
        return path;
    }
    static QByteArray uri(const QByteArray& path) { return "file://" + path.toPercentEncoding("/") + "\r\n"; }

    QPoint middleOf(const QString& name)
    {
        const auto control = program.control(name);
        EXPECT_TRUE(control) << name.toStdString();
        return control ? control->place.center() : QPoint();
    }
    std::optional<int> drop(const QByteArray& uris, const char* list)
    {
        shelf->fill({{UriList, uris}});
        return shelf->dragTo(middleOf(QString::fromUtf8(list)));
    }

    [[nodiscard]] std::string playlist(const QString& name = u"Eins"_s) const
    {
        return Desk::bytes(desk.dataPath(u"Playlisten/"_s + name + u".m3u"_s)).toStdString();
    }
    /// Waits until the database holds that line.
    [[nodiscard]] bool awaitStored(const QByteArray& line) const
    {
        return await([this, &line] {
            return ("\r\n" + Desk::bytes(desk.dataPath(u"Orvantine.dat"_s))).contains("\r\n" + line + "\r\n");
        });
    }
    /// Waits for a box of this title with this text, and closes it with the key.
    void answer(const QString& title, const QString& text, const QString& key)
    {
        EXPECT_TRUE(await([this, &title] { return desk.windows().contains(title); })) << title.toStdString();
        EXPECT_TRUE(await([this, &text] { return program.control(text).has_value(); })) << text.toStdString();
        desk.press(title, key);
        EXPECT_TRUE(await([this, &title] { return !desk.windows().contains(title); })) << title.toStdString();
    }

    Desk desk;
    Program program{desk};
    std::optional<Shelf> shelf;
};

TEST_F(DraggedFiles, BecomeTracksWhateverTheirNames)
{
    const QString blanks = track(u"zwei Worte #1.wav"_s);
    const QString percent = track(u"100% da.wav"_s);
    const QString umlaut = track(u"Köln über Nacht.WAV"_s);
    const QByteArray foreign = desk.path(u"music/"_s).toUtf8() + "\xFC"
                                                                 "bel.wav";
    const int file = ::open(foreign.constData(), O_CREAT | O_WRONLY, 0600);
    ASSERT_GE(file, 0);
    ::close(file);

    EXPECT_EQ(drop(uri(blanks.toUtf8()) + uri(percent.toUtf8()) + uri(umlaut.toUtf8()) + uri(foreign), Tracks),
              CopyAction);
    EXPECT_TRUE(awaitStored("1d=5")) << program.complaints();
    const std::string music = desk.path(u"music/"_s).toStdString();
    EXPECT_EQ(playlist(), music + "erster.wav\r\n" + music + "zwei Worte #1.wav\r\n" + music + "100% da.wav\r\n" +
                              music + "Köln über Nacht.WAV\r\n" + music + "übel.wav\r\n");
    for (const QString& name : {u"zwei Worte #1"_s, u"100% da"_s, u"Köln über Nacht"_s, u"übel"_s})
        EXPECT_TRUE(program.control(name)) << name.toStdString();
    // The folder's own way of emptying itself does not know such names.
    ::unlink(foreign.constData());
}

TEST_F(DraggedFiles, ThatAreNoTracksAreRefusedWithAMessage)
{
    const std::string before = playlist();
    desk.write(desk.path(u"music/bild.jpg"_s), "x");
    EXPECT_EQ(drop(uri(track(u"neu.wav"_s).toUtf8()) + uri(desk.path(u"music/bild.jpg"_s).toUtf8()), Tracks),
              CopyAction);
    answer(u" Audiodateien hinzufügen"_s, u"Es können nur Mp3-Audiodateien in die Trackliste hinzugefügt werden. "_s,
           u"Return"_s);
    EXPECT_EQ(playlist(), before);
}

TEST_F(DraggedFiles, OnTheCatalogueAListAndAFolderBecomePlaylists)
{
    const QString list = desk.path(u"lists/Fahrt ins Blaue.m3u"_s);
    desk.write(list, (track(u"a.wav"_s) + u"\r\n"_s + track(u"b.wav"_s) + u"\r\n"_s).toUtf8());
    const QString first = track(u"Grüne Alben/1.wav"_s);
    const QString second = track(u"Grüne Alben/2.wav"_s);
    ASSERT_TRUE(
        desk.tool(u"convert"_s, {u"-size"_s, u"60x60"_s, u"xc:green"_s, desk.path(u"music/Grüne Alben/x.jpg"_s)}));

    EXPECT_EQ(drop(uri(list.toUtf8()) + uri(desk.path(u"music/Grüne Alben/"_s).toUtf8()), Catalogue), CopyAction);
    // Saving the catalogue gives the list a copy in the program's folder: lists are kept there unless told otherwise.
    EXPECT_TRUE(awaitStored("2c=" + desk.dataPath(u"Playlisten/Fahrt ins Blaue.m3u"_s).toUtf8()))
        << list.toStdString() << '\n'
        << Desk::bytes(desk.dataPath(u"Orvantine.dat"_s)).toStdString();
    EXPECT_TRUE(awaitStored("2d=2"));
    EXPECT_TRUE(awaitStored("3b=Grüne Alben"));
    EXPECT_TRUE(awaitStored("3d=2"));
    EXPECT_TRUE(awaitStored("3c=" + desk.dataPath(u"Playlisten/Grüne Alben.m3u"_s).toUtf8()));
    EXPECT_EQ(playlist(u"Grüne Alben"_s), (first + u"\r\n"_s + second + u"\r\n"_s).toStdString());
    EXPECT_TRUE(await([this] { return QFileInfo::exists(desk.dataPath(u"Resource/Grüne Alben.jpg"_s)); }));
    EXPECT_TRUE(await([this] {
        return program.control(u"Fahrt ins Blaue"_s).has_value() && program.control(u"Grüne Alben"_s).has_value();
    }));
}

TEST_F(DraggedFiles, OnTheCatalogueAnythingElseIsAskedAbout)
{
    const QString title = u" Tracklisten hinzufügen"_s;
    const QString text = u"Es können nur M3u-Tracklisten oder Mp3-Dateiordner hinzugefügt werden. \n\nErstellen Sie "
                         u"eine neue Playliste im Menü ''Hinzufügen'' und fügen dann \ndie Mp3-Dateien in die rechte "
                         u"Spalte ''Einträge in der Playliste'' hinzu.\nMöchten Sie jetzt eine neue Playliste "
                         u"erstellen ?"_s;
    const QByteArray other = uri(track(u"neu.wav"_s).toUtf8());
    EXPECT_EQ(drop(other, Catalogue), CopyAction);
    answer(title, text, u"alt+n"_s);
    EXPECT_EQ(drop(other, Catalogue), CopyAction);
    answer(title, text, u"alt+j"_s);
    EXPECT_TRUE(await([this] { return desk.windows().contains(u" Neue Playliste"_s); }));
}

TEST_F(DraggedFiles, OfOtherMachinesAreLeft)
{
    const QByteArray elsewhere =
        "http://host/a.wav\r\nsmb://host/m/b.wav\r\nfile://otherhost" + track(u"c.wav"_s).toUtf8() + "\r\n";
    EXPECT_TRUE(drop(elsewhere, Tracks));
    EXPECT_TRUE(drop(elsewhere, Catalogue));
    // What lies here is still taken out of such a list.
    EXPECT_EQ(drop(elsewhere + uri(track(u"neu.wav"_s).toUtf8()), Tracks), CopyAction);
    EXPECT_TRUE(awaitStored("1d=2")) << program.complaints();
    const std::string music = desk.path(u"music/"_s).toStdString();
    EXPECT_EQ(playlist(), music + "erster.wav\r\n" + music + "neu.wav\r\n");
    EXPECT_EQ(desk.windows().size(), 2) << "nothing is asked: " << desk.windows().join(u'|').toStdString();
}

TEST_F(DraggedFiles, ThatVanishOnTheWayBecomeRedRowsAndNoList)
{
    const QString neu = track(u"neu.wav"_s);
    const QString list = desk.path(u"lists/weg.m3u"_s);
    desk.write(list, "a.wav\r\n");
    shelf->fill({{UriList, uri(neu.toUtf8())}});
    EXPECT_EQ(shelf->dragTo(middleOf(QString::fromUtf8(Tracks)), [&neu] { ASSERT_TRUE(QFile::remove(neu)); }),
              CopyAction);
    EXPECT_TRUE(awaitStored("1d=2"));
    EXPECT_TRUE(playlist().ends_with(neu.toStdString() + "\r\n"));

    shelf->fill({{UriList, uri(list.toUtf8())}});
    EXPECT_EQ(shelf->dragTo(middleOf(QString::fromUtf8(Catalogue)), [&list] { ASSERT_TRUE(QFile::remove(list)); }),
              CopyAction);
    answer(u" Playliste hinzufügen"_s,
           u"Beim Hinzufügen der Wiedergabeliste sind Fehler aufgetreten. \nDie Sounddateien konnte nicht zur "
           u"Datenbank hinzugefügt werden.  "_s,
           u"Return"_s);
    EXPECT_FALSE(QFileInfo::exists(list));
}

TEST_F(DraggedFiles, OutOfTheTracksNameTheFile)
{
    const QString odd = track(u"100% über # zwei.wav"_s);
    EXPECT_EQ(drop(uri(odd.toUtf8()), Tracks), CopyAction);
    EXPECT_TRUE(awaitStored("1d=2"));
    const std::string before = playlist();
    EXPECT_EQ(shelf->dragFrom(middleOf(u"erster"_s)),
              uri(desk.path(u"music/erster.wav"_s).toUtf8()).toPercentEncoding());
    EXPECT_EQ(shelf->dragFrom(middleOf(u"100% über # zwei"_s)), uri(odd.toUtf8()).toPercentEncoding());
    EXPECT_TRUE(QFileInfo::exists(odd)) << "a track is drawn out as a copy";
    EXPECT_EQ(playlist(), before);
}

/// What another program has put on the clipboard, pasted into the tracks.
class CopiedFiles : public DraggedFiles
{
protected:
    void paste(const QList<Content>& content, const QString& key = u"alt+j"_s)
    {
        shelf.reset();
        shelf.emplace(desk, content, Shelf::Way::Copy);
        program.click(u"erster"_s);
        desk.press(u"Orvanten Manager"_s, u"ctrl+v"_s);
        answer(u" Dateien aus der Zwischenablage"_s,
               u"Markieren Sie die Audiodateien im Explorer und klicken Sie mit der rechten Maustaste auf die Dateien "
               u"und wählen Sie im Menü ''Senden an'' und den Eintrag ''Zwischenablage''.\n \nMöchten Sie die "
               u"Audiodateien aus der Zwischenablage in diese Wiedergabeliste einfügen ? "_s,
               key);
    }
    /// Waits until the list holds that many tracks; the file then.
    [[nodiscard]] std::string playlistOf(qsizetype count)
    {
        EXPECT_TRUE(await([&] {
            const QByteArray file = QByteArray::fromStdString(playlist());
            return file.count(".wav\r\n") + file.count(".jpg\r\n") == count && !file.endsWith("\r\n\r\n");
        })) << playlist();
        return playlist();
    }
};

TEST_F(CopiedFiles, OfFileManagersBecomeTracks)
{
    const QByteArray first = track(u"100% über #.wav"_s).toUtf8();
    const QByteArray second = track(u"zwei Worte.wav"_s).toUtf8();
    const std::string held = desk.path(u"music/erster.wav\r\n"_s).toStdString();
    const std::string lines = first.toStdString() + "\r\n" + second.toStdString() + "\r\n";
    paste({{UriList, uri(first) + uri(second) + "http://host/c.wav\r\n"}});
    EXPECT_EQ(playlistOf(3), held + lines);
    const QByteArray uris = uri(first) + uri(second);
    paste({{u"x-special/gnome-copied-files"_s, "copy\n" + QByteArray(uris).replace("\r\n", "\n").trimmed()}});
    EXPECT_EQ(playlistOf(5), held + lines + lines);
    paste({{UriList, uri(first)}}, u"alt+n"_s);
    EXPECT_EQ(playlistOf(5), held + lines + lines);
}

TEST_F(CopiedFiles, AsQuotedTextBecomeTracksAndALongTextNone)
{
    const QString first = track(u"über.wav"_s);
    const QString second = track(u"zwei Worte.wav"_s);
    const QString text = u"text/plain;charset=utf-8"_s;
    paste({{text, QByteArray(10 << 20, 'x')}});
    paste({{text, QByteArray(1000, '"')}});
    paste({{text, u"\"%1\" \"%2\""_s.arg(first, second).toUtf8()}});
    EXPECT_EQ(playlistOf(3),
              u"%1\r\n%2\r\n%3\r\n"_s.arg(desk.path(u"music/erster.wav"_s), first, second).toStdString());
}

TEST_F(CopiedFiles, OfTheProgramAreTextForOtherPrograms)
{
    program.click(u"erster"_s);
    desk.press(u"Orvanten Manager"_s, u"ctrl+c"_s);
    const auto copied = [this] {
        return desk.tool(QStringLiteral(ORVANTINE_SHELF), {u"--paste"_s}).value_or(QString());
    };
    EXPECT_TRUE(await([&] { return copied() == desk.path(u"music/erster.wav\n"_s); })) << copied().toStdString();
    // Into the room below its only row.
    desk.click(middleOf(QString::fromUtf8(Catalogue)));
    desk.press(u"Orvanten Manager"_s, u"ctrl+c"_s);
    EXPECT_TRUE(await([&] { return copied() == u"Eins\n"_s; })) << copied().toStdString();
}

} // namespace

} // namespace orvantine::desk
