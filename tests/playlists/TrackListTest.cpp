#include "playlists/TrackList.h"

#include "playlists/TrackRow.h"

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

using Content = TrackList::Content;

/// A list of its own controls.
class TrackListAlone : public testing::Test
{
protected:
    static std::vector<ListItem> rowsOf(const QStringList& paths)
    {
        std::vector<ListItem> rows;
        for (const QString& path : paths)
            rows.push_back(itemOf({.number = static_cast<int>(rows.size()) + 1, .name = path, .path = path}));
        return rows;
    }
    /// A read that shows these paths of a file with so many entries.
    void read(const QString& file, const QStringList& paths, std::optional<qsizetype> entries)
    {
        TrackList::Reading reading = list.open(file);
        reading.take(rowsOf(paths), entries == paths.size());
    }
    [[nodiscard]] std::string text(const QString& file)
    {
        return list.hold().textFor(file).value_or(u"-"_s).toStdString();
    }

    ControlSet controls;
    ListView rows{controls, u"LListView2"};
    TextBox lines{controls, u"tPlayliste"};
    TrackList list{rows, lines};
};

} // namespace

TEST_F(TrackListAlone, NothingIsInSightAtFirst)
{
    EXPECT_EQ(Content::None, list.content());
    EXPECT_EQ("", list.path().toStdString());
    EXPECT_FALSE(list.hold().valid());
    EXPECT_EQ("-", text({}));
}

TEST_F(TrackListAlone, RowsThatAReadVouchedForAreWritten)
{
    read(u"/l/a.m3u"_s, {u"/m/1.mp3"_s, u"/m/2.mp3"_s}, 2);
    EXPECT_EQ(Content::Own, list.content());
    EXPECT_EQ("/m/1.mp3\r\n/m/2.mp3\r\n", text(u"/m/1.mp3\r\n/m/2.mp3\r\n\r\n"_s));
}

TEST_F(TrackListAlone, FewerOrOtherRowsThanTheFileHoldsAreNeverWritten)
{
    read(u"/l/a.m3u"_s, {u"/m/1.mp3"_s}, 2);
    EXPECT_EQ(Content::Stale, list.content());
    EXPECT_EQ("-", text({}));
    read(u"/l/a.m3u"_s, {u"/m/1.mp3"_s}, {});
    EXPECT_EQ(Content::Stale, list.content()) << "nobody could count the entries";
    EXPECT_FALSE(list.hold().append(ListItem()));
    EXPECT_FALSE(list.hold().remove(1));
    EXPECT_FALSE(list.hold().move(1));
    EXPECT_FALSE(list.hold().sort(2));
    EXPECT_FALSE(list.hold().renumber(1));
    EXPECT_FALSE(list.hold().setPath(1, u"/x"_s));
    EXPECT_EQ(1, rows.count());
}

TEST_F(TrackListAlone, AReadThatIsDroppedVouchesForNothing)
{
    {
        const TrackList::Reading reading = list.open(u"/l/a.m3u"_s);
        EXPECT_EQ(Content::Reading, list.content());
        EXPECT_EQ("/l/a.m3u", list.path().toStdString());
        EXPECT_EQ("-", text({}));
    }
    EXPECT_EQ(Content::Stale, list.content());
    EXPECT_EQ("-", text({}));
}

TEST_F(TrackListAlone, OfTwoReadsTheLaterOwnsTheList)
{
    TrackList::Reading first = list.open(u"/l/a.m3u"_s);
    read(u"/l/b.m3u"_s, {u"/m/b.mp3"_s}, 1);
    EXPECT_TRUE(first.overtaken());
    first.take(rowsOf({u"/m/a.mp3"_s}), true);
    first.follow(u"/l/c.m3u"_s);
    first.finish();
    EXPECT_EQ("/l/b.m3u", list.path().toStdString());
    EXPECT_EQ("/m/b.mp3\r\n", text({}));
}

TEST_F(TrackListAlone, AHoldIsVoidForGoodOnceTheListIsReadAgain)
{
    read(u"/l/a.m3u"_s, {u"/m/1.mp3"_s}, 1);
    TrackList::Hold hold = list.hold();
    EXPECT_TRUE(hold.valid());
    read(u"/l/a.m3u"_s, {u"/m/1.mp3"_s}, 1);
    EXPECT_FALSE(hold.inSight());
    EXPECT_FALSE(hold.remove(1));
    EXPECT_FALSE(hold.follow(u"/l/b.m3u"_s));
    EXPECT_FALSE(hold.textFor({}).has_value());
    EXPECT_EQ(1, rows.count());
    EXPECT_EQ("/l/a.m3u", list.path().toStdString());
}

TEST_F(TrackListAlone, AFileThatHasGrownMeanwhileIsNotWrittenOver)
{
    read(u"/l/a.m3u"_s, {u"/m/1.mp3"_s, u"/m/2.mp3"_s}, 2);
    list.hold().remove(1);
    EXPECT_EQ("/m/2.mp3\r\n", text(u"/m/1.mp3\r\n/m/2.mp3\r\n"_s));
    EXPECT_EQ("-", text(u"/m/1.mp3\r\n/m/2.mp3\r\n/m/3.mp3\r\n"_s));
    EXPECT_EQ("-", text(u"/m/1.mp3\r/m/2.mp3\r/m/3.mp3"_s)) << "however the lines end";
    EXPECT_EQ("/m/2.mp3\r\n", text(u"#EXTM3U\r\n\r\n/m/1.mp3\r\n/m/2.mp3"_s)) << "comments are no entries";
    EXPECT_TRUE(list.hold().written(u"/m/2.mp3\r\n"_s));
    EXPECT_EQ("-", text(u"/m/1.mp3\r\n/m/2.mp3\r\n"_s));
}

TEST_F(TrackListAlone, ANewListIsItsOwnAndAFileThatNobodyHasReadIsNot)
{
    list.begin(u"/l/neu.m3u"_s);
    EXPECT_EQ("\r\n", text({}));
    EXPECT_EQ("-", text(u"/m/1.mp3\r\n"_s));
    list.begin(u"/l/alt.m3u"_s, Content::Stale);
    EXPECT_EQ("-", text({}));
    list.takeOwn(rowsOf({u"/m/1.mp3"_s}), u"/m/1.mp3\r\n"_s, 1);
    EXPECT_EQ("/m/1.mp3\r\n", text(u"/m/1.mp3\r\n"_s));
    EXPECT_TRUE(list.hold().linesAreOwn());
    list.close();
    EXPECT_EQ(Content::None, list.content());
    EXPECT_EQ(0, rows.count());
}

TEST_F(TrackListAlone, LinesOfAnotherListAreNotItsOwn)
{
    read(u"/l/a.m3u"_s, {u"/m/1.mp3"_s}, 1);
    EXPECT_FALSE(list.hold().linesAreOwn());
    EXPECT_TRUE(list.hold().putRowsIntoLines());
    EXPECT_TRUE(list.hold().appendLine(u"/m/2.mp3"_s));
    EXPECT_EQ("/m/1.mp3\r\n/m/2.mp3\r\n", lines.Text.value().toStdString());
    EXPECT_TRUE(list.hold().follow(u"/k/a.m3u"_s));
    EXPECT_TRUE(list.hold().linesAreOwn());
    list.setLines(u"x\r\n"_s, u"/l/b.m3u"_s);
    EXPECT_FALSE(list.hold().linesAreOwn());
}

} // namespace orvantine
