#include "desktop/posix/PosixFiles.h"
#include "desktop/posix/PosixFolderWalks.h"
#include "support/FakeWalks.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <thread>

#include <sys/stat.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The walk in its thread, and the one of the tests over the same disk.
enum class Kind { Thread, Fake };

class FolderWalksContract : public testing::TestWithParam<Kind>
{
protected:
    /// Names that are not UTF-8 are beyond QTemporaryDir.
    ~FolderWalksContract() override
    {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder.path().toStdString(), ignored);
    }

    void file(const QString& name) const
    {
        const QString path = m_folder.filePath(name);
        ASSERT_TRUE(QDir().mkpath(path.left(path.lastIndexOf(u'/'))));
        QFile made(path);
        ASSERT_TRUE(made.open(QIODevice::WriteOnly));
    }
    [[nodiscard]] QString top() const { return m_folder.path(); }
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }

    /// "1 /a: x.mp3 y.mp3" for each folder, the temporary one as "".
    [[nodiscard]] std::string walked(const QString& folder, const QString& patterns = u"*.mp3"_s, int levels = 3)
    {
        const std::unique_ptr<FolderWalks> walks = make();
        const std::unique_ptr<FolderWalk> walk = walks->begin(folder, patterns, levels);
        QStringList found;
        while (!walk->done()) {
            for (const WalkedFolder& read : walk->take())
                found += u"%1 %2: %3"_s.arg(read.level)
                             .arg(QString(read.path).remove(m_folder.path()), read.files.join(u' '));
            std::this_thread::yield();
        }
        return found.join(u'\n').toStdString();
    }

private:
    [[nodiscard]] std::unique_ptr<FolderWalks> make()
    {
        if (GetParam() == Kind::Thread)
            return std::make_unique<PosixFolderWalks>();
        auto walks = std::make_unique<fake::FakeWalks>(m_log);
        walks->readFrom(m_files);
        return walks;
    }

    QTemporaryDir m_folder;
    fake::CallLog m_log;
    PosixFiles m_files{{.recoveryFolder = m_folder.path() + u"-recovery"_s}};
};

} // namespace

TEST_P(FolderWalksContract, ReadsLevelByLevelIgnoringCase)
{
    for (const QString& name : {u"b/2.mp3"_s, u"A/1.MP3"_s, u"A/x/3.mp3"_s, u"b/y/z/4.mp3"_s, u"b/y/z/tief/5.mp3"_s,
                                u"top.mp3"_s, u"Anfang.mp3"_s, u"text.txt"_s})
        file(name);
    EXPECT_EQ("0 : Anfang.mp3 top.mp3\n1 /A: 1.MP3\n1 /b: 2.mp3\n2 /A/x: 3.mp3\n2 /b/y: \n3 /b/y/z: 4.mp3",
              walked(top()));
}

TEST_P(FolderWalksContract, GoesNoDeeperThanItIsTold)
{
    file(u"a/b/1.mp3"_s);
    file(u"0.mp3"_s);
    EXPECT_EQ("0 : 0.mp3", walked(top(), u"*.mp3"_s, 0));
    EXPECT_EQ("0 : 0.mp3\n1 /a: ", walked(top(), u"*.mp3"_s, 1));
}

TEST_P(FolderWalksContract, LeavesHiddenOnesAndWhatIsNoFileOut)
{
    file(u".verborgen/1.mp3"_s);
    file(u".leise.mp3"_s);
    ASSERT_EQ(0, ::mkfifo(path(u"rohr.mp3"_s).toUtf8().constData(), 0600));
    ASSERT_TRUE(QFile::link(u"nirgends"_s, path(u"tot.mp3"_s)));
    ASSERT_TRUE(QDir().mkpath(path(u"ordner.mp3"_s)));
    EXPECT_EQ("0 : \n1 /ordner.mp3: ", walked(top()));
}

TEST_P(FolderWalksContract, FollowsALinkToAFileAndToAFolder)
{
    file(u"da/1.mp3"_s);
    file(u"hier/2.mp3"_s);
    ASSERT_TRUE(QFile::link(path(u"da/1.mp3"_s), path(u"hier/3.mp3"_s)));
    ASSERT_TRUE(QFile::link(path(u"da"_s), path(u"hier/x"_s)));
    EXPECT_EQ("0 /hier: 2.mp3 3.mp3\n1 /hier/x: 1.mp3", walked(path(u"hier"_s)));
}

TEST_P(FolderWalksContract, FindsNothingInAFolderThatIsNotThere)
{
    file(u"a.mp3"_s);
    EXPECT_EQ("", walked(path(u"nirgends"_s)));
    EXPECT_EQ("", walked(path(u"a.mp3"_s)));
}

INSTANTIATE_TEST_SUITE_P(Both, FolderWalksContract, testing::Values(Kind::Thread, Kind::Fake),
                         [](const testing::TestParamInfo<Kind>& kind) {
                             return kind.param == Kind::Thread ? "InAThread" : "OfTheTests";
                         });

class FolderWalksThread : public FolderWalksContract
{
};

TEST_P(FolderWalksThread, AFolderThatLiesInItselfAddsNothing)
{
    file(u"a/1.mp3"_s);
    ASSERT_TRUE(QFile::link(top(), path(u"a/kreis"_s)));
    ASSERT_TRUE(QFile::link(u"."_s, path(u"a/selbst"_s)));
    EXPECT_EQ("0 : \n1 /a: 1.mp3", walked(top()));
}

TEST_P(FolderWalksThread, NamesOfAnotherEncodingAreFoundAgain)
{
    ASSERT_EQ(0, ::mkdir((path(u"st"_s).toUtf8() + "\xFC"
                                                   "ck")
                             .constData(),
                         0700));
    FILE* const bytes = std::fopen((path(u"st"_s).toUtf8() + "\xFC"
                                                             "ck/\xE4.mp3")
                                       .constData(),
                                   "w");
    ASSERT_NE(nullptr, bytes);
    std::fclose(bytes);
    EXPECT_EQ("0 : \n1 /stück: ä.mp3", walked(top()));
}

INSTANTIATE_TEST_SUITE_P(InAThread, FolderWalksThread, testing::Values(Kind::Thread));

TEST(FolderWalks, ThoseThatAreDroppedInTheMiddleDisturbNoOther)
{
    constexpr int Folders = 200;
    const QTemporaryDir folder;
    for (int i = 0; i < Folders; ++i)
        ASSERT_TRUE(QDir(folder.path()).mkpath(u"a%1/b/c"_s.arg(i)));
    PosixFolderWalks walks;
    for (int i = 0; i < 20; ++i)
        (void)walks.begin(folder.path(), u"*"_s, 3);
    const std::unique_ptr<FolderWalk> last = walks.begin(folder.path(), u"*"_s, 3);
    std::size_t read = 0;
    while (!last->done()) {
        read += last->take().size();
        std::this_thread::yield();
    }
    EXPECT_EQ(3U * Folders + 1, read);
}

} // namespace orvantine
