#include "app/Pause.h"
#include "playlists/PlaylistText.h"
#include "support/DesktopTest.h"

#include "app/Dateiexistenz.h"
#include "app/FreeSpace.h"
#include "app/IniFiles.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/TextLimits.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

class SmallServices : public DesktopTest
{
};

TEST(TextLimits, ASurrogatePairIsNeverCutInTwo)
{
    const QString text = QString(253, u'a') + u"\U0001F3B5"_s;
    EXPECT_EQ(253, cutTo(text, 254).size());
    EXPECT_EQ(255, cutTo(text, 255).size());
}

TEST_F(SmallServices, ADatabaseValueOf255OrMoreCharactersComesBackCutTo254)
{
    const QString file = data() + u"Orvantine.dat"_s;
    start();
    IniFiles::WriteValue(root(), file, u"Index"_s, u"1e"_s, QString(255, u'x'));
    EXPECT_EQ(254, IniFiles::ReadValue(root(), file, u"Index"_s, u"1e"_s).size());
}

TEST_F(SmallServices, AnEmptyValueReadsLikeAMissingOne)
{
    const QString file = data() + u"Orvantine.dat"_s;
    start();
    IniFiles::WriteValue(root(), file, u"Options"_s, u"Leer"_s, u""_s);
    EXPECT_EQ("", IniFiles::ReadValue(root(), file, u"Options"_s, u"Leer"_s).toStdString());
    EXPECT_EQ("", IniFiles::ReadValue(root(), file, u"Options"_s, u"Fehlt"_s).toStdString());
    EXPECT_EQ("[Options]\r\nLeer=\r\n", bytes(file).toStdString());
}

TEST_F(SmallServices, ANameReadsAsEmptyIfTheDatabaseLosesItSoonerOrLater)
{
    const QString file = data() + u"Orvantine.dat"_s;
    start();
    for (const QString& name :
         {u""_s,        u" "_s,        u"  "_s,       u"\t"_s,     u"\"\""_s,   u"''"_s,  u" \"\" "_s,
          u"\"  \""_s,  u"\"\"\"\""_s, u"' \"\" '"_s, u"\"'\"'"_s, u"\""_s,     u"'"_s,   u"\"'"_s,
          u"\" ' \""_s, u"a"_s,        u"\"a\""_s,    u" . "_s,    u"\u00A0"_s, u"' a'"_s}) {
        QString held = withoutControls(name);
        for (int save = 0; save < 5; ++save) {
            IniFiles::WriteValue(root(), file, u"Index"_s, u"1b"_s, held);
            held = IniFiles::ReadValue(root(), file, u"Index"_s, u"1b"_s);
        }
        EXPECT_EQ(held.isEmpty(), readsAsEmpty(name)) << '[' << name.toStdString() << ']';
    }
}

TEST_F(SmallServices, ATextWithALineBreakBecomesAMultiStringThatEndsInCrLf)
{
    start();
    writeSetting(root(), u"Zeilen"_s, u"eins\r\nzwei"_s);
    const auto stored = desktop.settings.value(Hive::CurrentUser, settingsKey(), u"Zeilen"_s).value_or(SettingValue{});
    EXPECT_EQ(SettingType::MultiString, stored.type);
    EXPECT_EQ("eins\r\nzwei\r\n", stored.text.toStdString());
}

TEST_F(SmallServices, OnlyACrMakesAMultiStringAndOnlyCrLfIsALineEnd)
{
    start();
    struct Case
    {
        const char* name;
        QString written;
        SettingType type;
        const char* stored;
    };
    for (const Case& c : {Case{"LF only", u"a\nb\n"_s, SettingType::String, "a\nb\n"},
                          Case{"one line", u"a\r\n"_s, SettingType::MultiString, "a\r\n"},
                          Case{"CR", u"a\r"_s, SettingType::MultiString, "a\r\r\n"},
                          Case{"nothing", QString(), SettingType::String, ""}}) {
        writeSetting(root(), u"Zeilen"_s, c.written);
        const auto stored =
            desktop.settings.value(Hive::CurrentUser, settingsKey(), u"Zeilen"_s).value_or(SettingValue{});
        EXPECT_EQ(c.type, stored.type) << c.name;
        EXPECT_EQ(c.stored, stored.text.toStdString()) << c.name;
    }
}

