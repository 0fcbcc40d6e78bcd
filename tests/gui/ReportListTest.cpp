#include "desktop/qt/widgets/ReportList.h"

#include "desktop/qt/widgets/Keys.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Five rows "a" to "e" in a window; every handler writes a line.
class ReportListView : public testing::Test
{
protected:
    ReportListView()
    {
        list.addColumn(u"ID"_s, 0);
        list.addColumn(u"Name"_s, 3000);
        list.addColumn(u"Tracks"_s, 900);
        for (const QString& name : {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s})
            list.append({.Text = name, .SubItems = {{.Text = name}, {.Text = u"1"_s}}});
        list.Click = [this] { calls.append(u"click %1"_s.arg(list.selectedRow())); };
        list.DblClick = [this] { calls.append(u"double click %1"_s.arg(list.selectedRow())); };
        list.GotFocus = [this] { calls.append(u"focus"_s); };
        list.ColumnClick = [this](int column) { calls.append(u"column %1"_s.arg(column)); };
        view = std::make_unique<ReportList>(list, &window);
        view->setGeometry(0, 0, 400, 300);
        window.resize(400, 300);
        window.show();
        QApplication::setActiveWindow(&window);
        view->setFocus();
        calls.clear();
    }

    QPoint pointOf(int row) const { return view->visualRect(list.index(row - 1, 1)).center(); }
    void click(int row, Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(view->viewport(), button, {}, pointOf(row));
    }
    std::string taken() { return std::exchange(calls, {}).join(u", "_s).toStdString(); }
    int viewRow() const { return view->currentIndex().row() + 1; }

    ControlSet controls;
    ListView list{controls, u"LListView1"};
    QWidget window;
    std::unique_ptr<ReportList> view;
    QStringList calls;
};

TEST_F(ReportListView, AClickSelectsTheRowAndCallsItsHandlerOnce)
{
    click(3);
    EXPECT_EQ(taken(), "click 3");
    EXPECT_EQ(list.selectedRow(), 3);
    click(3);
    EXPECT_EQ(taken(), "click 3");
}

TEST_F(ReportListView, AClickThatNeverEndsIsNone)
{
    list.select(2);
    QTest::mousePress(view->viewport(), Qt::LeftButton, {}, pointOf(5));
    EXPECT_EQ(list.selectedRow(), 2);
    list.Enabled = false;
    list.Enabled = true;
    QTest::mouseRelease(view->viewport(), Qt::LeftButton, {}, pointOf(5));
    EXPECT_EQ(list.selectedRow(), 2);
    EXPECT_EQ(viewRow(), 2);
    EXPECT_EQ(taken(), "focus");
}

TEST_F(ReportListView, ARowThatTheProgramSelectsDuringAClickStays)
{
    list.select(2);
    QTest::mousePress(view->viewport(), Qt::LeftButton, {}, pointOf(5));
    list.select(4);
    list.Enabled = false;
    EXPECT_EQ(list.selectedRow(), 4);
    EXPECT_EQ(viewRow(), 4);
}

TEST_F(ReportListView, AClickBelowTheRowsLeavesTheSelection)
{
    list.select(2);
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, QPoint(20, view->viewport()->height() - 5));
    EXPECT_EQ(list.selectedRow(), 2);
    EXPECT_EQ(viewRow(), 2);
    EXPECT_EQ(taken(), "");
}

TEST_F(ReportListView, ChangesByTheProgramCallNoHandler)
{
    list.select(4);
    EXPECT_EQ(viewRow(), 4);
    list.remove(4);
    EXPECT_EQ(list.selectedRow(), 0);
    EXPECT_FALSE(view->currentIndex().isValid());
    list.select(1);
    list.sortBy(2);
    list.insert(1, {.Text = u"x"_s});
    EXPECT_EQ(viewRow(), list.selectedRow());
    list.clear();
    EXPECT_EQ(taken(), "");
}

