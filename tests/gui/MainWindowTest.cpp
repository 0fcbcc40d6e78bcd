#include "desktop/qt/window/MainWindow.h"

#include "app/PlayButtons.h"
#include "desktop/qt/widgets/FlatButton.h"
#include "desktop/qt/widgets/ReportList.h"
#include "gui/OpenWindow.h"
#include "playlists/PlaylistText.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QScrollBar>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QTest>
#include <QToolTip>
#include <QWheelEvent>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class Window : public OpenWindow
{
};

TEST_F(Window, EveryWidgetThatTakesTheFocusHasAnAccessibleName)
{
    open();
    for (PictureBox* panel : {&root.pVolume, &root.pCoverBack, &root.pDateiname})
        panel->Visible = true;
    for (Button* button : {&root.bMoveUp, &root.bMoveDown, &root.bEntryUp, &root.bEntryDown})
        button->Visible = true;
    int seen = 0;
    const QList<QWidget*> widgets = window.findChildren<QWidget*>();
    for (QWidget* widget : widgets) {
        if (widget->focusPolicy() == Qt::NoFocus || widget->inherits("QMenu") || widget->inherits("QMenuBar"))
            continue;
        QAccessibleInterface* const face = QAccessible::queryAccessibleInterface(widget);
        ASSERT_NE(face, nullptr);
        EXPECT_FALSE(face->text(QAccessible::Name).isEmpty())
            << widget->metaObject()->className() << " " << widget->objectName().toStdString();
        EXPECT_FALSE(widget->objectName().isEmpty()) << widget->accessibleName().toStdString();
        ++seen;
    }
    EXPECT_GE(seen, 15);
}

TEST_F(Window, AListThatRestsBehindABoxHasTheFocusAgainAfterwards)
{
    open();
    ReportList& catalogue = *find<ReportList>(root.LListView1);
    catalogue.setFocus();
    QWidget box;
    box.show();
    QApplication::setActiveWindow(&box);
    ASSERT_FALSE(catalogue.hasFocus());
    // The command goes on before the window manager has brought the window back to the front.
    root.LListView1.Enabled = false;
    QApplication::setActiveWindow(&window);
    root.LListView1.Enabled = true;
    EXPECT_TRUE(catalogue.hasFocus());
}

TEST_F(Window, AListThatIsReadAnewBehindABoxHasTheFocusAgainAfterwards)
{
    open();
    ReportList& tracks = *find<ReportList>(root.LListView2);
    tracks.setFocus();
    QWidget box;
    box.show();
    QApplication::setActiveWindow(&box);
    root.LListView2.Enabled = false;
    root.LListView2.Visible = false;
    QApplication::setActiveWindow(&window);
    root.LListView2.Enabled = true;
    root.LListView2.Visible = true;
    EXPECT_TRUE(tracks.hasFocus());
}

TEST_F(Window, ABoxThatAsksWhileTheListsRestGivesTheFocusBack)
{
    open();
    ReportList& tracks = *find<ReportList>(root.LListView2);
    tracks.setFocus();
    root.LListView2.Enabled = false;
    QWidget box;
    box.show();
    QApplication::setActiveWindow(&box);
    QApplication::setActiveWindow(&window);
    root.LListView2.Enabled = true;
    EXPECT_TRUE(tracks.hasFocus());
}

TEST_F(Window, AFocusThatTheUserMovedWhileTheListsRestStays)
{
    open();
    find<ReportList>(root.LListView2)->setFocus();
    root.LListView2.Enabled = false;
    find(root.pStopPlayer)->setFocus();
    root.LListView2.Enabled = true;
    EXPECT_TRUE(find(root.pStopPlayer)->hasFocus());
}