TEST_F(SmallServices, Integers16BecomeDoubleWordsAndIntegers32Binary)
{
    start();
    writeSetting(root(), u"Kurz"_s, qint16{-1});
    writeSetting(root(), u"Index"_s, qint32{7});
    EXPECT_EQ("dword -1", setting(u"Kurz"_s).toStdString());
    EXPECT_EQ("binary 07 00 00 00", setting(u"Index"_s).toStdString());
    EXPECT_TRUE(readSetting(root(), u"Index"_s).is(7));
    EXPECT_TRUE(readSetting(root(), u"Kurz"_s).is(-1));
}

TEST_F(SmallServices, AnyOtherKindWritesNothingAndGivesTrue)
{
    start();
    EXPECT_TRUE(Registry::WriteValue(root(), Hive::CurrentUser, settingsKey(), u"Zahl"_s, 1.5));
    EXPECT_EQ("(absent)", setting(u"Zahl"_s).toStdString());
}

TEST_F(SmallServices, ATextComesWithItsNulAndABlank)
{
    start();
    SettingVariant value;
    ASSERT_TRUE(Registry::ReadValue(root(), Hive::CurrentUser, settingsKey(), u"Version"_s, value));
    EXPECT_EQ(u"2.3"_s + QChar(u'\0') + u' ', std::get<QString>(value));
}

TEST_F(SmallServices, FileExistsOfAFolderIsTrueAndFolderExistsOfAFileToo)
{
    start();
    put(data() + u"datei.txt"_s, "x");
    EXPECT_TRUE(Dateiexistenz::FileExists(root(), data() + u"Playlisten"_s));
    EXPECT_TRUE(Dateiexistenz::FolderExists(root(), data() + u"datei.txt"_s));
    EXPECT_TRUE(Dateiexistenz::FileExists(root(), data() + u"*.txt"_s));
    EXPECT_FALSE(Dateiexistenz::FileExists(root(), data() + u"*.mp3"_s));
}

TEST_F(SmallServices, FreeBytesOfAStickAreEmpty)
{
    start();
    desktop.volumes.set(u"/media/user/STICK"_s, {.fileSystem = u"FAT32"_s, .free = 5000, .total = 9000});
    EXPECT_EQ("", FreeSpace::FreeBytes(root(), u"/media/user/STICK"_s).toStdString());
    desktop.volumes.set(u"/media/user/PLATTE"_s, {.fileSystem = u"NTFS"_s, .free = 5000, .total = 9000});
    EXPECT_EQ("5000", FreeSpace::FreeBytes(root(), u"/media/user/PLATTE"_s).toStdString());
    EXPECT_EQ("9000", FreeSpace::TotalBytes(root(), u"/media/user/PLATTE"_s).toStdString());
}

TEST(WinVersionen, EveryNameByPlatformAndVersion)
{
    struct Case
    {
        SystemVersion version;
        const char* name;
    };
    for (const Case& c :
         {Case{{0, 3, 1}, "Windows 16bit mit 32bit-Erweiterung"}, Case{{1, 4, 0}, "95"}, Case{{1, 4, 10}, "98"},
          Case{{1, 4, 90}, "Me"}, Case{{1, 4, 7}, "Unknown"}, Case{{2, 4, 0}, "Unknown"}, Case{{2, 5, 0}, "XP"},
          Case{{2, 10, 0}, "XP"}, Case{{3, 5, 0}, "Unknown"}})
        EXPECT_EQ(c.name, WinVersionen(c.version).toStdString()) << c.version.platform << '.' << c.version.minor;
}

TEST_F(SmallServices, APauseSurvivesMidnight)
{
    start();
    desktop.events().setNow(QDateTime(QDate(2026, 11, 20), QTime(23, 59, 59, 500)));
    Pause(root(), 1.0);
    EXPECT_EQ(QDate(2026, 11, 21), desktop.events().now().date());
    EXPECT_LE(desktop.events().secondsOfDay(), 0.6);
}

TEST_F(SmallServices, APauseOfNoughtOrLessEndsAtOnce)
{
    start();
    for (const double seconds : {0.0, -1.0, -100000.0}) {
        const auto begin = desktop.events().elapsed();
        Pause(root(), seconds);
        EXPECT_EQ(begin, desktop.events().elapsed()) << seconds;
    }
}

TEST_F(SmallServices, APauseEndsWhereTheClockIsSetBack)
{
    start();
    const auto begin = desktop.events().elapsed();
    desktop.events().after(std::chrono::milliseconds{500},
                           [this] { desktop.events().setNow(desktop.events().now().addSecs(-3600)); });
    Pause(root(), 1.0);
    // Less than its start counts as the next day, and most of that has gone by.
    EXPECT_EQ(500, (desktop.events().elapsed() - begin).count());
}

} // namespace orvantine::fake
