#include "desktop/posix/KeptVersions.h"
#include "TempWorld.h"
#include "desktop/posix/RecoveryStore.h"

#include <QCryptographicHash>
#include <QDir>

#include <sys/stat.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class Kept : public testing::Test
{
protected:
    Kept() { EXPECT_EQ(::chmod(folder.path().toUtf8().constData(), 0700), 0); }

    void write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    [[nodiscard]] QStringList paths() const
    {
        QStringList found;
        for (const EarlierVersion& version : versions.list().value_or(EarlierVersionList()).versions)
            found += version.path + u'|' + version.reason;
        return found;
    }

    QTemporaryDir folder;
    KeptVersions versions{folder.path()};
};

} // namespace

TEST_F(Kept, ATableOfOldWithoutReasonsIsReadBesideNewLines)
{
    write(u"c1-a.m3u"_s, "x");
    write(u"c2-b.m3u"_s, "yy");
    write(u"Contents"_s, "1700000000\tc1-a.m3u\t/m/a.m3u\n"
                         "1700000001\tc2-b.m3u\t/m/b.m3u\tPlayliste%20sortieren\n"
                         "1700000002\tc2-b.m3u\t/m/b.m3u\tx\ty\n");
    EXPECT_EQ(paths(), (QStringList{u"/m/b.m3u|Playliste sortieren"_s, u"/m/a.m3u|"_s}));
    EXPECT_EQ(versions.list()->room, 3);
    EXPECT_EQ(versions.list()->versions[1].when, QDateTime::fromSecsSinceEpoch(1700000000));
}

TEST_F(Kept, TheReasonOutlivesTheRemovalOfOldCopies)
{
    write(u"c1-a.m3u"_s, "x");
    write(u"Contents"_s, "1\tgone\t/m/gone.m3u\n1700000000\tc1-a.m3u\t/m/a.m3u\tL%C3%B6schen\n");
    RecoveryStore store(folder.path().toUtf8());
    store.setReason(u"Umbenennen"_s);
    ASSERT_TRUE(store.keep("/m/b.m3u", "neu"));
    QFile contents(folder.filePath(u"Contents"_s));
    ASSERT_TRUE(contents.open(QIODevice::ReadOnly));
    EXPECT_FALSE(contents.readAll().contains("gone"));
    EXPECT_EQ(paths(), (QStringList{u"/m/b.m3u|Umbenennen"_s, u"/m/a.m3u|Löschen"_s}));
}

TEST_F(Kept, WhatIsNoCopyIsNoVersion)
{
    write(u"outside"_s, "x");
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"folder"_s));
    ASSERT_TRUE(QFile::link(folder.filePath(u"outside"_s), folder.filePath(u"link"_s)));
    write(u"Contents"_s, "1\tfolder\t/m/a.m3u\n1\tlink\t/m/a.m3u\n1\t..\t/m/a.m3u\n1\t../outside\t/m/a.m3u\n"
                         "1\tgone\t/m/a.m3u\nnonsense\n\n");
    EXPECT_EQ(paths(), QStringList());
    for (const char* const handle : {"folder", "link", "..", "."})
        EXPECT_FALSE(versions.bytes(handle).done()) << handle;
}

TEST_F(Kept, ACopyThatIsNotWhatWasKeptIsNotHandedOut)
{
    const QByteArray handle = QCryptographicHash::hash("eins", QCryptographicHash::Sha256).toHex() + "-a-b.m3u";
    write(QString::fromUtf8(handle), "eins");
    EXPECT_EQ(versions.bytes(handle).bytes, "eins");
    write(QString::fromUtf8(handle), QByteArray(4, '\0'));
    EXPECT_EQ(versions.bytes(handle).outcome, ReadOutcome::Failed);
}

TEST_F(Kept, ACopyOfTheStoreThatWasDamagedIsNotHandedOut)
{
    RecoveryStore store(folder.path().toUtf8());
    ASSERT_TRUE(store.keep("/m/a.m3u", "eins"));
    const QByteArray handle = versions.list()->versions.at(0).handle;
    EXPECT_EQ(versions.bytes(handle).bytes, "eins");
    write(QString::fromUtf8(handle), QByteArray(4, '\0'));
    EXPECT_EQ(versions.bytes(handle).outcome, ReadOutcome::Failed);
}

TEST_F(Kept, ATableThatCannotBeReadIsNoEmptyOne)
{
    ASSERT_TRUE(QDir(folder.path()).mkdir(u"Contents"_s));
    EXPECT_FALSE(versions.list().has_value());
}

TEST_F(Kept, WithoutAFolderNothingIsKept)
{
    const KeptVersions none({});
    ASSERT_TRUE(none.list().has_value());
    EXPECT_TRUE(none.list()->versions.empty());
    EXPECT_FALSE(none.bytes("x").done());
    EXPECT_TRUE(KeptVersions(u"/dev/null/x"_s).list()->versions.empty());
}

TEST_F(Kept, APathThatIsNotUtf8IsToldAsTheFilesServiceNamesIt)
{
    TempWorld world;
    world.put("f\xfcr.m3u", "eins");
    ASSERT_TRUE(world.files().writeBytes(world.folder() + u"/für.m3u"_s, "zwei"));
    const std::optional<EarlierVersionList> list = world.versions().list();
    ASSERT_TRUE(list.has_value() && list->versions.size() == 1);
    EXPECT_EQ(list->versions[0].path, world.folder() + u"/für.m3u"_s);
}

} // namespace orvantine
