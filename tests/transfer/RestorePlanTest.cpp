#include "transfer/RestorePlan.h"

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 Plenty = qint64{1} << 40;

ArchiveEntry file(const QString& name, qint64 size = 10, qint64 packed = 10)
{
    return {.name = name, .kind = ArchiveEntry::Kind::File, .size = size, .packedSize = packed, .modified = {}};
}

ArchiveEntry folder(const QString& name)
{
    return {.name = name, .kind = ArchiveEntry::Kind::Folder, .size = 0, .packedSize = 0, .modified = {}};
}

std::optional<RestorePlan> plan(const std::vector<ArchiveEntry>& entries, qint64 room = Plenty, qint64 size = Plenty)
{
    const auto planned = planRestore(entries, size, room);
    const auto* const found = std::get_if<RestorePlan>(&planned);
    return found != nullptr ? std::optional(*found) : std::nullopt;
}

/// "kind entry".
std::string obstacle(const std::vector<ArchiveEntry>& entries, qint64 room = Plenty)
{
    const auto planned = planRestore(entries, Plenty, room);
    const auto* const found = std::get_if<RestoreObstacle>(&planned);
    if (found == nullptr)
        return "none";
    return std::to_string(static_cast<int>(found->kind)) + ' ' + found->entry.toStdString();
}

} // namespace

TEST(RestorePlan, PicturesGoToResourceAndAllElseToPlaylisten)
{
    const auto found = plan({file(u"a.m3u"_s), file(u"b.JPG"_s), file(u"sub/c.gif"_s), file(u"d.Bmp"_s),
                             file(u"Orvantine.dat"_s), folder(u"leer/"_s), file(u"e.jpeg"_s)});
    ASSERT_TRUE(found);
    std::vector<bool> pictures;
    for (const RestoredFile& one : found->files)
        pictures.push_back(one.picture);
    EXPECT_EQ((std::vector<bool>{false, true, true, true, false, false}), pictures);
    EXPECT_EQ(QStringList{u"leer"_s}, found->folders);
    EXPECT_EQ(4U, found->database);
}

TEST(RestorePlan, OnlyTheDatabaseBesideTheListsCountsAsOne)
{
    EXPECT_FALSE(plan({file(u"a.m3u"_s)})->database);
    EXPECT_FALSE(plan({file(u"sub/Orvantine.dat"_s)})->database);
    EXPECT_EQ(0U, plan({file(u"ORVANTINE.DAT"_s)})->database);
}

TEST(RestorePlan, AnEmptyArchiveIsNoBackup)
{
    EXPECT_FALSE(plan({}));
}

TEST(RestorePlan, OneNameThatWouldLeaveTheFoldersSpoilsTheWhole)
{
    const QStringList names{u"../x"_s,
                            u"a/../../x"_s,
                            u"a/../x"_s,
                            u".."_s,
                            u"."_s,
                            u"./x"_s,
                            u"a/./x"_s,
                            u"/x"_s,
                            u"//h/x"_s,
                            u"a//x"_s,
                            u"..\\x"_s,
                            u"a\\b"_s,
                            u"C:\\x"_s,
                            u"C:x"_s,
                            u"\\\\host\\x"_s,
                            u""_s,
                            u"/"_s,
                            u"a\nb"_s,
                            u"a\rb"_s,
                            u"a\tb"_s,
                            u"a\u007fb"_s,
                            u"a\u0085b"_s,
                            QString(u"a"_s) + QChar(u'\0') + u"b"_s,
                            u"a*b"_s,
                            u"a?b"_s,
                            u"a\"b"_s,
                            u"a<b"_s,
                            u"a|b"_s,
                            u"a\uFFFDb"_s,
                            QString(256, u'x'),
                            QString(128, u'ü'),
                            u"a/"_s + QString(256, u'x'),
                            QString(2000, u'x').replace(u"xxxxxxxxxx"_s, u"xxxxxxxxx/"_s) + QString(2000, u'/')};
    for (const QString& name : names) {
        EXPECT_FALSE(isRestorableName(name)) << name.toStdString();
        EXPECT_FALSE(plan({file(u"gut.m3u"_s), file(name)})) << name.toStdString();
    }
}

TEST(RestorePlan, OddNamesThatStayInsideAreTaken)
{
    for (const QString& name : {u"a'b"_s, u" a"_s, u"%s%n"_s, u"$(x)"_s, u"..."_s, u"a..m3u"_s, u"..m3u"_s, u".m3u"_s,
                                u"-rf"_s, u"~"_s, u"[Index]"_s, u"ü/ä.m3u"_s, u"a."_s, u"😀.m3u"_s})
        EXPECT_TRUE(isRestorableName(name)) << name.toStdString();
}

