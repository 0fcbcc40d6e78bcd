#include "catalogue/CatalogueWorld.h"
#include "operations/mnuEditPaste.h"
#include "playlists/mnuAddSounds.h"
#include "transfer/FolderDialogs.h"

#include <QFile>

#include <unistd.h>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// The list "Erste" with one track is open; everything lies on the real disk.
class RealFiles : public CatalogueWorld
{
protected:
    RealFiles() : CatalogueWorld({.disk = DiskKind::TemporaryFolder})
    {
        put(at(u"m/da.mp3"_s), "mp3");
        putList(u"Erste"_s, {at(u"m/da.mp3"_s)});
        putDatabase(indexRow(1, {.name = u"Erste"_s, .path = listPath(u"Erste"_s), .tracks = u"1"_s}));
        start();
        click(1);
        desktop.messages.take();
    }

    [[nodiscard]] QString at(const QString& name) const { return desktop.base + u'/' + name; }
    QString make(const QString& name, const QByteArray& content = "mp3")
    {
        put(at(name), content);
        return at(name);
    }
    /// That many tracks in a folder of their own, all of them one file: so they are made fast.
    QStringList makeMany(const QString& folder, int count)
    {
        putFolder(at(folder));
        const QByteArray one = make(u"m/einer.mp3"_s).toUtf8();
        QStringList paths;
        paths.reserve(count);
        for (int i = 0; i < count; ++i) {
            paths += at(folder + u"/%1.mp3"_s.arg(i, 5, 10, QChar(u'0')));
            EXPECT_EQ(0, ::link(one.constData(), paths.constLast().toUtf8().constData()));
        }
        return paths;
    }
    [[nodiscard]] QStringList linesOf(const QString& list)
    {
        return QString::fromUtf8(bytes(listPath(list))).split(u"\r\n"_s, Qt::SkipEmptyParts);
    }
    [[nodiscard]] std::string names()
    {
        QStringList texts;
        for (int row = 1; row <= catalogue().count(); ++row)
            texts += catalogue().subItem(row, 1);
        return texts.join(u' ').toStdString();
    }
    void paste(const QString& text)
    {
        root().mnuEditCopy.Tag = u"2"_s;
        desktop.clipboard.content = text;
        desktop.messages.answer(Answer::Yes);
        mnuEditPaste_Click(root());
    }
    /// Paths of the rows behind the first one.
    [[nodiscard]] std::string added()
    {
        QStringList paths;
        for (int row = 2; row <= tracks().count(); ++row)
            paths += tracks().subItem(row, 3).remove(desktop.base);
        return paths.join(u' ').toStdString();
    }
};

// Drops