TEST_F(ReportListView, CursorKeysSelectAndCallTheClickHandler)
{
    list.select(2);
    QTest::keyClick(view.get(), Qt::Key_Down);
    EXPECT_EQ(taken(), "click 3");
    QTest::keyClick(view.get(), Qt::Key_End);
    EXPECT_EQ(taken(), "click 5");
    QTest::keyClick(view.get(), Qt::Key_Down);
    EXPECT_EQ(taken(), "");
}

TEST_F(ReportListView, ADoubleClickClicksOnceAndThenDoubleClicks)
{
    click(2);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, pointOf(2));
    EXPECT_EQ(taken(), "click 2, double click 2");
}

TEST_F(ReportListView, EnterIsTheRowsDoubleClick)
{
    list.select(3);
    QTest::keyClick(view.get(), Qt::Key_Return);
    QTest::keyClick(view.get(), Qt::Key_Enter, Qt::KeypadModifier);
    EXPECT_EQ(taken(), "double click 3, double click 3");
    QTest::keyClick(view.get(), Qt::Key_Return, Qt::AltModifier);
    EXPECT_EQ(taken(), "");
}

TEST_F(ReportListView, KeysAreOfferedWithTheirShiftWordAndCodeAndAUsedOneGoesNoFurther)
{
    QStringList keys;
    list.KeyDown = [&keys](int shift, int code) {
        keys.append(u"%1/%2"_s.arg(shift).arg(code));
        return true;
    };
    list.select(2);
    struct Key
    {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
    };
    for (const Key& pressed :
         {Key{Qt::Key_Right, Qt::AltModifier}, Key{Qt::Key_Left, Qt::AltModifier}, Key{Qt::Key_Down, Qt::AltModifier},
          Key{Qt::Key_Up, Qt::AltModifier}, Key{Qt::Key_Space, Qt::AltModifier},
          Key{Qt::Key_0, Qt::AltModifier | Qt::KeypadModifier}, Key{Qt::Key_PageUp, Qt::AltModifier},
          Key{Qt::Key_PageDown, Qt::ControlModifier}, Key{Qt::Key_Return, Qt::AltModifier},
          Key{Qt::Key_Home, Qt::AltModifier}, Key{Qt::Key_End, Qt::AltModifier}, Key{Qt::Key_Q, Qt::AltModifier},
          Key{Qt::Key_Less, Qt::ShiftModifier}, Key{Qt::Key_Greater, Qt::ShiftModifier}})
        QTest::keyClick(view.get(), pressed.key, pressed.modifiers);
    EXPECT_EQ(keys.join(u' ').toStdString(), "4/39 4/37 4/40 4/38 4/32 4/96 4/33 2/34 4/13 4/36 4/35 4/81 1/226 1/226");
    EXPECT_EQ(list.selectedRow(), 2);
    EXPECT_EQ(taken(), "");
}

TEST_F(ReportListView, CopyingIsACommandAndNotTheViews)
{
    QGuiApplication::clipboard()->setText(u"vorher"_s);
    list.select(2);
    QTest::keyClick(view.get(), Qt::Key_Insert, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "vorher");
}

TEST_F(ReportListView, TheLastColumnReachesTheEdgeAlsoWhereTheScrollBarHasGone)
{
    QWidget frame;
    auto* const shown = new ReportList(list, &frame);
    frame.resize(400, 300);
    // As the main window does: rows are counted before there is room for them.
    shown->resize(300, 60);
    shown->doItemsLayout();
    shown->resize(300, 250);
    frame.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&frame));
    ASSERT_FALSE(shown->verticalScrollBar()->isVisible());
    EXPECT_EQ(shown->header()->length(), shown->viewport()->width());
}

