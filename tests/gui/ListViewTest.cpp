#include "platform/ListView.h"

#include <QAbstractItemModelTester>

#include <gtest/gtest.h>

#include <random>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// A list of three columns under the eyes of a model tester: what breaks the rules of models ends the test program.
class ListViewModel : public testing::Test
{
protected:
    ListViewModel() : tester(&list, QAbstractItemModelTester::FailureReportingMode::Fatal)
    {
        list.addColumn(u"ID"_s, 0);
        list.addColumn(u"Name"_s, 2800);
        list.addColumn(u"Tracks"_s, 900);
    }

    static ListItem row(const QString& name)
    {
        return {.Text = u"001"_s, .SubItems = {{.Text = name}, {.Text = u"1"_s}}};
    }

    /// Names as the views see them.
    [[nodiscard]] std::string shown() const
    {
        QStringList names;
        for (int i = 0; i < list.rowCount(); ++i)
            names.append(list.index(i, 1).data().toString());
        return names.join(u' ').toStdString();
    }

    ControlSet controls;
    ListView list{controls, u"list"};
    QAbstractItemModelTester tester;
};

TEST_F(ListViewModel, AppendsInsertsAndRemovesRows)
{
    list.append(row(u"b"_s));
    list.append(row(u"d"_s));
    list.insert(1, row(u"a"_s));
    list.insert(3, row(u"c"_s));
    EXPECT_EQ(shown(), "a b c d");
    list.remove(2);
    list.remove(3);
    EXPECT_EQ(shown(), "a c");
    list.clear();
    EXPECT_EQ(shown(), "");
}

TEST_F(ListViewModel, LeavesRowsThatDoNotExistAlone)
{
    list.append(row(u"a"_s));
    list.insert(3, row(u"x"_s));
    list.insert(0, row(u"x"_s));
    list.remove(0);
    list.remove(2);
    list.setText(2, u"x"_s);
    list.setSubItem(2, 1, u"x"_s);
    list.setSubItem(1, 0, u"x"_s);
    list.setColor(1, 9, Color::DarkRed);
    list.setIcons(2, u"Icon_1"_s);
    EXPECT_FALSE(list.select(2));
    EXPECT_EQ(shown(), "a");
}

TEST_F(ListViewModel, ChangesCells)
{
    list.append(row(u"a"_s));
    list.setText(1, u"007"_s);
    list.setSubItem(1, 1, u"z"_s);
    list.setSubItem(1, 5, u"beyond the columns"_s);
    list.setColor(1, 1, Color::DarkRed);
    list.setIcons(1, u"Icon_6"_s);
    list.setTag(1, u"t"_s);
    EXPECT_EQ(list.index(0, 0).data().toString(), u"007"_s);
    EXPECT_EQ(shown(), "z");
    EXPECT_EQ(list.index(0, 1).data(ListView::ColorRole).toUInt(), 0xC0U);
    EXPECT_EQ(list.index(0, 0).data(ListView::IconNameRole).toString(), u"Icon_6"_s);
    EXPECT_EQ(list.index(0, 1).data(ListView::IconNameRole).toString(), u"Icon_6"_s);
    EXPECT_EQ(list.subItem(1, 5), u"beyond the columns"_s);
}

TEST_F(ListViewModel, ABatchReachesTheViewsAtItsEnd)
{
    {
        const ListView::Batch batch(list);
        list.append(row(u"a"_s));
        list.append(row(u"b"_s));
        EXPECT_EQ(list.rowCount(), 0);
        EXPECT_EQ(list.count(), 2);
    }
    EXPECT_EQ(shown(), "a b");
}

TEST_F(ListViewModel, ChangedCellsOfABatchAreToldTogetherAtItsEnd)
{
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s})
        list.append(row(name));
    QStringList told;
    QObject::connect(&list, &QAbstractItemModel::dataChanged, &list, [&told](const auto& first, const auto& last) {
        told << u"%1-%2"_s.arg(first.row() + 1).arg(last.row() + 1);
    });
    {
        const ListView::Batch outer(list);
        const ListView::Batch inner(list);
        list.setSubItem(3, 1, u"x"_s);
        list.setText(2, u"y"_s);
        list.select(4);
        EXPECT_EQ(told, QStringList());
    }
    EXPECT_EQ(told, QStringList{u"2-3"_s});
    EXPECT_EQ(shown(), "a b x d");
    {
        const ListView::Batch batch(list);
        list.setSubItem(4, 1, u"z"_s);
        list.remove(1);
        EXPECT_EQ(told.last(), u"4-4"_s) << "told before the rows move";
        list.setText(1, u"y"_s);
        list.clear();
    }
    EXPECT_EQ(told.size(), 2) << "rows that are gone changed nothing";
}

