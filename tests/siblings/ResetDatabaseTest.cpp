#include "siblings/ResetDatabase.h"
#include "desktop/posix/PosixFiles.h"
#include "desktop/posix/RegSettings.h"
#include "desktop/posix/ResetFolder.h"
#include "desktop/posix/XdgFolders.h"
#include "support/Nobody.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class Reset : public testing::Test
{
protected:
    Reset()
    {
        QDir().mkpath(at(u"Daten/Playlisten/sub"_s));
        QDir().mkpath(at(u"Daten/Resource"_s));
        put(u"Daten/Orvantine.dat"_s, "[Index]\r\n1b=Rock\r\n[TagInfo]\r\n/a.mp3=A\r\n");
        put(u"Daten/Orvantine.bak"_s, "[Index]\r\n1b=Frueher\r\n");
        put(u"Daten/Playlisten/Rock.m3u"_s, "/a.mp3\r\n");
        put(u"Daten/Playlisten/Über Jazz.PLS"_s, "[playlist]\r\n");
        put(u"Daten/Playlisten/Rock.bak"_s, "/alt.mp3\r\n");
        put(u"Daten/Playlisten/Notiz.txt"_s, "bleibt");
        put(u"Daten/Resource/Rock.jpg"_s, "Bild");
    }
    [[nodiscard]] QString at(const QString& name) const { return folder.path() + u'/' + name; }
    void put(const QString& name, const QByteArray& bytes) const
    {
        QFile file(at(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()) << name.toStdString();
    }
    [[nodiscard]] QByteArray bytes(const QString& name) const
    {
        QFile file(at(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    }
    [[nodiscard]] std::string names(const QString& name) const
    {
        return QDir(at(name)).entryList(QDir::Files | QDir::Hidden, QDir::Name).join(u' ').toStdString();
    }
    bool reset()
    {
        PosixFiles files({.recoveryFolder = at(u"recovery"_s)});
        return resetDatabase(files, {.dataFolder = at(u"Daten/"_s),
                                     .trash = at(u"Trash"_s),
                                     .now = QDateTime(QDate(2026, 11, 20), QTime(12, 34, 56))});
    }
    void expectUntouched() const
    {
        EXPECT_EQ("[Index]\r\n1b=Rock\r\n[TagInfo]\r\n/a.mp3=A\r\n", bytes(u"Daten/Orvantine.dat"_s));
        EXPECT_EQ("Notiz.txt Rock.bak Rock.m3u Über Jazz.PLS", names(u"Daten/Playlisten"_s));
        EXPECT_EQ("", names(u"Trash/files"_s));
    }

    QTemporaryDir folder;
};

/// The sibling itself, in a home of its own.
class Laubfeger : public Reset
{
protected:
    int run(const QStringList& arguments = {})
    {
        QProcess process;
        QProcessEnvironment environment;
        environment.insert(u"HOME"_s, at(u"heim"_s));
        environment.insert(u"XDG_CONFIG_HOME"_s, at(u"heim/config"_s));
        environment.insert(u"XDG_DATA_HOME"_s, at(u"heim/daten"_s));
        environment.insert(u"XDG_STATE_HOME"_s, at(u"heim/state"_s));
        environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(ORVANTINE_LAUBFEGER), arguments);
        return process.waitForFinished() ? process.exitCode() : -1;
    }
    void writeFolder(const QString& text)
    {
        QDir().mkpath(at(u"heim"_s));
        RegSettings settings({.file = at(u"heim/config/Orvanten Manager/settings.reg"_s)});
        const QString key = u"Software\\Verdanis\\Orvant Manager"_s;
        settings.createKey(Hive::CurrentUser, key);
        SettingValue value;
        value.type = SettingType::String;
        value.text = text;
        ASSERT_TRUE(settings.setValue(Hive::CurrentUser, key, u"Database"_s, value));
    }
};

} // namespace

TEST_F(Reset, AllEntriesOfTheDatabaseAreDeletedAndTheLocalPlaylistsAreInTheTrash)
{
    EXPECT_TRUE(reset());
    EXPECT_EQ("", bytes(u"Daten/Orvantine.dat"_s));
    EXPECT_EQ("Notiz.txt", names(u"Daten/Playlisten"_s));
    EXPECT_EQ("Rock.bak Rock.m3u Über Jazz.PLS", names(u"Trash/files"_s));
    EXPECT_EQ("/a.mp3\r\n", bytes(u"Trash/files/Rock.m3u"_s));
    EXPECT_EQ("[Trash Info]\nPath=" + at(u"Daten/Playlisten"_s).toUtf8().toPercentEncoding("/") +
                  "/%C3%9Cber%20Jazz.PLS\nDeletionDate=2026-11-20T12:34:56\n",
              bytes(u"Trash/info/Über Jazz.PLS.trashinfo"_s));
    EXPECT_EQ("Bild", bytes(u"Daten/Resource/Rock.jpg"_s));
    EXPECT_EQ("[Index]\r\n1b=Frueher\r\n", bytes(u"Daten/Orvantine.bak"_s));
}

TEST_F(Reset, WhatLiesInTheTrashKeepsItsName)
{
    QDir().mkpath(at(u"Trash/files"_s));
    put(u"Trash/files/Rock.m3u"_s, "von frueher");
    EXPECT_TRUE(reset());
    EXPECT_EQ("von frueher", bytes(u"Trash/files/Rock.m3u"_s));
    EXPECT_EQ("/a.mp3\r\n", bytes(u"Trash/files/Rock 2.m3u"_s));
    EXPECT_NE("(missing)", bytes(u"Trash/info/Rock 2.m3u.trashinfo"_s));
}

TEST_F(Reset, ATimeOfAListIsKeptInTheTrash)
{
    const timespec times[2] = {{0, UTIME_OMIT}, {1000000000, 0}};
    ASSERT_EQ(0, ::utimensat(AT_FDCWD, at(u"Daten/Playlisten/Rock.m3u"_s).toUtf8().constData(), times, 0));
    EXPECT_TRUE(reset());
    EXPECT_EQ(1000000000, QFileInfo(at(u"Trash/files/Rock.m3u"_s)).lastModified().toSecsSinceEpoch());
}

TEST_F(Reset, AListThatCannotBeMovedLeavesEverything)
{
    QDir().mkpath(at(u"Daten/Playlisten"_s));
    ASSERT_EQ(0, ::unlink(at(u"Daten/Playlisten/Rock.bak"_s).toUtf8().constData()));
    ASSERT_EQ(0, ::symlink("/dev/null", at(u"Trash"_s).toUtf8().constData()));
    EXPECT_FALSE(reset());
    EXPECT_EQ("[Index]\r\n1b=Rock\r\n[TagInfo]\r\n/a.mp3=A\r\n", bytes(u"Daten/Orvantine.dat"_s));
    EXPECT_EQ("Notiz.txt Rock.m3u Über Jazz.PLS", names(u"Daten/Playlisten"_s));
}

TEST_F(Reset, AWriteProtectedDatabaseLeavesEverything)
{
    ASSERT_EQ(0, ::chmod(at(u"Daten/Orvantine.dat"_s).toUtf8().constData(), 0444));
    EXPECT_FALSE(reset());
    expectUntouched();
}

TEST_F(Reset, AFolderWithNeitherADatabaseNorListsIsNotTouched)
{
    ASSERT_TRUE(QFile::remove(at(u"Daten/Orvantine.dat"_s)));
    ASSERT_TRUE(QDir().rename(at(u"Daten/Playlisten"_s), at(u"anderswo"_s)));
    EXPECT_FALSE(reset());
    EXPECT_FALSE(QFile::exists(at(u"Trash"_s)));
}

TEST_F(Reset, WithoutADatabaseTheListsGoToTheTrashAndNoneIsMade)
{
    ASSERT_TRUE(QFile::remove(at(u"Daten/Orvantine.dat"_s)));
    EXPECT_TRUE(reset());
    EXPECT_EQ("Notiz.txt", names(u"Daten/Playlisten"_s));
    EXPECT_EQ("Rock.bak Rock.m3u Über Jazz.PLS", names(u"Trash/files"_s));
    EXPECT_EQ("(missing)", bytes(u"Daten/Orvantine.dat"_s));
}

TEST_F(Reset, WhatStandsInThePlaceOfTheDatabaseAndIsNoneLeavesEverything)
{
    ASSERT_TRUE(QFile::remove(at(u"Daten/Orvantine.dat"_s)));
    ASSERT_TRUE(QDir().mkpath(at(u"Daten/Orvantine.dat"_s)));
    EXPECT_FALSE(reset());
    EXPECT_EQ("Notiz.txt Rock.bak Rock.m3u Über Jazz.PLS", names(u"Daten/Playlisten"_s));
}

TEST_F(Reset, AListWhoseNameBeginsWithADotGoesAsWell)
{
    put(u"Daten/Playlisten/...And Justice.m3u"_s, "/j.mp3\r\n");
    EXPECT_TRUE(reset());
    EXPECT_EQ("Notiz.txt", names(u"Daten/Playlisten"_s));
    EXPECT_EQ("/j.mp3\r\n", bytes(u"Trash/files/...And Justice.m3u"_s));
}

TEST_F(Reset, ANameTooLongForItsDetailsIsCutOnACharacterAndItsPathIsTrue)
{
    const QString stem = QString(124, u'ü') + u"a"_s;
    const QString name = stem + u".m3u"_s;
    put(u"Daten/Playlisten/"_s + name, "/lang.mp3\r\n");
    EXPECT_TRUE(reset());
    // 255 bytes less those of ".m3u" and ".trashinfo", in whole characters of two.
    const QString cut = QString(120, u'ü') + u".m3u"_s;
    EXPECT_EQ("/lang.mp3\r\n", bytes(u"Trash/files/"_s + cut));
    EXPECT_TRUE(bytes(u"Trash/info/"_s + cut + u".trashinfo"_s)
                    .contains("Path=" + at(u"Daten/Playlisten/"_s + name).toUtf8().toPercentEncoding("/") + '\n'));
}

TEST_F(Reset, TwoNamesThatAreCutToOneAreKeptApart)
{
    const QString stem(245, u'x');
    put(u"Daten/Playlisten/"_s + stem + u"1.m3u"_s, "eins");
    put(u"Daten/Playlisten/"_s + stem + u"2.m3u"_s, "zwei");
    EXPECT_TRUE(reset());
    EXPECT_EQ("eins", bytes(u"Trash/files/"_s + QString(241, u'x') + u".m3u"_s));
    EXPECT_EQ("zwei", bytes(u"Trash/files/"_s + QString(239, u'x') + u" 2.m3u"_s));
}

TEST_F(Reset, AFolderOfListsThatCannotBeReadLeavesTheDatabase)
{
    ASSERT_TRUE(fake::giveToNobody(folder.path()));
    const QByteArray lists = at(u"Daten/Playlisten"_s).toUtf8();
    ASSERT_EQ(0, ::chmod(lists.constData(), 0300));
    EXPECT_EXIT(fake::exitAsNobody([this] { return !reset(); }), testing::ExitedWithCode(0), "");
    ASSERT_EQ(0, ::chmod(lists.constData(), 0700));
    expectUntouched();
}

TEST_F(Reset, AFolderOfListsThatIsALinkIsNotTouched)
{
    ASSERT_TRUE(QDir().rename(at(u"Daten/Playlisten"_s), at(u"anderswo"_s)));
    ASSERT_EQ(0, ::symlink("../anderswo", at(u"Daten/Playlisten"_s).toUtf8().constData()));
    EXPECT_FALSE(reset());
    EXPECT_EQ("Notiz.txt Rock.bak Rock.m3u Über Jazz.PLS", names(u"anderswo"_s));
}

TEST_F(Reset, WhatAKilledResetHasChangedIsPutBackAtTheNextStartOfTheProgram)
{
    XdgFolders folders;
    folders.stateHome = at(u"state"_s);
    EXPECT_EXIT(
        {
            PosixFiles files({.recoveryFolder = resetFolder(folders)});
            files.beginWhole();
            files.remove(at(u"Daten/Playlisten/Rock.m3u"_s));
            files.writeBytes(at(u"Daten/Orvantine.dat"_s), {});
            ::_exit(files.exists(at(u"Daten/Playlisten/Rock.m3u"_s)) ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ("", bytes(u"Daten/Orvantine.dat"_s));
    settleReset(folders);
    expectUntouched();
}

TEST_F(Reset, WithoutAHomeThereIsNothingToPutBack)
{
    EXPECT_EQ("", resetFolder({}).toStdString());
    settleReset({});
    expectUntouched();
}

TEST_F(Laubfeger, TakesTheFolderOfTheSettings)
{
    writeFolder(at(u"Daten/"_s));
    EXPECT_EQ(0, run());
    EXPECT_EQ("", bytes(u"Daten/Orvantine.dat"_s));
    EXPECT_EQ("Rock.bak Rock.m3u Über Jazz.PLS", names(u"heim/daten/Trash/files"_s));
}

TEST_F(Laubfeger, FindsAFolderOnADriveOfTheSettings)
{
    writeFolder(u"D:\\Daten\\"_s);
    RegSettings settings({.file = at(u"heim/config/Orvanten Manager/settings.reg"_s)});
    const QString drives = u"Software\\Verdanis\\Orvant Manager\\Laufwerke"_s;
    settings.createKey(Hive::CurrentUser, drives);
    SettingValue value;
    value.type = SettingType::String;
    value.text = folder.path();
    ASSERT_TRUE(settings.setValue(Hive::CurrentUser, drives, u"D:"_s, value));
    EXPECT_EQ(0, run());
    EXPECT_EQ("", bytes(u"Daten/Orvantine.dat"_s));
    EXPECT_EQ("Notiz.txt", names(u"Daten/Playlisten"_s));
}

TEST_F(Laubfeger, RefusesAnythingElse)
{
    EXPECT_EQ(1, run());
    expectUntouched();
    writeFolder(u"Daten/"_s);
    EXPECT_EQ(1, run());
    expectUntouched();
    writeFolder(at(u"fehlt/"_s));
    EXPECT_EQ(1, run());
    expectUntouched();
    writeFolder(at(u"Daten/"_s));
    EXPECT_EQ(2, run({at(u"Daten/"_s)}));
    expectUntouched();
}

} // namespace orvantine
