#include "operations/Positionen.h"

#include "desktop/qt/services/QtForms.h"
#include "desktop/qt/widgets/SortList.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The dialog with five lines, on the screen.
class SortDialog : public testing::Test
{
protected:
    void SetUp() override
    {
        form.Load = [this] {
            form.LSortView.List = QStringList{u"A\t/p/A.m3u\t1"_s, u"B\t/p/B.m3u\t2"_s, u"C\t/p/C.m3u\t3"_s,
                                              u"D\t/p/D.m3u\t4"_s, u"E\t/p/E.m3u\t5"_s};
            form.sHilfe.Caption = u"Hilfe"_s;
            form.sPlaylisten.Caption = u"5 Playlisten in der Datenbank"_s;
        };
        form.bAbbrechen.Click = [this] {
            ++cancelled;
            forms.unload(form);
        };
        form.BReady.Click = [this] { ++accepted; };
        form.bHilfe.Click = [this] { ++helped; };
        form.LSortView.DblClick = [this] { ++doubleClicks; };
        forms.show(form);
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows)
            if (candidate->objectName() == u"Positionen"_s && candidate->isVisible())
                window = candidate;
        ASSERT_NE(window, nullptr);
        QApplication::setActiveWindow(window);
        list = find<SortList>(u"LSortView"_s);
    }
    ~SortDialog() override { forms.unload(form); }

    template <class W>
    W* find(const QString& name) const
    {
        W* const widget = window->findChild<W*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }

    [[nodiscard]] QPoint middleOf(int line) const { return list->visualItemRect(list->item(line)).center(); }
    [[nodiscard]] QPoint above(int line) const { return {40, list->visualItemRect(list->item(line)).top() + 2}; }
    [[nodiscard]] QPoint below(int line) const { return {40, list->visualItemRect(list->item(line)).bottom() - 2}; }

    void press(int line) { QTest::mousePress(list->viewport(), Qt::LeftButton, {}, middleOf(line)); }
    void moveTo(const QPoint& point)
    {
        QMouseEvent move(QEvent::MouseMove, point, list->viewport()->mapToGlobal(point), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(list->viewport(), &move);
    }
    void release(const QPoint& point) { QTest::mouseRelease(list->viewport(), Qt::LeftButton, {}, point); }
    void draw(int line, const QPoint& to)
    {
        press(line);
        moveTo(to);
        release(to);
    }

    /// First letters in their order, in the control and, after a stroke, in the widget.
    [[nodiscard]] std::string order() const
    {
        QString letters;
        for (const QString& line : form.LSortView.List.value())
            letters += line.left(1);
        letters += u'/';
        for (int line = 0; line < list->count(); ++line)
            letters += list->item(line)->text().left(1);
        return letters.toStdString();
    }

    QtForms forms;
    Positionen form;
    QWidget* window = nullptr;
    SortList* list = nullptr;
    int cancelled = 0;
    int accepted = 0;
    int helped = 0;
    int doubleClicks = 0;
};

TEST_F(SortDialog, ALineIsDrawnDownward)
{
    draw(0, below(2));
    EXPECT_EQ("BCADE/BCADE", order());
    EXPECT_EQ(2, form.LSortView.ListIndex.value());
    EXPECT_EQ(2, list->currentRow());
}

TEST_F(SortDialog, ALineIsDrawnUpward)
{
    draw(3, above(1));
    EXPECT_EQ("ADBCE/ADBCE", order());
    EXPECT_EQ(1, list->currentRow());
}

TEST_F(SortDialog, ALineReachesBothEnds)
{
    draw(2, above(0));
    EXPECT_EQ("CABDE/CABDE", order());
    draw(1, below(4));
    EXPECT_EQ("CBDEA/CBDEA", order());
    draw(0, QPoint(40, list->viewport()->height() + 500));
    EXPECT_EQ("BDEAC/BDEAC", order());
    draw(4, QPoint(40, -500));
    EXPECT_EQ("CBDEA/CBDEA", order());
}

TEST_F(SortDialog, ALineLetGoWhereItWasStays)
{
    draw(2, above(2));
    draw(2, below(2));
    EXPECT_EQ("ABCDE/ABCDE", order());
}

TEST_F(SortDialog, AClickOrAShakingHandMovesNothing)
{
    press(1);
    moveTo(middleOf(1) + QPoint(1, 1));
    EXPECT_FALSE(list->isDrawn());
    release(middleOf(1) + QPoint(1, 1));
    EXPECT_EQ("ABCDE/ABCDE", order());
    EXPECT_EQ(1, form.LSortView.ListIndex.value());
}

TEST_F(SortDialog, EscapeLetsTheLineGoAndDoesNotCloseTheDialog)
{
    press(0);
    moveTo(below(3));
    EXPECT_TRUE(list->isDrawn());
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_FALSE(list->isDrawn());
    release(below(3));
    EXPECT_EQ("ABCDE/ABCDE", order());
    EXPECT_EQ(0, cancelled);
    QTest::keyClick(list, Qt::Key_Escape);
    EXPECT_EQ(1, cancelled);
}

TEST_F(SortDialog, ALockedListLetsTheLineGo)
{
    press(0);
    moveTo(below(3));
    form.LSortView.Enabled = false;
    EXPECT_FALSE(list->isDrawn());
    EXPECT_EQ("ABCDE/ABCDE", order());
}