TEST_F(ListViewModel, AnyOtherChangeWithinABatchPublishesItFirst)
{
    const ListView::Batch batch(list);
    list.append(row(u"b"_s));
    list.append(row(u"c"_s));
    list.insert(1, row(u"a"_s));
    EXPECT_EQ(shown(), "a b c");
    list.append(row(u"d"_s));
    list.select(4);
    EXPECT_EQ(shown(), "a b c d");
    list.append(row(u"e"_s));
    list.remove(1);
    EXPECT_EQ(shown(), "b c d e");
    list.append(row(u"A"_s));
    list.sortBy(2);
    EXPECT_EQ(shown(), "A b c d e");
}

TEST_F(ListViewModel, SortsIgnoringCaseAndTheSelectionFollowsItsRow)
{
    for (const QString& name : {u"b"_s, u"C"_s, u"a"_s})
        list.append(row(name));
    list.select(2);
    const QPersistentModelIndex kept = list.index(0, 1);
    list.sortBy(2);
    EXPECT_EQ(shown(), "a b C");
    EXPECT_EQ(list.selectedRow(), 3);
    EXPECT_EQ(kept.row(), 1);
    list.append(row(u"B"_s));
    EXPECT_EQ(shown(), "a b B C");
}

TEST_F(ListViewModel, ARowOfASortedListFallsBeforeTheFirstGreaterOneThoughTextsChangedBehindTheSort)
{
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s})
        list.append(row(name));
    list.sortBy(2);
    list.setSubItem(1, 1, u"y"_s);
    list.setSubItem(4, 1, u"a"_s);
    EXPECT_EQ(list.append(row(u"x"_s)), 1);
    EXPECT_EQ(shown(), "x y b c a");
}

TEST_F(ListViewModel, ABatchOfASortedListPlacesItsRowsAsOneAfterTheOtherWouldBe)
{
    std::mt19937 random(11);
    const auto name = [&] {
        const QString letters = u"aAbBcC"_s;
        QString text;
        for (int i = std::uniform_int_distribution(1, 2)(random); i > 0; --i)
            text += letters[std::uniform_int_distribution<qsizetype>(0, letters.size() - 1)(random)];
        return text;
    };
    for (int round = 0; round < 200; ++round) {
        ListView single(controls, u"single");
        for (const QString& column : {u"ID"_s, u"Name"_s})
            single.addColumn(column, 900);
        list.clear();
        int number = 0;
        const auto add = [&](ListView& to, const QString& text) {
            return to.append({.Text = QString::number(number), .SubItems = {{.Text = text}, {.Text = u"1"_s}}});
        };
        for (ListView* each : {&list, &single})
            each->setSorted(false);
        for (number = 1; number <= 6; ++number) {
            const QString text = name();
            add(list, text);
            add(single, text);
        }
        for (ListView* each : {&list, &single})
            each->sortBy(2);
        // Texts that change behind the sort leave the rows in no order.
        for (int i = 0; i < round % 4; ++i) {
            const int row = std::uniform_int_distribution(1, 6)(random);
            const QString text = name();
            list.setSubItem(row, 1, text);
            single.setSubItem(row, 1, text);
        }
        const int selected = round % 7;
        list.select(selected);
        single.select(selected);
        const QPersistentModelIndex watched = list.index(2, 1);
        const QPersistentModelIndex expected = single.index(2, 1);
        {
            const ListView::Batch together(list);
            for (; number <= 14; ++number) {
                const QString text = name();
                const int row = add(list, text);
                const int place = add(single, text);
                EXPECT_EQ(list.text(row), QString::number(number));
                if (round % 5 == 0 && number == 9) {
                    list.select(row);
                    single.select(place);
                }
            }
        }
        QStringList numbers;
        QStringList oneByOne;
        for (int row = 1; row <= 14; ++row) {
            numbers += list.text(row);
            oneByOne += single.text(row);
        }
        ASSERT_EQ(oneByOne.join(u' ').toStdString(), numbers.join(u' ').toStdString()) << round;
        EXPECT_EQ(14, list.rowCount());
        EXPECT_EQ(single.selectedRow(), list.selectedRow()) << round;
        EXPECT_EQ(expected.row(), watched.row()) << round;
    }
}

