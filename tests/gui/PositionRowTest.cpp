#include "desktop/qt/widgets/Labels.h"
#include "desktop/qt/window/PlayerBar.h"
#include "gui/OpenWindow.h"

#include <QAccessible>
#include <QSlider>
#include <QTest>
#include <QWheelEvent>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class PlayedPlace : public OpenWindow
{
protected:
    PlayedPlace()
    {
        open();
        root.playback = PlaybackStatus::Stopped;
        window.resize(1000, 600);
        desktop.disk().makeFolder(u"/m"_s);
        desktop.disk().writeBytes(u"/m/a.mp3"_s, "x");
        desktop.mediaplayer().setDuration(200.5);
        // A slider of another one behind it takes no wheel from this one.
        root.pVolume.Visible = true;
    }

    /// A title of 200 seconds plays, 65 seconds of it are over.
    void play()
    {
        desktop.mediaplayer().setURL(u"/m/a.mp3"_s);
        desktop.mediaplayer().pretendPosition(65.25);
        desktop.mediaplayer().PositionChange();
        root.pPausePlayer.Enabled = true;
        root.pDateiname.Visible = true;
        root.playback = PlaybackStatus::Playing;
        desktop.log.take();
    }
    QWidget& row() const { return *window.findChild<QWidget*>(u"position"_s); }
    QSlider& bar() const { return *window.findChild<QSlider*>(u"Mediaplayer"_s); }
    [[nodiscard]] std::string times() const
    {
        return (window.findChild<TextLabel*>(u"elapsed"_s)->text() + u" of "_s +
                window.findChild<TextLabel*>(u"length"_s)->text())
            .toStdString();
    }
    /// Places that the player was sent to since the last look.
    std::string sought()
    {
        QStringList places;
        const QStringList calls = desktop.log.take();
        for (const QString& line : calls)
            if (line.startsWith(u"Mediaplayer.controls.currentPosition"_s))
                places += line.section(u' ', -1);
        return places.join(u' ').toStdString();
    }
    void expectNothingMovesForIt()
    {
        for (int pass = 0; pass < 3; ++pass)
            QApplication::processEvents();
        const std::string before = places();
        play();
        root.tDateiname.Caption = u"Ein Titel"_s;
        QApplication::processEvents();
        ASSERT_TRUE(row().isVisible());
        EXPECT_EQ(before, places());
    }
    /// Of everything that is beside or above it.
    [[nodiscard]] std::string places() const
    {
        QStringList told;
        const QWidget* const player = row().parentWidget()->parentWidget();
        for (const QWidget* widget :
             QList<const QWidget*>{player, find<>(root.LListView1), find<>(root.LListView2), find<>(root.pVolume),
                                   find<>(root.pStopPlayer), find<>(root.pPlayForward)}) {
            const QRect place(widget->mapTo(&window, QPoint()), widget->size());
            told += u"%1 %2 %3 %4 %5"_s.arg(widget->objectName())
                        .arg(place.x())
                        .arg(place.y())
                        .arg(place.width())
                        .arg(place.height());
        }
        return told.join(u'\n').toStdString();
    }
    void wheel(int delta)
    {
        const QPointF middle = bar().rect().center();
        QWheelEvent event(middle, bar().mapToGlobal(middle), {}, {0, delta}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&bar(), &event);
    }
};

} // namespace

TEST_F(PlayedPlace, TellsElapsedAndWholeTimeOfWhatPlaysOrIsPaused)
{
    EXPECT_FALSE(row().isVisible());
    play();
    EXPECT_TRUE(row().isVisible());
    EXPECT_EQ("1:05 of 3:20", times());
    EXPECT_EQ(65, bar().value());
    EXPECT_EQ(200, bar().maximum());
    desktop.mediaplayer().pretendPaused();
    root.playback = PlaybackStatus::Paused;
    EXPECT_TRUE(row().isVisible());
    root.pPausePlayer.Enabled = false;
    root.playback = PlaybackStatus::Stopped;
    EXPECT_FALSE(row().isVisible());
}

TEST_F(PlayedPlace, NothingElseOfTheWindowMovesForIt)
{
    expectNothingMovesForIt();
}

TEST_F(PlayedPlace, NothingElseMovesForItInLargeLettersEither)
{
    QFont font = window.font();
    font.setPointSize(18);
    window.setFont(font);
    expectNothingMovesForIt();
}

TEST_F(PlayedPlace, IsSeenAsSoonAsTheLengthIsKnown)
{
    root.pPausePlayer.Enabled = true;
    QStringList seen;
    desktop.mediaplayer().MediaChange = [this, &seen, change = desktop.mediaplayer().MediaChange] {
        change();
        seen += row().isVisible() ? u"seen"_s : u"hidden"_s;
    };
    desktop.mediaplayer().setURL(u"/m/a.mp3"_s);
    EXPECT_EQ("hidden seen", seen.join(u' ').toStdString());
    EXPECT_EQ("0:00 of 3:20", times());
}