TEST_F(ReportListView, TheLessKeyIsTheOneLeftOfTheLettersWhateverItTypes)
{
    const auto codeOf = [](Qt::Key key, quint32 scanCode) {
        return keyCodeOf(QKeyEvent(QEvent::KeyPress, key, Qt::ShiftModifier, scanCode, 0, 0));
    };
    EXPECT_EQ(codeOf(Qt::Key_Greater, 94), 226) << "a German keyboard";
    EXPECT_EQ(codeOf(Qt::Key_Bar, 94), 226) << "a British one";
    EXPECT_EQ(codeOf(Qt::Key_Greater, 60), 0) << "shift and the full stop of an American one";
    EXPECT_EQ(codeOf(Qt::Key_Less, 59), 0);
    EXPECT_EQ(codeOf(Qt::Key_Greater, 0), 226) << "where the desktop tells no place";
    EXPECT_EQ(codeOf(Qt::Key_Less, 0), 226);
    EXPECT_EQ(codeOf(Qt::Key_Bar, 0), 0);
}

TEST_F(ReportListView, ADisabledListTakesNothingAndHasTheFocusAgainAfterwards)
{
    ASSERT_TRUE(view->hasFocus());
    list.Enabled = false;
    EXPECT_FALSE(view->isEnabled());
    click(3);
    EXPECT_EQ(list.selectedRow(), 0);
    list.Enabled = true;
    EXPECT_TRUE(view->isEnabled());
    EXPECT_TRUE(view->hasFocus());
    click(3);
    EXPECT_EQ(list.selectedRow(), 3);
}

TEST_F(ReportListView, AColumnOfNoWidthIsHidden)
{
    EXPECT_TRUE(view->isColumnHidden(0));
    list.setColumnWidth(3, 0);
    EXPECT_TRUE(view->isColumnHidden(2));
    list.setColumnWidth(3, 900);
    EXPECT_FALSE(view->isColumnHidden(2));
}

TEST_F(ReportListView, TheNamesTakeTheRoomThatIsLeft)
{
    EXPECT_EQ(view->columnWidth(2), 60);
    EXPECT_EQ(view->columnWidth(1), view->viewport()->width() - 60);
    window.resize(700, 300);
    view->resize(700, 300);
    EXPECT_EQ(view->columnWidth(2), 60);
    EXPECT_EQ(view->columnWidth(1), view->viewport()->width() - 60);
    EXPECT_EQ(list.columnWidth(2), 3000);
    EXPECT_EQ(list.columnWidth(3), 900);
}

TEST_F(ReportListView, WhereThereIsLittleRoomTheLastColumnGivesWayBeforeAnythingIsScrolled)
{
    list.setColumnWidth(3, 3000);
    view->resize(250, 300);
    EXPECT_EQ(view->columnWidth(1), 110);
    EXPECT_EQ(view->columnWidth(2), view->viewport()->width() - 110);
    EXPECT_FALSE(view->horizontalScrollBar()->isVisible());
    view->resize(500, 300);
    EXPECT_EQ(view->columnWidth(2), 200);
    EXPECT_EQ(list.columnWidth(3), 3000);
}

TEST_F(ReportListView, AWidthThatTheUserDrawsIsStoredWhenItIsLetGoOf)
{
    list.WidthDrawn = [this](int column) { calls.append(u"drawn %1 %2"_s.arg(column).arg(list.columnWidth(column))); };
    view->header()->resizeSection(2, 100);
    EXPECT_EQ(list.columnWidth(3), 1500);
    EXPECT_EQ(taken(), "");
    view->endDrawing();
    EXPECT_EQ(taken(), "drawn 3 1500");
    EXPECT_EQ(view->columnWidth(1), view->viewport()->width() - 100);
    view->endDrawing();
    EXPECT_EQ(taken(), "");
}

TEST_F(ReportListView, NamesThatAreDrawnNarrowerGiveTheirNeighbourTheRoom)
{
    list.WidthDrawn = [this](int column) { calls.append(u"drawn %1"_s.arg(column)); };
    view->header()->resizeSection(1, 150);
    view->endDrawing();
    EXPECT_EQ(taken(), "drawn 3, drawn 2");
    EXPECT_EQ(view->columnWidth(1), 150);
    EXPECT_EQ(view->columnWidth(2), view->viewport()->width() - 150);
    EXPECT_EQ(list.columnWidth(2), 2250);
    EXPECT_EQ(list.columnWidth(3), twipsOf(view->viewport()->width() - 150));
}