TEST_F(Window, EveryControlThatIsSeenHasAWidgetOfItsName)
{
    for (const Control* control :
         std::initializer_list<const Control*>{&root.LListView1,  &root.LListView2,     &root.tOrvanten,
                                               &root.nAnzeige,    &root.LListenCaption, &root.tPlaylisteinträge,
                                               &root.tSoundzahl,  &root.tBeschreibung,  &root.LSoundCaption,
                                               &root.xpFrame1,    &root.pSoundPlayer,   &root.pPausePlayer,
                                               &root.pStopPlayer, &root.pPlayForward,   &root.pPlayBack,
                                               &root.pSymbole,    &root.pVolume,        &root.sVolume,
                                               &root.bMoveUp,     &root.bMoveDown,      &root.bEntryUp,
                                               &root.bEntryDown,  &root.pCovers,        &root.sAnzeige[0],
                                               &root.sAnzeige[1], &root.sAnzeige[2],    &root.sAnzeige[3],
                                               &root.sAnzeige[4], &root.sAnzeige[5],    &root.pMpeg,
                                               &root.pCopyStatus, &root.tCopyStatus,    &root.pDateiname,
                                               &root.tDateiname,  &root.pDatum,         &root.tDatum,
                                               &root.pAnimations, &root.pAnimation,     &root.Label2})
        find(*control);
}

TEST_F(Window, ButtonsFollowTheirControlsAndPressThem)
{
    open();
    for (PictureBox* control : {&root.pSoundPlayer, &root.pPausePlayer, &root.pStopPlayer, &root.pPlayForward,
                                &root.pPlayBack, &root.pSymbole}) {
        auto* const button = find<QAbstractButton>(*control);
        int calls = 0;
        control->Click = [&calls] { ++calls; };
        control->Enabled = false;
        EXPECT_FALSE(button->isEnabled());
        QTest::mouseClick(button, Qt::LeftButton);
        EXPECT_EQ(calls, 0);
        control->Enabled = true;
        QTest::mouseClick(button, Qt::LeftButton);
        QTest::keyClick(button, Qt::Key_Space);
        EXPECT_EQ(calls, 2) << control->fullName().toStdString();
        control->Click = nullptr;
    }
}

TEST_F(Window, TipsAreThoseOfTheControlsAndNeverEmpty)
{
    auto* const button = find<QAbstractButton>(root.pPlayBack);
    EXPECT_EQ(button->toolTip(), u"Vorheriger Titel"_s);
    root.pPlayBack.ToolTipText = u"Vorherigen Titel \nwiedergeben."_s;
    EXPECT_EQ(button->toolTip(), u"Vorherigen Titel \nwiedergeben."_s);
}

TEST_F(Window, DoubleClicksOnHeadingsReachTheirHandlers)
{
    open();
    for (Label* label : {&root.tBeschreibung, &root.tPlaylisteinträge}) {
        int calls = 0;
        label->DblClick = [&calls] { ++calls; };
        QTest::mouseDClick(find(*label), Qt::LeftButton);
        EXPECT_EQ(calls, 1) << label->fullName().toStdString();
        label->DblClick = nullptr;
    }
}

TEST_F(Window, TheCoverIsChosenByAClickAndRemovedByTheRightButton)
{
    open();
    QStringList calls;
    root.pCovers.Click = [&calls] { calls.append(u"click"_s); };
    root.pCovers.MouseDown = [&calls](MouseButton button) {
        calls.append(button == MouseButton::Right ? u"right"_s : u"left"_s);
    };
    QTest::mouseClick(find(root.pCovers), Qt::LeftButton);
    QTest::mousePress(find(root.pCovers), Qt::RightButton);
    QTest::mouseRelease(find(root.pCovers), Qt::RightButton);
    EXPECT_EQ(calls.join(u' ').toStdString(), "left click right");
}

TEST_F(Window, ThePauseButtonBearsTheNameOfWhatAPressDoes)
{
    auto* const button = find<ControlButton>(root.pPausePlayer);
    struct Case
    {
        bool resumable;
        PlaybackStatus playback;
        const char* name;
        const char* icon;
    };
    for (const Case& c : {Case{false, PlaybackStatus::Playing, "Pause", "media-playback-pause"},
                          Case{true, PlaybackStatus::Paused, "Weiterspielen", "media-playback-start"},
                          Case{true, PlaybackStatus::Playing, "Wiedergabe stoppen", "media-playback-stop"},
                          Case{true, PlaybackStatus::Stopped, "Pause", "media-playback-pause"}}) {
        root.mnuSoundplayer[4].Enabled = c.resumable;
        root.playback = c.playback;
        EXPECT_EQ(c.name, button->accessibleName().toStdString());
        EXPECT_EQ(c.name, button->toolTip().toStdString());
        EXPECT_EQ(c.icon, button->iconName().toStdString());
    }
}