TEST_F(PlayedPlace, KeepsTheKeysBetweenTwoTitles)
{
    play();
    bar().setFocus();
    desktop.mediaplayer().MediaChange = [this, change = desktop.mediaplayer().MediaChange] {
        change();
        // The length is not known yet, or just so.
        EXPECT_TRUE(row().isVisible());
        EXPECT_EQ(&bar(), window.focusWidget());
    };
    desktop.disk().writeBytes(u"/m/b.mp3"_s, "x");
    desktop.mediaplayer().setURL(u"/m/b.mp3"_s);
    EXPECT_EQ("0:00 of 3:20", times());
    root.playback = PlaybackStatus::Stopped;
    desktop.mediaplayer().close();
    desktop.mediaplayer().PositionChange();
    EXPECT_FALSE(row().isVisible());
}

TEST_F(PlayedPlace, ADragEndsWithItsTitle)
{
    play();
    QTest::mousePress(&bar(), Qt::LeftButton, {}, QPoint(bar().width() / 2, bar().height() / 2));
    ASSERT_TRUE(bar().isSliderDown());
    desktop.disk().writeBytes(u"/m/b.mp3"_s, "x");
    desktop.mediaplayer().setURL(u"/m/b.mp3"_s);
    EXPECT_FALSE(bar().isSliderDown());
    desktop.log.take();
    QTest::mouseRelease(&bar(), Qt::LeftButton, {}, QPoint(bar().width() / 2, bar().height() / 2));
    EXPECT_EQ("", sought());
}

TEST_F(PlayedPlace, GoesOnWithEachSecond)
{
    play();
    desktop.mediaplayer().pretendPosition(66.9);
    EXPECT_TRUE(QTest::qWaitFor([this] { return times() == "1:06 of 3:20"; }, 60'000));
    EXPECT_EQ(66, bar().value());
    EXPECT_EQ("", sought());
}

TEST_F(PlayedPlace, ALeapByAnotherHandIsShownAtOnce)
{
    play();
    desktop.mediaplayer().setCurrentPosition(120);
    EXPECT_EQ("2:00 of 3:20", times());
}

TEST_F(PlayedPlace, TheKeysGoByFiveAndThirtySecondsAndToTheEnds)
{
    play();
    bar().setFocus();
    for (const auto key : {Qt::Key_Right, Qt::Key_Left, Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_End, Qt::Key_Home})
        QTest::keyClick(&bar(), key);
    EXPECT_EQ("70 65 95 65 200 0", sought());
    EXPECT_EQ("0:00 of 3:20", times());
}

TEST_F(PlayedPlace, APressGoesThereAndADragWhenItIsLetGo)
{
    play();
    const int middle = bar().height() / 2;
    QTest::mouseClick(&bar(), Qt::LeftButton, {}, {bar().width() / 2, middle});
    EXPECT_EQ("100", sought());
    QTest::mousePress(&bar(), Qt::LeftButton, {}, {0, middle});
    EXPECT_EQ("0:00 of 3:20", times());
    QTest::mouseMove(&bar(), {bar().width() + 50, middle});
    EXPECT_EQ("", sought());
    desktop.mediaplayer().PositionChange();
    EXPECT_EQ("3:20 of 3:20", times()) << "the place that is held stays in sight";
    QTest::mouseRelease(&bar(), Qt::LeftButton, {}, {bar().width() / 2, middle});
    EXPECT_EQ("200", sought());
    QTest::mouseClick(&bar(), Qt::RightButton, {}, {bar().width() / 2, middle});
    EXPECT_EQ("", sought());
}

TEST_F(PlayedPlace, TheWheelGoesByFiveSecondsANotch)
{
    play();
    wheel(120);
    wheel(-60);
    wheel(-60);
    wheel(240);
    EXPECT_EQ("70 65 75", sought());
}

TEST_F(PlayedPlace, GivesItsRoomToTheLineAboutCopying)
{
    play();
    root.pCopyStatus.Visible = true;
    root.tCopyStatus.Caption = u"Kopiere …"_s;
    EXPECT_FALSE(row().isVisible());
    root.tCopyStatus.Caption = QString();
    EXPECT_TRUE(row().isVisible());
}

TEST_F(PlayedPlace, AReaderHearsNamePlaceAndLength)
{
    play();
    bar().setFocus();
    QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(&bar());
    ASSERT_NE(face, nullptr);
    EXPECT_EQ(QAccessible::Slider, face->role());
    EXPECT_EQ("Position im Titel", face->text(QAccessible::Name).toStdString());
    EXPECT_EQ("1:05 von 3:20", face->text(QAccessible::Description).toStdString());
    EXPECT_EQ("Position im Titel (Pfeiltasten: 5 Sekunden, Bild auf und Bild ab: 30 Sekunden)",
              bar().toolTip().toStdString());
}

} // namespace orvantine