TEST_F(ReportListView, AfterASortTheSelectedRowIsInSightAndTheHeadTellsTheColumn)
{
    for (int i = 0; i < 60; ++i)
        list.append({.Text = u"x"_s, .SubItems = {{.Text = u"x%1"_s.arg(i)}, {.Text = u"2"_s}}});
    list.setSubItem(5, 1, u"z"_s);
    list.select(5);
    EXPECT_EQ(view->sortedColumn(), 0);
    list.sortBy(2);
    EXPECT_EQ(view->sortedColumn(), 2);
    EXPECT_EQ(list.selectedRow(), 65);
    EXPECT_TRUE(view->viewport()->rect().contains(pointOf(65)));
    list.setSorted(false);
    EXPECT_EQ(view->sortedColumn(), 0);
    // The first column is out of sight and holds the numbers.
    list.sortBy(1);
    EXPECT_EQ(view->sortedColumn(), 2);
}

TEST_F(ReportListView, RowsThatAreShownAndNoMoreAreGrey)
{
    EXPECT_FALSE(view->isGreyed());
    list.Ghosted = true;
    EXPECT_TRUE(view->isGreyed());
    list.Ghosted = false;
    EXPECT_FALSE(view->isGreyed());
}

TEST_F(ReportListView, GridLinesAreOnePixelWideAtEveryScale)
{
    list.clear();
    for (int row = 0; row < 5; ++row)
        list.append({.SubItems = {{}, {}}});
    list.GridLines = true;
    // Of a row or a column of the screen, the widths of what is not the ground.
    const auto widths = [](const QImage& image, const QPoint& from, const QPoint& step, int pixels) {
        QList<int> runs;
        bool inside = false;
        const QRgb ground = image.pixel(from);
        for (int i = 0; i < pixels; ++i) {
            const bool line = image.pixel(from + i * step) != ground;
            if (line && inside)
                ++runs.last();
            else if (line)
                runs += 1;
            inside = line;
        }
        return runs;
    };
    for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        QImage image(view->viewport()->size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        view->viewport()->render(&image);
        const QPoint cell = (view->visualRect(list.index(0, 1)).topLeft() + QPoint(20, 4)).toPointF().toPoint();
        const QPoint from(static_cast<int>(cell.x() * scale), static_cast<int>(cell.y() * scale));
        EXPECT_EQ(widths(image, from, {0, 1}, image.height() - from.y()), QList<int>(5, 1)) << "below the rows";
        EXPECT_EQ(widths(image, from, {1, 0}, image.width() - from.x()), QList<int>(2, 1)) << "beside the columns";
    }
}

TEST_F(ReportListView, APathIsCutInItsMiddleAndAnythingElseAtItsEnd)
{
    list.clear();
    list.clearColumns();
    list.addColumn(u"ID"_s, 0);
    list.addColumn(u"Name"_s, 3000);
    list.addColumn(u"Path"_s, 2250);
    const QString folder = u"/home/anna/Musik/Sommerabend/"_s;
    for (const QString& path :
         {folder + u"Lied 1.mp3"_s, folder + u"Lied 2.mp3"_s, u"/home/anna/Musik/Herbstabend im Garten/Lied 1.mp3"_s})
        list.append({.SubItems = {{.Text = path + path}, {.Text = path}}});
    const auto cell = [this](int row, int column) {
        return view->viewport()->grab(view->visualRect(list.index(row - 1, column))).toImage();
    };
    ASSERT_LT(view->columnWidth(2), QFontMetrics(view->font()).horizontalAdvance(folder)) << "no room for it";
    EXPECT_NE(cell(1, 2), cell(2, 2)) << "the file's name is seen";
    EXPECT_EQ(cell(1, 2), cell(3, 2)) << "the middle is not";
    view->header()->resizeSection(1, 150);
    EXPECT_EQ(cell(1, 1), cell(2, 1));
}