TEST_F(Window, TheFocusStaysWhereTheHandIs)
{
    open();
    auto* const play = find<QAbstractButton>(root.pSoundPlayer);
    auto* const pause = find<QAbstractButton>(root.pPausePlayer);
    for (PictureBox* control : {&root.pSoundPlayer, &root.pPausePlayer}) {
        control->Click = [] {};
        control->Enabled = false;
    }
    showRunning(root, false);
    play->setFocus();
    showRunning(root, true);
    EXPECT_EQ(pause, QApplication::focusWidget());
    showRunning(root, false);
    EXPECT_EQ(play, QApplication::focusWidget());
    // A focus elsewhere is left alone.
    auto* const stop = find(root.pStopPlayer);
    stop->setFocus();
    showRunning(root, true);
    EXPECT_EQ(stop, QApplication::focusWidget());
}

TEST_F(Window, PlayingPausedAndStoppedAreToldApartAtAGlance)
{
    open();
    root.tDateiname.Caption = u"Lied"_s;
    root.pDateiname.Visible = true;
    auto* const disc = find<DiscButton>(root.pSymbole);
    auto* const line = find(root.pDateiname);
    auto* const sign = line->findChild<QWidget*>(u"playback"_s);
    auto* const held = line->findChild<QLabel*>(u"held"_s);
    ASSERT_NE(sign, nullptr);
    ASSERT_NE(held, nullptr);
    const auto picture = [](QWidget* widget) { return widget->grab().toImage(); };
    QList<QImage> discs;
    for (const PlaybackStatus playback : {PlaybackStatus::Stopped, PlaybackStatus::Playing, PlaybackStatus::Paused}) {
        root.playback = playback;
        EXPECT_EQ(playback == PlaybackStatus::Paused, held->isVisible());
        for (const QImage& other : discs)
            EXPECT_NE(other, picture(disc));
        discs += picture(disc);
    }
    EXPECT_EQ("Angehalten", held->text().toStdString());
}