TEST_F(ListViewModel, ARowOfASortedBatchKeepsItsNumberUntilItIsPlaced)
{
    for (const QString& name : {u"b"_s, u"d"_s})
        list.append(row(name));
    list.sortBy(2);
    {
        const ListView::Batch together(list);
        list.append(row(u"c"_s));
        EXPECT_EQ(4, list.append(row(u"a"_s)));
        EXPECT_EQ(shown(), "b d");
        list.remove(4);
        EXPECT_EQ(shown(), "b c d");
        list.append(row(u"a"_s));
        list.insert(4, row(u"x"_s));
        EXPECT_EQ(shown(), "x a b c d");
        list.append(row(u"B"_s));
        list.setSorted(false);
        EXPECT_EQ(shown(), "B x a b c d") << "the first greater one stands at the top";
        list.append(row(u"A"_s));
        list.insert(8, row(u"e"_s));
    }
    EXPECT_EQ(shown(), "B x a b c d A e");
}

TEST_F(ListViewModel, TheSelectionMovesWithItsRow)
{
    for (const QString& name : {u"a"_s, u"b"_s, u"c"_s})
        list.append(row(name));
    list.select(2);
    list.insert(1, row(u"x"_s));
    EXPECT_EQ(list.selectedRow(), 3);
    list.remove(1);
    EXPECT_EQ(list.selectedRow(), 2);
    list.remove(2);
    EXPECT_EQ(list.selectedRow(), 0);
}

TEST_F(ListViewModel, ColumnsComeAndGo)
{
    list.append(row(u"a"_s));
    list.addColumn(u"Path"_s, 100);
    list.setColumnText(4, u"File"_s);
    list.setColumnWidth(4, 300);
    EXPECT_EQ(list.columnCount(), 4);
    EXPECT_EQ(list.headerData(3, Qt::Horizontal, Qt::DisplayRole).toString(), u"File"_s);
    list.clearColumns();
    EXPECT_EQ(list.columnCount(), 0);
    EXPECT_EQ(list.count(), 1);
}

TEST_F(ListViewModel, ShowsTheRowsThatPlayBesideTheirIcons)
{
    const auto marks = [this] {
        QString seen;
        for (int row = 0; row < list.rowCount(); ++row)
            seen += QString::number(list.data(list.index(row, 0), ListView::PlayingRole).toInt());
        return seen.toStdString();
    };
    for (const QString& text : {u"x"_s, u"y"_s, u"x"_s, QString()})
        list.append(row(text));
    list.setIcons(1, u"Icon_2"_s);
    EXPECT_EQ("0000", marks());
    QSet<int> told;
    QObject::connect(&list, &QAbstractItemModel::dataChanged, &list,
                     [&told](const QModelIndex& first) { told.insert(first.row()); });
    list.setPlaying(1, u"x"_s);
    EXPECT_EQ("1010", marks());
    EXPECT_EQ((QSet<int>{0, 2}), std::exchange(told, {}));
    list.setPlaying(1, u"x"_s, true);
    EXPECT_EQ("2020", marks());
    EXPECT_EQ("Icon_2", list.item(1).SmallIcon.toStdString());
    EXPECT_TRUE(list.data(list.index(0, 0), Qt::AccessibleTextRole).toString().contains(u"angehalten"_s));
    told.clear();
    list.setPlaying(1, u"y"_s);
    EXPECT_EQ("0100", marks());
    EXPECT_EQ((QSet<int>{0, 1, 2}), told);
    list.remove(1);
    EXPECT_EQ("100", marks()) << "the mark goes with its row";
    list.setPlaying(1, QString());
    EXPECT_EQ("000", marks());
}

TEST_F(ListViewModel, TellsAScreenReaderWhereARowStandsAndThatItsFileIsMissing)
{
    list.append(row(u"Regen"_s));
    list.append(row(u"Alte Kassetten"_s));
    list.setColor(2, 1, Color::DarkRed);
    EXPECT_EQ(list.index(0, 1).data(Qt::AccessibleTextRole).toString(), u"Regen, 1 von 2"_s);
    EXPECT_EQ(list.index(1, 1).data(Qt::AccessibleTextRole).toString(), u"Alte Kassetten, fehlt, 2 von 2"_s);
    EXPECT_EQ(list.index(1, 2).data(Qt::AccessibleTextRole).toString(), u"1, fehlt, 2 von 2"_s);
}

} // namespace

} // namespace orvantine
