
#include "app/LisviewMoveEntrys.h"
#include "playlists/PlaylistText.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

#include <memory>

namespace orvantine::LisviewMoveEntrys {

using namespace Qt::StringLiterals;

namespace {

ListItem plainRow(const QString& text)
{
    ListItem item;
    item.Text = text;
    return item;
}

/// A row in which every field holds something of its own.
ListItem fullRow()
{
    ListItem item;
    item.Text = u"Text"_s;
    item.Icon = u"Icon_1"_s;
    item.SmallIcon = u"Icon_6"_s;
    item.ForeColor = Color::DarkRed;
    item.Bold = true;
    item.Checked = true;
    item.Ghosted = true;
    item.Extras = std::make_shared<const ListExtras>(ListExtras{u"Schlüssel"_s, u"Marke"_s, u"Tipp"_s});
    item.SubItems = {{.Text = u"Name"_s,
                      .ReportIcon = u"Icon_C"_s,
                      .ForeColor = Color::DarkRed,
                      .Bold = true,
                      .Extras = std::make_shared<const ListExtras>(ListExtras{u"k"_s, u"m"_s, u"t"_s})},
                     {.Text = u"Pfad"_s}};
    return item;
}

class MovedRows : public testing::Test
{
protected:
    void fill(const QStringList& texts)
    {
        for (const QString& text : texts)
            list.append(plainRow(text));
    }

    /// Texts of the rows, the selected one in brackets.
    [[nodiscard]] std::string order() const
    {
        QStringList texts;
        for (int row = 1; row <= list.count(); ++row)
            texts += row == list.selectedRow() ? u'[' + list.text(row) + u']' : list.text(row);
        return texts.join(u' ').toStdString();
    }