TEST_F(Window, AStepOfTheVolumeGoesOnFromTheLevelThatIsHeard)
{
    open();
    root.pVolume.Visible = true;
    QApplication::processEvents();
    auto* const slider = find<QSlider>(root.sVolume);
    root.sVolume.Value = 7;
    long& level = desktop.mixer.lines[4].level;
    level = 6'500;
    const QPointF middle = slider->rect().center();
    QWheelEvent wheel(middle, slider->mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(slider, &wheel);
    EXPECT_EQ(root.sVolume.Value.value(), 2);
    EXPECT_EQ(level, 16'000);
    level = 40'000;
    QTest::keyClick(slider, Qt::Key_Left);
    EXPECT_EQ(level, 32'000);
    // A machine without a mixer is not told of here.
    desktop.mixer.present = false;
    QTest::keyClick(slider, Qt::Key_Left);
}

TEST_F(Window, TheSliderTellsAPressAScrollAndAClick)
{
    open();
    auto* const slider = find<QSlider>(root.sVolume);
    QStringList calls;
    root.sVolume.Refresh = [&calls] { calls.append(u"refresh"_s); };
    root.sVolume.MouseDown = [&calls] { calls.append(u"down"_s); };
    root.sVolume.Scroll = [&calls, this] { calls.append(QString::number(root.sVolume.Value.value())); };
    root.sVolume.Click = [&calls] { calls.append(u"click"_s); };
    root.sVolume.Value = 3;
    EXPECT_EQ(slider->value(), 3);
    EXPECT_TRUE(calls.isEmpty());
    QTest::keyClick(slider, Qt::Key_Right);
    QTest::mouseClick(slider, Qt::LeftButton, {}, QPoint(slider->width() - 2, slider->height() / 2));
    EXPECT_EQ(calls.join(u' ').toStdString(), "refresh 4 down 8 click");
}

TEST_F(Window, BesideTheThumbStandsTheLevelFromNoughtToAHundredAlone)
{
    open();
    root.pVolume.Visible = true;
    QApplication::processEvents();
    auto* const slider = find<QSlider>(root.sVolume);
    desktop.mixer.lines[4].level = 32000;
    const auto thumbAt = [slider](int step) {
        QStyleOptionSlider option;
        option.initFrom(slider);
        option.orientation = Qt::Horizontal;
        option.minimum = slider->minimum();
        option.maximum = slider->maximum();
        option.sliderPosition = step;
        option.sliderValue = step;
        return slider->style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider).center();
    };
    root.sVolume.Value = 4;
    QTest::mousePress(slider, Qt::LeftButton, {}, thumbAt(4));
    EXPECT_TRUE(slider->isSliderDown());
    const QPoint place = thumbAt(5);
    QMouseEvent move(QEvent::MouseMove, place, slider->mapToGlobal(place), Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(slider, &move);
    EXPECT_EQ(root.sVolume.Value.value(), 5);
    EXPECT_EQ(QToolTip::text().toStdString(), "62");
    QTest::mouseRelease(slider, Qt::LeftButton, {}, place);
    QToolTip::hideText();
}

TEST_F(Window, PlaceAndSizeGoBothWays)
{
    root.Width = 12000;
    root.Height = 9000;
    EXPECT_EQ(window.size(), QSize(800, 600));
    open();
    root.Left = 1500;
    root.Top = 750;
    EXPECT_EQ(window.pos(), QPoint(100, 50));
    window.resize(900, 700);
    EXPECT_TRUE(QTest::qWaitFor([this] { return root.Width.value() == 13500; }));
    EXPECT_EQ(root.Height.value(), 10500);
    EXPECT_EQ(root.Left.value(), 1500);
}

TEST_F(Window, IsNeverNarrowerOrLowerThanItsLeastSize)
{
    open();
    window.resize(100, 100);
    EXPECT_GE(twipsOf(window.width()), 9365);
    EXPECT_GE(twipsOf(window.height()), 7245);
}

TEST_F(Window, TheInformationFrameTellsItsWidth)
{
    open();
    QCoreApplication::processEvents();
    EXPECT_EQ(root.xpFrame1.Width.value(), twipsOf(find(root.xpFrame1)->width()));
    window.resize(1200, 700);
    QCoreApplication::processEvents();
    EXPECT_EQ(root.xpFrame1.Width.value(), twipsOf(find(root.xpFrame1)->width()));
    EXPECT_GT(root.xpFrame1.Width.value(), 9000);
    EXPECT_EQ(root.LSoundCaption.Width.value(),
              root.xpFrame1.Width.value() - 855 - (root.pCoverBack.Visible.value() ? 1560 : 0));
}

TEST_F(Window, TheListOfTracksStaysInItsPlaceWhileCoversComeAndGo)
{
    open();
    root.pCoverBack.Visible = true;
    QCoreApplication::processEvents();
    const int height = find(root.xpFrame1)->height();
    root.pCoverBack.Visible = false;
    QCoreApplication::processEvents();
    EXPECT_EQ(height, find(root.xpFrame1)->height());
}

TEST_F(Window, AnEmptyFilterIsToldApartFromAnEmptyCatalogue)
{
    open();
    root.pHinweistext.Visible = true;
    const auto told = [this] {
        QStringList texts;
        const QList<QLabel*> labels = find(root.pHinweistext)->findChildren<QLabel*>();
        for (const QLabel* label : labels)
            texts += label->text();
        return texts.join(u'|').toStdString();
    };
    EXPECT_EQ(0U, told().find("Die Orvante ist leer|Strg+N ")) << told();
    root.mnuFavoritenShow.Checked = true;
    EXPECT_EQ("Keine Favoriten|Keine Wiedergabeliste ist als Favorit markiert. „Nur Favoriten anzeigen“ im Menü "
              "„Vorgänge“ zeigt wieder alle.",
              told());
    root.mnuFavoritenShow.Checked = false;
    EXPECT_EQ(0U, told().find("Die Orvante ist leer|")) << told();
}

TEST_F(Window, StateAndVisibilityFollowTheProgram)
{
    open();
    EXPECT_TRUE(window.isVisible());
    root.State = WindowState::Maximized;
    EXPECT_TRUE(window.isMaximized());
    root.State = WindowState::Normal;
    EXPECT_FALSE(window.isMaximized());
    root.Visible = false;
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Window, MinimisingTellsTheProgramAndGoesToTheTray)
{
    ASSERT_TRUE(desktop.tray().add(u"Orvanten Manager"_s));
    open();
    root.loaded = true;
    window.setWindowState(Qt::WindowMinimized);
    EXPECT_EQ(root.State.value(), WindowState::Minimized);
    EXPECT_FALSE(root.Visible.value());
    EXPECT_FALSE(window.isVisible());
}

TEST_F(Window, TheTrayHidesItWithoutAWordToTheWindowManager)
{
    open();
    root.State = WindowState::Minimized;
    root.Visible = false;
    QTest::qWait(0);
    QCoreApplication::processEvents();
    EXPECT_FALSE(window.isMinimized());
    root.State = WindowState::Normal;
    root.Visible = true;
    QCoreApplication::processEvents();
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(window.isMinimized());
}

TEST_F(Window, IsMinimisedWhileItIsSeenAndWhenItComesUpSo)
{
    desktop.tray().present = false;
    open();
    root.loaded = true;
    root.State = WindowState::Minimized;
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.isMinimized(); }));
    EXPECT_TRUE(root.Visible.value());
    root.State = WindowState::Normal;
    EXPECT_FALSE(window.isMinimized());
    root.Visible = false;
    root.State = WindowState::Minimized;
    root.Visible = true;
    EXPECT_TRUE(QTest::qWaitFor([this] { return window.isMinimized(); }));
}