TEST_F(RealFiles, FiftyThousandTracksOfAFolderOrOfOneDropAreWritten)
{
    const QStringList many = makeMany(u"Alles"_s, 50'000);
    catalogue().Drop({at(u"Alles"_s)});
    EXPECT_EQ("Erste Alles", names());
    EXPECT_EQ(50'000, tracks().count());
    EXPECT_EQ(many, linesOf(u"Alles"_s));
    EXPECT_EQ("50000", catalogue().subItem(2, 3).toStdString());

    click(1);
    tracks().Drop(many);
    EXPECT_EQ(50'001, tracks().count());
    EXPECT_EQ(QStringList(at(u"m/da.mp3"_s)) + many, linesOf(u"Erste"_s));
    EXPECT_EQ("", boxes());
}

TEST_F(RealFiles, FiftyThousandMissingTracksAreRedRows)
{
    QStringList many;
    for (int i = 0; i < 50'000; ++i)
        many += at(u"weg/%1.mp3"_s.arg(i));
    tracks().Drop(many);
    EXPECT_EQ(50'001, tracks().count());
    EXPECT_EQ(Color::DarkRed, tracks().color(50'001, 3));
    EXPECT_EQ(50'001, linesOf(u"Erste"_s).size());
}

TEST_F(RealFiles, AListOfListsNamesThemAsItsTracks)
{
    const QString inner = make(u"l/innen.m3u"_s, at(u"m/da.mp3"_s).toUtf8() + "\r\n");
    const QString outer = make(u"l/außen.m3u"_s, inner.toUtf8() + "\r\n" + at(u"l/außen.m3u"_s).toUtf8() + "\r\n");
    catalogue().Drop({outer});
    EXPECT_EQ("Erste außen", names());
    EXPECT_EQ(2, tracks().count());
    EXPECT_EQ(inner.toStdString(), tracks().subItem(1, 3).toStdString());
    EXPECT_EQ(at(u"m/da.mp3"_s).toStdString() + "\r\n", bytes(inner).toStdString()) << "nobody has opened it";
}

TEST_F(RealFiles, EmptyFilesAreTracksAndListsToo)
{
    tracks().Drop({make(u"m/leer.mp3"_s, {}), make(u"m/leer.wav"_s, {}), make(u"m/leer.WMA"_s, {})});
    EXPECT_EQ("/m/leer.mp3 /m/leer.wav /m/leer.WMA", added());
    catalogue().Drop({make(u"l/leer.m3u"_s, {})});
    EXPECT_EQ("Erste leer", names());
    EXPECT_EQ(0, tracks().count());
    EXPECT_EQ("0", catalogue().subItem(2, 3).toStdString());
}

TEST_F(RealFiles, AnEmptyFolderIsAnEmptyList)
{
    putFolder(at(u"Leer"_s));
    catalogue().Drop({at(u"Leer"_s)});
    EXPECT_EQ("Erste Leer", names());
    EXPECT_EQ(0, tracks().count());
}

TEST_F(RealFiles, AFolderThatMayNotBeReadIsAnEmptyList)
{
    if (::geteuid() == 0)
        GTEST_SKIP() << "the superuser may read everything";
    make(u"Zu/1.mp3"_s);
    ASSERT_TRUE(QFile::setPermissions(at(u"Zu"_s), {}));
    catalogue().Drop({at(u"Zu"_s)});
    EXPECT_EQ("Erste Zu", names());
    EXPECT_EQ(0, tracks().count());
    QFile::setPermissions(at(u"Zu"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(RealFiles, LinksThatLeadInCirclesEndNowhere)
{
    make(u"Kreis/1.mp3"_s);
    ASSERT_TRUE(QFile::link(at(u"Kreis"_s), at(u"Kreis/tiefer"_s)));
    ASSERT_TRUE(QFile::link(at(u"Kreis/ring.mp3"_s), at(u"Kreis/ring.mp3"_s)));
    catalogue().Drop({at(u"Kreis"_s), at(u"Kreis/tiefer/tiefer/tiefer"_s)});
    EXPECT_EQ("Erste Kreis tiefer", names());
    EXPECT_EQ(at(u"Kreis/1.mp3"_s).toStdString(), linesOf(u"Kreis"_s).join(u' ').toStdString());
    EXPECT_EQ(at(u"Kreis/tiefer/tiefer/tiefer/1.mp3"_s).toStdString(), linesOf(u"tiefer"_s).join(u' ').toStdString());
    click(1);
    tracks().Drop({at(u"Kreis/ring.mp3"_s)});
    EXPECT_EQ(Color::DarkRed, tracks().color(2, 3));
}

TEST_F(RealFiles, AFolderThatHasVanishedIsAskedAboutAsAnyOtherItem)
{
    desktop.messages.answer(Answer::No);
    catalogue().Drop({at(u"Gewesen"_s)});
    EXPECT_EQ("Erste", names());
}

// The menu

TEST_F(RealFiles, TheCopyOfAReadOnlyDatabaseIsWritableSoThatThatOfTheNextDayIsMade)
{
    desktop.disk().remove(backup());
    const QByteArray before = bytes(database());
    ASSERT_TRUE(QFile::setPermissions(database(), QFile::ReadOwner | QFile::ReadGroup));
    // Without a tag there is nothing to name: the copy is all that is made.
    root().mnuSetTagName.Click();
    EXPECT_EQ(before.toStdString(), bytes(backup()).toStdString());
    EXPECT_TRUE(QFile::permissions(backup()).testFlag(QFile::WriteOwner));

    ASSERT_TRUE(QFile::setPermissions(database(), QFile::ReadOwner | QFile::WriteOwner));
    root().mnuSpeichern.Click();
    const QByteArray evening = bytes(database());
    ASSERT_NE(before.toStdString(), evening.toStdString());
    desktop.events().setNow(desktop.events().now().addDays(1));
    root().mnuSpeichern.Click();
    EXPECT_EQ(evening.toStdString(), bytes(backup()).toStdString());
}

TEST_F(RealFiles, NamesThatDifferInCaseAloneAreBothAddedInOneRunAndBothPresentInTheNext)
{
    const QByteArray lower = make(u"Neu/lied.mp3"_s).toUtf8();
    ASSERT_EQ(0, ::link(lower.constData(), at(u"Neu/LIED.MP3"_s).toUtf8().constData()));
    const auto addFolder = [this] {
        desktop.forms().whileModal(u"Ordner"_s, [this](Form& form) {
            auto& dialog = static_cast<Ordner&>(form);
            dialog.LTreeview.SelectedFolder = at(u"Neu"_s);
            dialog.LTreeview.Change();
            dialog.BReady.Click();
        });
        mnuAddSounds_Click(root());
    };
    addFolder();
    QStringList both{tracks().subItem(2, 3).remove(desktop.base), tracks().subItem(3, 3).remove(desktop.base)};
    both.sort();
    EXPECT_EQ("/Neu/LIED.MP3 /Neu/lied.mp3", both.join(u' ').toStdString());
    EXPECT_EQ(3, linesOf(u"Erste"_s).size());
    EXPECT_EQ("", boxes()) << "what the run itself adds is not in the file that it has read";

    desktop.messages.answer(Answer::Ok, u" Sounddateien hinzufügen"_s,
                            u"Es wurden 2 vorhandene Sounddateien nicht zur Playliste hinzugefügt.   "_s);
    addFolder();
    EXPECT_EQ(3, tracks().count());
    EXPECT_EQ(3, linesOf(u"Erste"_s).size());
}

// The clipboard

TEST_F(RealFiles, QuotesThatLackTheirPartnerNameWhatStandsBeforeThem)
{
    const QString track = make(u"m/neu.mp3"_s);
    paste(u'"' + track);
    EXPECT_EQ("", added()) << "no closing quote, no file";
    paste(track + u'"');
    EXPECT_EQ("/m/neu.mp3", added());
    paste(u'"' + track + u"\" \""_s + track);
    EXPECT_EQ("/m/neu.mp3 /m/neu.mp3", added());
}

TEST_F(RealFiles, AThousandQuotesNameNothing)
{
    paste(QString(1000, u'"'));
    paste(u"\" "_s.repeated(1000));
    EXPECT_EQ("", added());
    EXPECT_EQ(1, linesOf(u"Erste"_s).size());
}

TEST_F(RealFiles, ANulEndsNoName)
{
    const QString track = make(u"m/neu.mp3"_s);
    paste(u'"' + track + QChar(u'\0') + u".mp3\" \""_s + track + u'"');
    EXPECT_EQ("/m/neu.mp3", added());
    paste(QString(100, QChar(u'\0')) + u'"' + QString(100, QChar(u'\0')) + u'"');
    EXPECT_EQ("/m/neu.mp3", added());
}

TEST_F(RealFiles, TenMegabytesOfTextNameNothing)
{
    constexpr qsizetype Size = 10 << 20;
    paste(QString(Size, u'x'));
    paste(u'"' + QString(Size, u'x') + u".mp3\""_s);
    paste(u'"' + u"/x"_s.repeated(Size / 2) + u".mp3\""_s);
    paste(u'"' + u"../"_s.repeated(Size / 3) + u".mp3\""_s);
    EXPECT_EQ("", added());
}

} // namespace

} // namespace orvantine::fake