    ControlSet controls;
    ListView list{controls, u"LListView1"};
    const RowChoice missing{};
};

} // namespace

TEST_F(MovedRows, TheSelectedRowGoesUpAndStaysSelected)
{
    fill({u"a"_s, u"b"_s, u"c"_s});
    list.select(3);
    MoveUp(list, missing, 1, false);
    EXPECT_EQ("a [c] b", order());
    MoveUp(list, missing, 1, false);
    EXPECT_EQ("[c] a b", order());
}

TEST_F(MovedRows, TheSelectedRowGoesDownAndStaysSelected)
{
    fill({u"a"_s, u"b"_s, u"c"_s});
    list.select(1);
    MoveDown(list, missing, 1, false);
    EXPECT_EQ("b [a] c", order());
    MoveDown(list, missing, 1, false);
    EXPECT_EQ("b c [a]", order());
}

TEST_F(MovedRows, TheFirstRowDoesNotGoUpNorTheLastOneDown)
{
    fill({u"a"_s, u"b"_s});
    list.select(1);
    MoveUp(list, missing, 1, false);
    EXPECT_EQ("[a] b", order());
    list.select(2);
    MoveDown(list, missing, 1, false);
    EXPECT_EQ("a [b]", order());
}

TEST_F(MovedRows, WithoutASelectedRowNothingMoves)
{
    fill({u"a"_s, u"b"_s});
    MoveUp(list, missing, 1, false);
    MoveDown(list, missing, 1, false);
    EXPECT_EQ("a b", order());
    list.clear();
    MoveUp(list, missing, 1, false);
    MoveDown(list, missing, 1, false);
    EXPECT_EQ("", order());
}

TEST_F(MovedRows, ManyPlacesAreCutAtTheEnds)
{
    fill({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    MoveUp(list, 3, 9, false);
    EXPECT_EQ("c a b d", order());
    MoveDown(list, 1, 9, false);
    EXPECT_EQ("a b d c", order());
    MoveDown(list, 1, 2, false);
    EXPECT_EQ("b d a c", order());
}

TEST_F(MovedRows, ARowGoesUpAsManyPlacesAsToldAndIsFoundByItsKey)
{
    fill({u"a"_s, u"b"_s, u"c"_s, u"d"_s});
    MoveUp(list, 4, 2, false);
    EXPECT_EQ("a d b c", order());
    list.append(fullRow());
    MoveUp(list, u"Schlüssel"_s, 3, false);
    EXPECT_EQ("a Text d b c", order());
    MoveDown(list, u"Schlüssel"_s, 1, false);
    EXPECT_EQ("a d Text b c", order());
}

TEST_F(MovedRows, ARowIsFoundByNumberByKeyAndBySelection)
{
    fill({u"a"_s, u"b"_s});
    list.append(fullRow());
    list.select(2);
    EXPECT_EQ(2, ResolveItem(list, missing));
    EXPECT_EQ(1, ResolveItem(list, 1));
    EXPECT_EQ(3, ResolveItem(list, u"schlüssel"_s));
    EXPECT_EQ(0, ResolveItem(list, u"fremd"_s));
    EXPECT_EQ(0, ResolveItem(list, u""_s));
    EXPECT_EQ(0, ResolveItem(list, 4));
    EXPECT_EQ(0, ResolveItem(list, 0));
}

TEST_F(MovedRows, ABadKeyMovesNothing)
{
    fill({u"a"_s, u"b"_s});
    MoveUp(list, u"fremd"_s, 1, false);
    MoveDown(list, 7, 1, false);
    EXPECT_EQ("a b", order());
}

TEST_F(MovedRows, ARowTakesEverythingWithItThatItCarries)
{
    fill({u"a"_s});
    list.append(fullRow());
    list.select(2);
    const std::string before = fake::rowLines(list).last().mid(2).mid(1).toStdString();
    MoveUp(list, missing, 1, false);
    EXPECT_EQ(before, fake::rowLines(list).first().mid(2).mid(1).toStdString());

    const ListItem& moved = list.item(1);
    EXPECT_TRUE(moved.Bold && moved.Checked && moved.Ghosted);
    EXPECT_EQ(moved.ForeColor, Color::DarkRed);
    EXPECT_EQ(moved.Icon, u"Icon_1"_s);
    EXPECT_EQ(moved.SmallIcon, u"Icon_6"_s);
    EXPECT_EQ(moved.Extras->Key, u"Schlüssel"_s);
    EXPECT_EQ(moved.Extras->Tag, u"Marke"_s);
    EXPECT_EQ(moved.Extras->ToolTipText, u"Tipp"_s);
    ASSERT_EQ(moved.SubItems.size(), 2U);
    EXPECT_TRUE(moved.SubItems[0].Bold);
    EXPECT_EQ(moved.SubItems[0].ForeColor, Color::DarkRed);
    EXPECT_EQ(moved.SubItems[0].ReportIcon, u"Icon_C"_s);
    EXPECT_EQ(moved.SubItems[0].Extras->Key, u"k"_s);
    EXPECT_EQ(moved.SubItems[0].Extras->Tag, u"m"_s);
    EXPECT_EQ(moved.SubItems[0].Extras->ToolTipText, u"t"_s);
    EXPECT_FALSE(moved.SubItems[1].Bold);
    EXPECT_EQ(moved.SubItems[1].Extras, nullptr);
}

TEST_F(MovedRows, ARecordHoldsBoldOfASubItemAsText)
{
    list.append(fullRow());
    list.select(1);
    const ListRowCopy copy = CopyRow(list, 1, false, false);
    EXPECT_TRUE(copy.Selected);
    ASSERT_TRUE(copy.SubItems.has_value());
    EXPECT_EQ(copy.SubItems->at(0).Bold, u"True"_s);
    EXPECT_EQ(copy.SubItems->at(1).Bold, u"False"_s);
    EXPECT_EQ(1, list.count());
}

TEST_F(MovedRows, ARowWithoutSubItemsHasNoneInItsRecord)
{
    fill({u"a"_s, u"b"_s});
    const ListRowCopy copy = CopyRow(list, 1, true, false);
    EXPECT_FALSE(copy.SubItems.has_value());
    EXPECT_FALSE(copy.Selected);
    EXPECT_EQ("b", order());
    EXPECT_EQ(CopyRow(list, 5, true, false).Text, QString());
    EXPECT_EQ("b", order());
}

TEST_F(MovedRows, InsertingKnowsThePlacesInTheirOrder)
{
    ListRowCopy x;
    x.Text = u"x"_s;
    const auto inserted = [&](std::optional<bool> before, std::optional<bool> after, std::optional<int> index,
                              std::optional<int> offset, int selected) {
        list.clear();
        fill({u"a"_s, u"b"_s, u"c"_s});
        if (selected > 0)
            list.select(selected);
        InsertRow(list, x, before, after, index, offset);
        return order();
    };
    EXPECT_EQ("a x [b] c", inserted(true, true, 1, 0, 2));
    EXPECT_EQ("a [b] x c", inserted(false, true, 1, 0, 2));
    EXPECT_EQ("x a [b] c", inserted(false, false, 1, 2, 2));
    EXPECT_EQ("a b x [c]", inserted({}, {}, {}, 2, 3));
    EXPECT_EQ("a b c x", inserted({}, {}, {}, {}, 0));
    EXPECT_EQ("a x b c", inserted(true, true, 2, {}, 0)) << "before and after need a selected row";
    EXPECT_EQ("a b c", inserted({}, {}, 0, {}, 0)) << "place 0 does nothing";
    EXPECT_EQ("a b c", inserted({}, {}, {}, -1, 0)) << "as the place that an offset of -1 gives";
    EXPECT_EQ("a b c x", inserted({}, {}, 44, {}, 0));
}

TEST_F(MovedRows, APlaceOfZeroDoesNothingInASortedListEither)
{
    fill({u"a"_s, u"c"_s});
    list.sortBy(1);
    ListRowCopy b;
    b.Text = u"b"_s;
    InsertRow(list, b, {}, {}, 0, {});
    InsertRow(list, b, {}, {}, {}, -1);
    EXPECT_EQ("a c", order());
    InsertRow(list, b, {}, {}, 1, {});
    EXPECT_EQ("a b c", order());
}

TEST_F(MovedRows, TheRecordsSelectionIsKeptBackOnDemand)
{
    fill({u"a"_s, u"b"_s});
    list.select(1);
    ListRowCopy x;
    x.Text = u"x"_s;
    x.Selected = true;
    InsertRow(list, x, {}, {}, 2, {}, true);
    EXPECT_EQ("[a] x b", order());
    InsertRow(list, x, {}, {}, 2, {});
    EXPECT_EQ("a [x] x b", order());
}

TEST_F(MovedRows, InASortedListARowFallsBackToItsSortedPlace)
{
    fill({u"c"_s, u"a"_s, u"b"_s});
    list.sortBy(1);
    list.select(1);
    MoveDown(list, missing, 1, false);
    EXPECT_EQ("[a] b c", order());
    list.setSorted(false);
    MoveDown(list, missing, 1, false);
    EXPECT_EQ("b [a] c", order());
}

TEST_F(MovedRows, TheViewIsLockedForTheTimeOfAMoveOnlyWhereThatIsAskedFor)
{
    fill({u"a"_s, u"b"_s, u"c"_s});
    QStringList told;
    list.LockUpdate = [&](bool locked) { told += (locked ? u"lock"_s : u"free"_s) + QString::number(list.count()); };
    MoveDown(list, 1, 1, false);
    EXPECT_TRUE(told.isEmpty());
    MoveDown(list, 1, 1, true);
    MoveUp(list, 2, 1, true);
    CopyRow(list, 1, false, true);
    EXPECT_EQ("lock3 free3 lock3 free3 lock3 free3", told.join(u' ').toStdString());
}

} // namespace orvantine::LisviewMoveEntrys
