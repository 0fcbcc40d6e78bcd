#include "desktop/posix/RecoveryStore.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <algorithm>

#include <sys/stat.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class StoredCopies : public testing::Test
{
protected:
    [[nodiscard]] QStringList copies() const { return QDir(m_folder.path()).entryList({u"*-*"_s}, QDir::Files); }
    [[nodiscard]] QByteArray bytes(const QString& name) const
    {
        QFile file(m_folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
    }
    void overwrite(const QString& name, const QByteArray& bytes) const
    {
        QFile file(m_folder.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }

    QTemporaryDir m_folder;
};

TEST_F(StoredCopies, OtherBytesUnderTheSameSumAreNotTakenForACopy)
{
    RecoveryStore store(m_folder.path().toUtf8());
    ASSERT_TRUE(store.keep("/a.m3u", "eins"));
    ASSERT_EQ(1, copies().size());
    // As a copy that was not written to its end.
    overwrite(copies().constFirst(), QByteArray(4, '\0'));
    ASSERT_TRUE(store.keep("/a.m3u", "eins"));
    QByteArrayList found;
    const QStringList names = copies();
    for (const QString& name : names)
        found << bytes(name);
    std::sort(found.begin(), found.end());
    EXPECT_EQ((QByteArrayList{QByteArray(4, '\0'), "eins"}), found);
    ASSERT_TRUE(store.keep("/a.m3u", "eins"));
    EXPECT_EQ(2, copies().size());
}

TEST_F(StoredCopies, LargeBytesThatStandUnderAnotherNameTakeNoMoreRoom)
{
    const QByteArray large(2 << 20, 'x');
    RecoveryStore store(m_folder.path().toUtf8());
    ASSERT_TRUE(store.keep("/Orvantine.dat", large));
    ASSERT_TRUE(store.keep("/Orvantine.bak", large));
    ASSERT_EQ(2, copies().size());
    struct stat info = {};
    for (const QString& name : copies()) {
        EXPECT_EQ(large, bytes(name));
        ASSERT_EQ(0, ::stat(m_folder.filePath(name).toUtf8().constData(), &info));
        EXPECT_EQ(2U, info.st_nlink);
    }
    EXPECT_TRUE(bytes(u"Contents"_s).contains("\t/Orvantine.bak\n"));
}

TEST_F(StoredCopies, WhatWasKeptIsEnteredAndCanBeSettledMoreThanOnce)
{
    RecoveryStore store(m_folder.path().toUtf8());
    EXPECT_TRUE(store.settle()) << "there is nothing to settle";
    ASSERT_TRUE(store.keep("/a.m3u", "eins"));
    EXPECT_TRUE(store.settle());
    EXPECT_TRUE(store.settle());
    ASSERT_TRUE(store.keep("/a.m3u", "zwei"));
    // Without its table it is not settled.
    ASSERT_TRUE(QFile::remove(m_folder.filePath(u"Contents"_s)));
    EXPECT_FALSE(store.settle());
    EXPECT_TRUE(store.settle()) << "told once";
}

} // namespace

} // namespace orvantine
