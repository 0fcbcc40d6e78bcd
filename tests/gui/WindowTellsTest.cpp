#include "app/Quiet.h"
#include "desktop/qt/widgets/ReportList.h"
#include "gui/OpenWindow.h"

#include <QAccessible>
#include <QLabel>
#include <QMenuBar>
#include <QMouseEvent>
#include <QSplitter>
#include <QTest>

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// What the window tells of its own accord, and what it keeps.
class WindowTells : public OpenWindow
{
};

TEST_F(WindowTells, F10OpensTheMenuBar)
{
    open();
    QTest::keyClick(&window, Qt::Key_F10);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.menuBar()->activeAction() != nullptr; }));
    EXPECT_EQ(window.menuBar()->activeAction()->objectName(), u"mnuVorgänge"_s);
    if (QWidget* const menu = QApplication::activePopupWidget())
        menu->close();
}

TEST_F(WindowTells, ALineThatIsToldQuietlyStandsForAMoment)
{
    desktop.start();
    auto* const line = find(root.quietLine);
    EXPECT_FALSE(line->isVisible());
    const auto canBeRead = [line] {
        return QTest::qWaitFor([line] {
            return line->isVisible() && line->height() >= line->fontMetrics().lineSpacing() &&
                   line->width() >= line->fontMetrics().horizontalAdvance(u"Gespeichert"_s) &&
                   line->parentWidget()->rect().contains(line->geometry());
        });
    };
    showQuietly(root, u"Gespeichert"_s);
    EXPECT_TRUE(line->isVisible());
    EXPECT_TRUE(canBeRead());
    EXPECT_EQ(QAccessible::queryAccessibleInterface(line)->text(QAccessible::Name), u"Gespeichert"_s);
    desktop.events().run(std::chrono::seconds{3});
    showQuietly(root, u"Noch einmal"_s);
    desktop.events().run(std::chrono::seconds{3});
    EXPECT_TRUE(line->isVisible());
    desktop.events().run(std::chrono::seconds{2});
    EXPECT_FALSE(line->isVisible());
    // Longer than the window is wide.
    showQuietly(root, u"Nicht kopiert: "_s + QStringList(30, u"Gespeichert"_s).join(u", "_s));
    EXPECT_TRUE(canBeRead());
    EXPECT_TRUE(QTest::qWaitFor([line] { return line->height() >= 2 * line->fontMetrics().lineSpacing(); }));
}

TEST_F(WindowTells, TheEdgeBetweenThePanesStaysWhereItWasDrawn)
{
    open();
    auto* const splitter = window.findChild<QSplitter*>();
    ASSERT_NE(splitter, nullptr);
    root.CatalogueWidth = 5250;
    EXPECT_EQ(splitter->sizes().constFirst(), 350);
    splitter->handle(1)->setObjectName(u"edge"_s);
    QTest::mousePress(splitter->handle(1), Qt::LeftButton, {}, QPoint(1, 50));
    QMouseEvent move(QEvent::MouseMove, QPointF(51, 50), splitter->handle(1)->mapToGlobal(QPointF(51, 50)),
                     Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(splitter->handle(1), &move);
    QTest::mouseRelease(splitter->handle(1), Qt::LeftButton, {}, QPoint(51, 50));
    EXPECT_TRUE(QTest::qWaitFor([this] { return root.CatalogueWidth.value() != 5250; }));
    EXPECT_EQ(root.CatalogueWidth.value(), twipsOf(splitter->sizes().constFirst()));
}

TEST_F(WindowTells, RowsOfTheListBeforeAreToldInWords)
{
    open();
    auto* const note = window.findChild<QLabel*>(u"staleNote"_s);
    ASSERT_NE(note, nullptr);
    EXPECT_FALSE(note->isVisible());
    root.trackList.setLines(u"a.mp3\r\n"_s, u"/l/Vorher.m3u"_s);
    {
        TrackList::Reading reading = root.trackList.open(u"/l/Kurz.m3u"_s);
        reading.take({{.Text = u"101"_s}}, false);
    }
    EXPECT_TRUE(root.LListView2.Ghosted.value());
    EXPECT_TRUE(note->isVisible());
    EXPECT_EQ(note->text().toStdString(), "Diese Titel gehören zur vorherigen Liste und werden nicht gespeichert.");
    root.trackList.close();
    EXPECT_FALSE(note->isVisible());
}

TEST_F(WindowTells, AMissingListLeavesNoBlankPane)
{
    open();
    auto* const note = window.findChild<QLabel*>(u"absenceNote"_s);
    ASSERT_NE(note, nullptr);
    EXPECT_FALSE(note->isVisible());
    root.LListView2.Visible = false;
    static_cast<void>(root.trackList.open(u"/l/Fort.m3u"_s));
    EXPECT_TRUE(note->isVisible());
    EXPECT_TRUE(note->text().contains(u"„Fort.m3u“ ist nicht da"_s)) << note->text().toStdString();
    root.LListView2.Visible = true;
    EXPECT_FALSE(note->isVisible());
}

TEST_F(WindowTells, WithNothingSelectedNoNoughtsOfATrackAreShown)
{
    open();
    root.LListView2.select(1);
    EXPECT_TRUE(find(root.sAnzeige[0])->isVisible());
    EXPECT_TRUE(find(root.pMpeg)->isVisible());
    root.LListView2.clearSelection();
    for (const Control* fact : std::initializer_list<const Control*>{&root.sAnzeige[0], &root.sAnzeige[5], &root.pMpeg})
        EXPECT_FALSE(find(*fact)->isVisible()) << fact->fullName().toStdString();
}

TEST_F(WindowTells, TheHeadOfTheCatalogueTellsThatTheFilterIsOn)
{
    open();
    const auto told = [this] {
        const QList<QLabel*> labels = window.findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
            return label->isVisible() && label->text().contains(u"nur Favoriten"_s);
        });
    };
    EXPECT_FALSE(told());
    root.mnuFavoritenShow.Checked = true;
    EXPECT_TRUE(told());
}

TEST_F(WindowTells, TheListsFollowTheDesktopsFontUntilOneIsChosen)
{
    open();
    EXPECT_EQ(root.LListView1.FontName.value(), QString());
    EXPECT_EQ(root.LListView1.FontSize.value(), 0);
    EXPECT_EQ(find(root.LListView1)->font().family(), window.font().family());
    root.LListView1.FontSize = 21.5;
    EXPECT_EQ(find(root.LListView1)->font().pointSizeF(), 21.5);
}

TEST_F(WindowTells, AStartAndAnEndWithoutAMoveLeaveThePlaceAsItIsTold)
{
    root.Left = 1507;
    root.Top = 758;
    open();
    QCoreApplication::processEvents();
    QTest::qWait(200);
    EXPECT_EQ(root.Left.value(), 1507);
    EXPECT_EQ(root.Top.value(), 758);
    window.move(300, 200);
    EXPECT_TRUE(QTest::qWaitFor([this] { return root.Left.value() == 4500; }));
    EXPECT_EQ(root.Top.value(), 3000);
}

} // namespace

} // namespace orvantine