TEST(RestorePlan, ANameThatComesTwiceSpoilsTheWhole)
{
    EXPECT_FALSE(plan({file(u"a.m3u"_s), file(u"a.m3u"_s)}));
    EXPECT_FALSE(plan({file(u"ä.m3u"_s), file(u"Ä.M3U"_s)}));
    EXPECT_FALSE(plan({file(u"ä.m3u"_s), file(u"a\u0308.m3u"_s)}));
    EXPECT_FALSE(plan({file(u"x"_s), folder(u"x/"_s)}));
    EXPECT_FALSE(plan({folder(u"x/"_s), file(u"X"_s)}));
    EXPECT_FALSE(plan({file(u"x"_s), file(u"x/y"_s)}));
    EXPECT_FALSE(plan({file(u"x/y"_s), file(u"x"_s)}));
    EXPECT_TRUE(plan({folder(u"x/"_s), folder(u"x/"_s), file(u"x/y"_s)}));
}

TEST(RestorePlan, WhatIsNeitherFileNorFolderSpoilsTheWhole)
{
    ArchiveEntry link = file(u"link"_s);
    link.kind = ArchiveEntry::Kind::Other;
    EXPECT_FALSE(plan({file(u"a"_s), link}));
}

TEST(RestorePlan, AFileWhoseNameEndsInASeparatorSpoilsTheWhole)
{
    EXPECT_FALSE(plan({file(u"a/"_s)}));
    EXPECT_FALSE(plan({folder(u"a"_s)}));
}

TEST(RestorePlan, TooManyEntriesSpoilTheWhole)
{
    std::vector<ArchiveEntry> entries;
    for (qint64 i = 0; i < MostRestoredEntries; ++i)
        entries.push_back(file(QString::number(i)));
    EXPECT_TRUE(plan(entries));
    entries.push_back(file(u"zuviel"_s));
    EXPECT_FALSE(plan(entries));
}

TEST(RestorePlan, TheEntryThatStandsInTheWayIsNamed)
{
    EXPECT_EQ("none", obstacle({file(u"gut.m3u"_s)}));
    EXPECT_EQ("0 ", obstacle({}));
    EXPECT_EQ("0 AC: live/", obstacle({file(u"gut.m3u"_s), folder(u"AC: live/"_s)}));
    EXPECT_EQ("0 GUT.m3u", obstacle({file(u"gut.m3u"_s), file(u"GUT.m3u"_s)}));
    EXPECT_EQ("1 b", obstacle({file(u"a"_s), file(u"b"_s, MostRestoredBytes, MostRestoredBytes)}));
    EXPECT_EQ("2 b", obstacle({file(u"a"_s, 60, 60), file(u"b"_s, 41, 41)}, 100));
    EXPECT_EQ("1 ", obstacle(std::vector<ArchiveEntry>(MostRestoredEntries + 1)));
}

TEST(RestorePlan, SizesHaveBounds)
{
    constexpr qint64 Mebibyte = 1024 * 1024;
    // As much as there is room for.
    EXPECT_TRUE(plan({file(u"a"_s, 60, 60), file(u"b"_s, 40, 40)}, 100));
    EXPECT_FALSE(plan({file(u"a"_s, 60, 60), file(u"b"_s, 41, 41)}, 100));
    // Never more than that, and sums do not overflow.
    EXPECT_FALSE(plan({file(u"a"_s, MostRestoredBytes + 1, MostRestoredBytes + 1)}));
    EXPECT_FALSE(plan({file(u"a"_s, std::numeric_limits<qint64>::max(), 5), file(u"b"_s, 5, 5)}));
    EXPECT_FALSE(plan({file(u"a"_s, -1, 5)}));
    EXPECT_FALSE(plan({file(u"a"_s, 5, -1)}));
    // A bomb; what is small may shrink as it likes.
    EXPECT_TRUE(plan({file(u"a"_s, Mebibyte, 1)}));
    EXPECT_TRUE(plan({file(u"a"_s, 200 * Mebibyte, Mebibyte)}));
    EXPECT_FALSE(plan({file(u"a"_s, 202 * Mebibyte, Mebibyte)}));
    // One colour, or one track again and again, as far as the method can pack them.
    EXPECT_TRUE(plan({file(u"a.bmp"_s, 3 * Mebibyte, 3 * Mebibyte / 1032)}));
    EXPECT_TRUE(plan({file(u"a.m3u"_s, 64 * Mebibyte, 64 * Mebibyte / 1032)}));
    EXPECT_FALSE(plan({file(u"a"_s, 64 * Mebibyte, 64 * Mebibyte / 1100)}));
    EXPECT_FALSE(plan({file(u"a"_s, 65 * Mebibyte, 65 * Mebibyte / 1032)}));
    // Entries that lie over one another are more than the archive.
    EXPECT_FALSE(plan({file(u"a"_s, 60, 60), file(u"b"_s, 60, 60)}, Plenty, 100));
}

} // namespace orvantine