TEST_F(SortDialog, TheRightButtonAndThePlaceBelowTheLinesDrawNothing)
{
    QTest::mousePress(list->viewport(), Qt::RightButton, {}, middleOf(0));
    moveTo(below(3));
    EXPECT_FALSE(list->isDrawn());
    QTest::mousePress(list->viewport(), Qt::LeftButton, {}, QPoint(40, list->viewport()->height() - 3));
    moveTo(above(0));
    EXPECT_FALSE(list->isDrawn());
}

TEST_F(SortDialog, AltWithTheArrowsMovesTheSelectedLine)
{
    list->setFocus();
    list->setCurrentRow(2);
    QTest::keyClick(list, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ("ACBDE/ACBDE", order());
    EXPECT_EQ(1, list->currentRow());
    QTest::keyClick(list, Qt::Key_Up, Qt::AltModifier);
    QTest::keyClick(list, Qt::Key_Up, Qt::AltModifier);
    EXPECT_EQ("CABDE/CABDE", order());
    for (int i = 0; i < 7; ++i)
        QTest::keyClick(list, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ("ABDEC/ABDEC", order());
    EXPECT_EQ(4, list->currentRow());
}

TEST_F(SortDialog, TheArrowsAloneOnlySelect)
{
    list->setCurrentRow(0);
    QTest::keyClick(list, Qt::Key_Down);
    EXPECT_EQ(1, form.LSortView.ListIndex.value());
    EXPECT_EQ("ABCDE/ABCDE", order());
}

TEST_F(SortDialog, WithoutASelectedLineAltMovesNothing)
{
    list->setCurrentRow(-1);
    QTest::keyClick(list, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ("ABCDE/ABCDE", order());
}

TEST_F(SortDialog, ADoubleClickIsToldOnce)
{
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, middleOf(1));
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, middleOf(1));
    EXPECT_EQ(1, doubleClicks);
    EXPECT_EQ(1, form.LSortView.ListIndex.value());
    EXPECT_FALSE(list->isDrawn());
}

TEST_F(SortDialog, ReturnAcceptsAndTheButtonsPressTheirControls)
{
    QTest::keyClick(list, Qt::Key_Return);
    EXPECT_EQ(1, accepted);
    find<QPushButton>(u"bHilfe"_s)->click();
    EXPECT_EQ(1, helped);
    find<QPushButton>(u"bAbbrechen"_s)->click();
    EXPECT_EQ(1, cancelled);
}

TEST_F(SortDialog, WhileCancelIsDisabledNothingClosesTheWindow)
{
    form.bAbbrechen.Enabled = false;
    QTest::keyClick(window, Qt::Key_Escape);
    window->close();
    EXPECT_TRUE(form.Visible.value());
    EXPECT_EQ(0, cancelled);
    form.bAbbrechen.Enabled = true;
}

TEST_F(SortDialog, TheTabKeyGoesFromTheListOverOkAndCancelToHelp)
{
    list->setFocus();
    QStringList reached;
    for (int i = 0; i < 4; ++i) {
        reached += QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ("LSortView BReady bAbbrechen bHilfe", reached.join(u' ').toStdString());
}

TEST_F(SortDialog, AScreenReaderHearsNamesAndPlaces)
{
    EXPECT_EQ(u"Reihenfolge der Playlisten"_s, list->accessibleName());
    form.LSortView.move(0, 1);
    EXPECT_EQ(u"B, Platz 1"_s, list->item(0)->data(Qt::AccessibleTextRole).toString());
    EXPECT_EQ(u"A, Platz 2"_s, list->item(1)->data(Qt::AccessibleTextRole).toString());
}

TEST_F(SortDialog, NoTwoButtonsShareALetter)
{
    QStringList letters;
    const QList<QPushButton*> buttons = window->findChildren<QPushButton*>();
    for (const QPushButton* button : buttons)
        letters += button->text().section(u'&', 1).left(1).toUpper();
    EXPECT_EQ(letters.size(), 3);
    letters.removeDuplicates();
    EXPECT_EQ(letters.size(), 3);
}

TEST_F(SortDialog, BelowTheLinesTheListScrollsWhileALineIsDrawn)
{
    QStringList many;
    for (int line = 1; line <= 160; ++line)
        many += u"L%1\t/p\t%1"_s.arg(line);
    form.LSortView.List = many;
    QCoreApplication::processEvents();
    press(0);
    moveTo(QPoint(40, list->viewport()->height() + 20));
    EXPECT_TRUE(QTest::qWaitFor([this] { return list->verticalScrollBar()->value() >= 3; }));
    const QPoint end(40, list->viewport()->height() - 4);
    moveTo(end);
    release(end);
    EXPECT_GT(form.LSortView.ListIndex.value(), 5);
    EXPECT_EQ("L1", list->item(list->currentRow())->text().section(u'\t', 0, 0).toStdString());
}

TEST_F(SortDialog, TheDialogIsDrawnWithAndWithoutAMark)
{
    press(0);
    const QImage before = list->grab().toImage();
    moveTo(below(4));
    EXPECT_NE(before, list->grab().toImage());
    release(below(4));
}

} // namespace

} // namespace orvantine