TEST_F(Window, ClosingEndsTheProgram)
{
    desktop.start();
    root.Visible = true;
    window.close();
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_EQ(root.Tag, u"9"_s);
}

TEST_F(Window, TheWaitPointerIsShown)
{
    root.Pointer = MousePointer::Hourglass;
    EXPECT_EQ(window.cursor().shape(), Qt::WaitCursor);
    root.Pointer = MousePointer::Default;
    EXPECT_EQ(window.cursor().shape(), Qt::ArrowCursor);
}

TEST_F(Window, TheKeysOfThePlayerWorkFromEveryPlaceOfTheWindow)
{
    open();
    QStringList keys;
    root.LListView1.KeyDown = [&keys](int shift, int code) {
        keys.append(u"%1/%2"_s.arg(shift).arg(code));
        return true;
    };
    auto* const stop = find<QAbstractButton>(root.pStopPlayer);
    stop->setFocus();
    QTest::keyClick(stop, Qt::Key_End, Qt::AltModifier);
    EXPECT_EQ(keys.join(u' ').toStdString(), "4/35");
}

TEST_F(Window, EveryPartIsReachedByTheTabKey)
{
    open();
    for (Button* button : {&root.bMoveUp, &root.bMoveDown, &root.bEntryUp, &root.bEntryDown}) {
        button->Visible = true;
        button->Click = [] {};
        // Told anew, as the handler counts.
        button->Enabled = false;
        button->Enabled = true;
    }
    find(root.LListView1)->setFocus();
    QStringList reached;
    for (int i = 0; i < 40; ++i) {
        const QString name = QApplication::focusWidget()->objectName();
        if (reached.contains(name))
            break;
        reached.append(name);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (const Control* control : std::initializer_list<const Control*>{
             &root.LListView1, &root.LListView2, &root.bMoveUp, &root.bMoveDown, &root.bEntryUp, &root.bEntryDown,
             &root.pCovers, &root.pSymbole, &root.pPlayBack, &root.pPausePlayer, &root.pStopPlayer, &root.pPlayForward,
             &root.sVolume})
        EXPECT_TRUE(reached.contains(control->fullName()))
            << control->fullName().toStdString() << " not in " << reached.join(u' ').toStdString();
}

TEST_F(Window, ATextThatDoesNotFitStandsInTheToolTip)
{
    open();
    root.tPlaylisteinträge.Caption = QString(400, u'W');
    window.grab();
    EXPECT_EQ(find<QLabel>(root.tPlaylisteinträge)->toolTip(), QString(400, u'W'));
    root.tPlaylisteinträge.Caption = u"<b>kurz</b>"_s;
    window.grab();
    EXPECT_EQ(find<QLabel>(root.tPlaylisteinträge)->toolTip(), QString());
    EXPECT_EQ(find<QLabel>(root.tPlaylisteinträge)->textFormat(), Qt::PlainText);
}

} // namespace

} // namespace orvantine
