#include "FilesContract.h"

#include <QStringList>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Name, size, reason and bytes of each.
QStringList linesOf(const EarlierVersions& versions, const QString& folder)
{
    QStringList lines;
    const std::optional<EarlierVersionList> list = versions.list();
    EXPECT_TRUE(list.has_value());
    for (const EarlierVersion& version : list.value_or(EarlierVersionList()).versions) {
        EXPECT_TRUE(version.path.startsWith(folder + u'/')) << version.path.toStdString();
        lines += u"%1 %2 (%3) %4"_s.arg(version.path.mid(folder.size() + 1))
                     .arg(version.size)
                     .arg(version.reason, QString::fromUtf8(versions.bytes(version.handle).bytes));
    }
    return lines;
}

std::string joined(const QStringList& lines)
{
    return lines.join(u'\n').toStdString();
}

} // namespace

// Earlier versions

TEST_P(FilesContract, OfAUserWhoChangedNothingThereIsNoEarlierVersion)
{
    const std::optional<EarlierVersionList> list = m_world->versions().list();
    ASSERT_TRUE(list.has_value());
    EXPECT_TRUE(list->versions.empty());
    EXPECT_EQ(list->room, 0);
}

TEST_P(FilesContract, EarlierVersionsAreToldTheNewestFirstWithTheCommandThatReplacedThem)
{
    ASSERT_TRUE(put(u"a.m3u"_s, "eins"));
    ASSERT_TRUE(put(u"a.m3u"_s, "zwei"));
    files().nameCommand(u"Einträge verschieben: Aufwärts"_s);
    ASSERT_TRUE(put(u"a.m3u"_s, "dritte"));
    files().nameCommand(u"Löschen"_s);
    ASSERT_TRUE(files().remove(at(u"a.m3u"_s)));
    files().nameCommand({});
    ASSERT_TRUE(put(u"b ü.m3u"_s, "vier"));
    ASSERT_TRUE(put(u"b ü.m3u"_s, ""));
    EXPECT_EQ(joined(linesOf(m_world->versions(), m_world->folder())), "b ü.m3u 4 () vier\n"
                                                                       "a.m3u 6 (Löschen) dritte\n"
                                                                       "a.m3u 4 (Einträge verschieben: Aufwärts) zwei\n"
                                                                       "a.m3u 4 () eins");
}

TEST_P(FilesContract, AReasonMayHoldAnyCharacter)
{
    ASSERT_TRUE(put(u"a.m3u"_s, "eins"));
    files().nameCommand(u"a\tb\nc%09 \"ß\" "_s);
    ASSERT_TRUE(put(u"a.m3u"_s, "zwei"));
    EXPECT_EQ(joined(linesOf(m_world->versions(), m_world->folder())), "a.m3u 4 (a\tb\nc%09 \"ß\" ) eins");
}

TEST_P(FilesContract, EqualBytesTakeRoomOnceForEachName)
{
    for (const char* const content : {"eins", "zwei", "eins", "zwei"})
        ASSERT_TRUE(put(u"a.m3u"_s, content));
    const std::optional<EarlierVersionList> list = m_world->versions().list();
    ASSERT_TRUE(list.has_value());
    EXPECT_EQ(list->versions.size(), 3U);
    EXPECT_EQ(list->room, 8);
}

TEST_P(FilesContract, TheTimeOfAnEarlierVersionIsThatOfItsReplacement)
{
    ASSERT_TRUE(put(u"a.m3u"_s, "eins"));
    ASSERT_TRUE(put(u"a.m3u"_s, "zwei"));
    const std::optional<EarlierVersionList> list = m_world->versions().list();
    ASSERT_TRUE(list.has_value() && list->versions.size() == 1);
    const std::optional<QDateTime> written = files().modified(at(u"a.m3u"_s));
    ASSERT_TRUE(written.has_value());
    EXPECT_LE(std::abs(list->versions[0].when.secsTo(*written)), 2);
}

TEST_P(FilesContract, AVersionThatNobodyKeptIsMissing)
{
    ASSERT_TRUE(put(u"a.m3u"_s, "eins"));
    ASSERT_TRUE(put(u"a.m3u"_s, "zwei"));
    for (const char* const handle : {"", "nichts", "..", "../a.m3u", "a\0b"})
        EXPECT_FALSE(m_world->versions().bytes(handle).done()) << handle;
    EXPECT_EQ(m_world->versions().bytes("nichts").outcome, ReadOutcome::Missing);
}

TEST_P(FilesContract, AnEarlierVersionThatIsPutBackLeavesThePresentOneAsAnEarlierVersion)
{
    ASSERT_TRUE(put(u"a.m3u"_s, "eins"));
    ASSERT_TRUE(put(u"a.m3u"_s, "zwei"));
    const ReadBytes old = m_world->versions().bytes(m_world->versions().list()->versions[0].handle);
    ASSERT_TRUE(old.done());
    files().nameCommand(u"Frühere Fassungen"_s);
    {
        WholeChange together(files());
        ASSERT_TRUE(files().writeBytes(at(u"a.m3u"_s), old.bytes));
        ASSERT_TRUE(together.end());
    }
    EXPECT_EQ(bytes(u"a.m3u"_s), "eins");
    EXPECT_EQ(joined(linesOf(m_world->versions(), m_world->folder())), "a.m3u 4 (Frühere Fassungen) zwei\n"
                                                                       "a.m3u 4 () eins");
}

} // namespace orvantine