TEST_F(ReportListView, AListThatIsOutOfReachForAWhileIsDrawnGrey)
{
    const auto cell = [this] { return view->viewport()->grab(view->visualRect(list.index(2, 1))).toImage(); };
    const QImage before = cell();
    list.Enabled = false;
    EXPECT_EQ(cell(), before) << "a wait of a moment does not flicker";
    EXPECT_TRUE(QTest::qWaitFor([this] { return view->isGreyed(); }));
    EXPECT_NE(cell(), before);
    list.Enabled = true;
    EXPECT_EQ(cell(), before);
}

TEST_F(ReportListView, AColumnHeadTellsItsNumber)
{
    const QHeaderView* head = view->header();
    QTest::mouseClick(head->viewport(), Qt::LeftButton, {},
                      QPoint(head->sectionViewportPosition(1) + 50, head->height() / 2));
    EXPECT_EQ(taken(), "column 2");
}

TEST_F(ReportListView, ThePopUpsRowIsSelectedWithoutAClick)
{
    view->selectRowAt(pointOf(4));
    EXPECT_EQ(list.selectedRow(), 4);
    EXPECT_EQ(taken(), "");
}

TEST_F(ReportListView, TheFontIsThatOfTheList)
{
    list.FontName = u"DejaVu Serif"_s;
    list.FontSize = 15;
    EXPECT_EQ(view->font().family(), u"DejaVu Serif"_s);
    EXPECT_DOUBLE_EQ(view->font().pointSizeF(), 15);
}

TEST_F(ReportListView, AskingForTheFocusGivesItAndTellsSo)
{
    view->clearFocus();
    calls.clear();
    list.SetFocus();
    EXPECT_TRUE(view->hasFocus());
    EXPECT_EQ(taken(), "focus");
}

TEST_F(ReportListView, TheSelectionIsShownAgainWhenABatchEnds)
{
    list.select(1);
    {
        const ListView::Batch batch(list);
        list.select(4);
        EXPECT_EQ(viewRow(), 1);
        list.select(3);
    }
    EXPECT_EQ(viewRow(), 3);
}

TEST_F(ReportListView, AHundredThousandRowsAreShownAndScrolled)
{
    {
        const ListView::Batch batch(list);
        for (int i = 0; i < 100'000; ++i)
            list.append({.Text = QString::number(i), .SubItems = {{.Text = QString::number(i)}}});
    }
    list.select(list.count());
    list.EnsureVisible(list.count());
    EXPECT_TRUE(view->viewport()->rect().contains(pointOf(list.count())));
    EXPECT_TRUE(view->uniformRowHeights());
}

TEST_F(ReportListView, AViewThatIsToldItsFirstRowBeginsThere)
{
    for (int i = 0; i < 100; ++i)
        list.append({.Text = QString::number(i), .SubItems = {{.Text = QString::number(i)}}});
    EXPECT_EQ(list.TopRow(), 1);
    list.ShowFromRow(40);
    EXPECT_EQ(list.TopRow(), 40);
    EXPECT_EQ(view->indexAt(QPoint(5, 5)).row(), 39);
    list.ShowFromRow(1000);
    EXPECT_TRUE(view->viewport()->rect().contains(pointOf(list.count())));
}

TEST_F(ReportListView, ANumberThatDoesNotFitBesideItsPictureStandsWithoutIt)
{
    list.clear();
    list.clearColumns();
    list.addColumn(u"ID"_s, 0);
    list.addColumn(u"Nr"_s, 800);
    list.addColumn(u"Name"_s, 2000);
    for (const QString& number : {u"1"_s, u"29999"_s})
        for (const QString& picture : {u"Icon_2"_s, u""_s})
            list.append({.SubItems = {{.Text = number, .ReportIcon = picture}, {.Text = u"a"_s}}});
    const auto cell = [this](int row) {
        return view->viewport()->grab(view->visualRect(list.index(row - 1, 1))).toImage();
    };
    EXPECT_NE(cell(1), cell(2)) << "room for both";
    EXPECT_EQ(cell(3), cell(4)) << "the whole number alone";
}

} // namespace

} // namespace orvantine
