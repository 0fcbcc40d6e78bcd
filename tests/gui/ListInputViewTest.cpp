#include "desktop/qt/widgets/ReportList.h"
#include "desktop/qt/window/MainWindow.h"

#include "gui/Sample.h"
#include "support/FakeDesktop.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QDrag>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The main window with its real lists. What the lists tell their handlers is written down.
class ListInputView : public testing::Test
{
protected:
    ListInputView()
    {
        desktop.complaints.Report = [](const QString& text) { ADD_FAILURE() << text.toStdString(); };
        fake::showSample(root);
        root.Visible = true;
        QApplication::setActiveWindow(&window);
        for (ListView* list : {&root.LListView1, &root.LListView2}) {
            list->Drop = [this, list](const QStringList& paths) { told += list->name + u": "_s + paths.join(u'|'); };
            list->Click = [this, list] { told += list->name + u" click"_s; };
        }
    }

    ReportList& view(const ListView& list) { return *window.findChild<ReportList*>(list.name); }
    std::string taken() { return std::exchange(told, {}).join(u", "_s).toStdString(); }

    /// True if the list takes what is held over it.
    bool enter(const ListView& list, const QMimeData& data, Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction)
    {
        QDragEnterEvent event(QPoint(20, 20), actions, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view(list).viewport(), &event);
        return event.isAccepted();
    }
    /// The action that the other program is told.
    Qt::DropAction drop(const ListView& list, const QMimeData& data)
    {
        if (!enter(list, data))
            return Qt::IgnoreAction;
        QDropEvent event(QPointF(20, 20), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::ShiftModifier);
        event.setDropAction(Qt::MoveAction);
        event.ignore();
        QApplication::sendEvent(view(list).viewport(), &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }

    /// Holds the mouse down on a row and draws it; gives the "text/uri-list" that leaves the list, "" for none.
    QByteArray draw(ReportList& list, int row, int pixels)
    {
        QByteArray content;
        const QPoint from = list.visualRect(list.list().index(row - 1, 2)).center();
        const QPoint to = from + QPoint(pixels, 0);
        QTest::mousePress(list.viewport(), Qt::LeftButton, {}, from);
        QTimer::singleShot(0, &list, [&] {
            if (const auto* drag = list.findChild<QDrag*>()) {
                content = drag->mimeData()->data(u"text/uri-list"_s);
                QDrag::cancel();
            }
        });
        QMouseEvent move(QEvent::MouseMove, to, list.viewport()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(list.viewport(), &move);
        QApplication::processEvents();
        return content;
    }

    fake::FakeDesktop desktop;
    Root& root = desktop.root();
    MainWindow window{root};
    QStringList told;
};

TEST_F(ListInputView, DroppedFilesReachTheListAndAreNeverMoved)
{
    QMimeData data;
    data.setData(u"text/uri-list"_s, "file:///m/%FCber%20alles.mp3\r\nfile:///m/%C3%BC.mp3\r\nhttp://host/a.mp3\r\n");
    for (const ListView* list : {&root.LListView1, &root.LListView2}) {
        EXPECT_TRUE(enter(*list, data));
        EXPECT_EQ(drop(*list, data), Qt::CopyAction);
        EXPECT_EQ(taken(), "") << "not inside the other program's wait";
        QApplication::processEvents();
        EXPECT_EQ(taken(), list->name.toStdString() + ": /m/über alles.mp3|/m/ü.mp3");
    }
}

TEST_F(ListInputView, OnlyRemoteFilesAreNoDrop)
{
    QMimeData data;
    data.setData(u"text/uri-list"_s, "http://host/a.mp3\r\nsmb://host/b.mp3\r\n");
    EXPECT_EQ(drop(root.LListView2, data), Qt::IgnoreAction);
    QMimeData text;
    text.setText(u"/m/a.mp3"_s);
    EXPECT_FALSE(enter(root.LListView2, text));
    EXPECT_EQ(drop(root.LListView2, text), Qt::IgnoreAction);
    QApplication::processEvents();
    EXPECT_EQ(taken(), "");
}

TEST_F(ListInputView, ADisabledListTakesNothing)
{
    QMimeData data;
    data.setData(u"text/uri-list"_s, "file:///m/a.mp3\r\n");
    root.LListView2.Enabled = false;
    EXPECT_EQ(drop(root.LListView2, data), Qt::IgnoreAction);
    root.LListView2.Enabled = true;
    EXPECT_EQ(drop(root.LListView2, data), Qt::CopyAction);
    root.LListView2.Enabled = false;
    QApplication::processEvents();
    EXPECT_EQ(taken(), "") << "a command has begun before the drop could";
}

TEST_F(ListInputView, AListThatAllowsNoDropShowsSo)
{
    QMimeData data;
    data.setData(u"text/uri-list"_s, "file:///m/a.mp3\r\n");
    root.LListView1.AllowDrop = false;
    EXPECT_FALSE(enter(root.LListView1, data));
    EXPECT_EQ(drop(root.LListView1, data), Qt::IgnoreAction);
    QApplication::processEvents();
    EXPECT_EQ(taken(), "");
}

TEST_F(ListInputView, WhileSomethingIsHeldOverItAListThatTakesItHasAnEdge)
{
    QMimeData data;
    data.setData(u"text/uri-list"_s, "file:///m/a.mp3\r\n");
    for (ListView* list : {&root.LListView1, &root.LListView2}) {
        const auto picture = [&] { return view(*list).viewport()->grab().toImage(); };
        const QColor accent = view(*list).palette().color(QPalette::Active, QPalette::Highlight);
        const QImage before = picture();
        ASSERT_TRUE(enter(*list, data));
        const QImage held = picture();
        for (const QPoint corner : {QPoint(1, 1), QPoint(held.width() - 2, 1), QPoint(1, held.height() - 2),
                                    QPoint(held.width() - 2, held.height() - 2)})
            EXPECT_EQ(held.pixelColor(corner), accent);
        EXPECT_EQ(held.copy(4, 4, held.width() - 8, held.height() - 8),
                  before.copy(4, 4, before.width() - 8, before.height() - 8))
            << "the rows stay as they are";
        QDragLeaveEvent leave;
        QApplication::sendEvent(view(*list).viewport(), &leave);
        EXPECT_EQ(picture(), before);
        EXPECT_EQ(drop(*list, data), Qt::CopyAction);
        EXPECT_EQ(picture(), before) << "dropped";
        list->AllowDrop = false;
        EXPECT_FALSE(enter(*list, data));
        EXPECT_EQ(picture(), before) << "refused";
    }
    QApplication::processEvents();
}

TEST_F(ListInputView, NothingIsDroppedBehindAModalWindow)
{
    QMimeData data;
    data.setData(u"text/uri-list"_s, "file:///m/a.mp3\r\n");
    QDialog box;
    box.setModal(true);
    box.show();
    EXPECT_FALSE(enter(root.LListView1, data));
    EXPECT_EQ(drop(root.LListView1, data), Qt::IgnoreAction);
    box.hide();
    EXPECT_TRUE(enter(root.LListView1, data));
}

TEST_F(ListInputView, ADropDoesNotRunUnderABoxThatCameUpMeanwhile)
{
    QMimeData data;
    data.setData(u"text/uri-list"_s, "file:///m/a.mp3\r\n");
    EXPECT_EQ(drop(root.LListView2, data), Qt::CopyAction);
    QDialog box;
    box.setModal(true);
    box.show();
    QApplication::processEvents();
    EXPECT_EQ(taken(), "");
}

TEST_F(ListInputView, AnEmptyCatalogueTakesADropOnItsHint)
{
    root.LListView1.clear();
    root.pHinweistext.Visible = true;
    ReportList& list = view(root.LListView1);
    const QWidget* under = window.childAt(list.mapTo(&window, list.rect().center()));
    ASSERT_NE(under, nullptr);
    while (under != nullptr && !under->acceptDrops())
        under = under->parentWidget();
    EXPECT_TRUE(under == list.viewport() || under == &list);
}

TEST_F(ListInputView, ATrackIsDrawnOutAsItsFile)
{
    root.LListView2.DragFile = [](int row) { return std::optional(QByteArray("/m/\xFC ") + QByteArray::number(row)); };
    ReportList& list = view(root.LListView2);
    root.LListView2.select(1);
    EXPECT_EQ(draw(list, 3, 40), "file:///m/%FC%203\r\n");
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, QPoint(60, 20));
    EXPECT_EQ(root.LListView2.selectedRow(), 1) << "it was no click";
    EXPECT_EQ(list.currentIndex().row() + 1, 1);
    EXPECT_EQ(taken(), "");
}

TEST_F(ListInputView, AClickThatTremblesIsStillAClick)
{
    root.LListView2.DragFile = [](int) { return std::optional(QByteArray("/m/a.mp3")); };
    ReportList& list = view(root.LListView2);
    EXPECT_EQ(draw(list, 3, 2), "");
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, list.visualRect(root.LListView2.index(2, 2)).center());
    EXPECT_EQ(root.LListView2.selectedRow(), 3);
    EXPECT_EQ(taken(), "LListView2 click");
}

TEST_F(ListInputView, ATrackWithoutAFileAndAPlaylistAreNotDrawnOut)
{
    root.LListView2.DragFile = [](int) { return std::optional<QByteArray>(); };
    EXPECT_EQ(draw(view(root.LListView2), 3, 40), "");
    EXPECT_EQ(draw(view(root.LListView1), 3, 40), "");
}

TEST_F(ListInputView, TheKeysOfTheListsReachTheirCommands)
{
    QStringList ran;
    for (MenuItem* item : {&root.mnuEigenschaften, &root.mnuBeenden, &root.mnuMoveEntry[1], &root.mnuMoveEntry[2],
                           &root.mnuVerschiebung[1], &root.mnuVerschiebung[2]})
        item->Click = [&ran, item] { ran += item->fullName(); };
    for (PictureBox* button : {&root.pPausePlayer, &root.pSoundPlayer})
        button->Click = [&ran, button] { ran += button->fullName(); };
    root.pPausePlayer.Enabled = true;
    root.LListView1.DblClick = [&ran] { ran += u"catalogue"_s; };
    root.LListView2.DblClick = [&ran] { ran += u"tracks"_s; };
    const auto press = [&](const ListView& list, Qt::Key key, Qt::KeyboardModifiers modifiers) {
        view(list).setFocus();
        QTest::keyClick(&view(list), key, modifiers);
        return std::exchange(ran, {}).join(u' ').toStdString();
    };
    for (const ListView* list : {&root.LListView1, &root.LListView2}) {
        EXPECT_EQ(press(*list, Qt::Key_Space, Qt::AltModifier), "pPausePlayer");
        EXPECT_EQ(press(*list, Qt::Key_0, Qt::AltModifier | Qt::KeypadModifier), "pPausePlayer");
        EXPECT_EQ(press(*list, Qt::Key_Return, Qt::AltModifier), "mnuEigenschaften");
        EXPECT_EQ(press(*list, Qt::Key_Enter, Qt::AltModifier | Qt::KeypadModifier), "mnuEigenschaften");
        EXPECT_EQ(press(*list, Qt::Key_Home, Qt::AltModifier), "pSoundPlayer");
        EXPECT_EQ(press(*list, Qt::Key_End, Qt::AltModifier), "pSoundPlayer");
        EXPECT_EQ(press(*list, Qt::Key_Q, Qt::AltModifier), "mnuBeenden");
    }
    EXPECT_EQ(press(root.LListView1, Qt::Key_PageUp, Qt::ControlModifier), "mnuVerschiebung(1)");
    EXPECT_EQ(press(root.LListView1, Qt::Key_PageDown, Qt::ControlModifier), "mnuVerschiebung(2)");
    EXPECT_EQ(press(root.LListView2, Qt::Key_PageUp, Qt::ControlModifier), "mnuMoveEntry(1)");
    EXPECT_EQ(press(root.LListView2, Qt::Key_PageDown, Qt::ControlModifier), "mnuMoveEntry(2)");
    EXPECT_EQ(press(root.LListView2, Qt::Key_Greater, Qt::ShiftModifier), "mnuMoveEntry(1)");
    for (const ListView* list : {&root.LListView1, &root.LListView2}) {
        EXPECT_EQ(press(*list, Qt::Key_0, Qt::AltModifier), "") << "the 0 of the upper row is another key";
        const std::pair<Qt::Key, const char*> player[] = {
            {Qt::Key_Right, "Mediaplayer.controls.fastForward\nMediaplayer.controls.play"},
            {Qt::Key_Left, "Mediaplayer.controls.fastReverse\nMediaplayer.controls.play"},
            {Qt::Key_Down, "Mediaplayer.controls.next"},
            {Qt::Key_Up, "Mediaplayer.controls.previous"},
            {Qt::Key_PageDown, "Mediaplayer.controls.next"},
            {Qt::Key_PageUp, "Mediaplayer.controls.previous"}};
        for (const auto& [key, calls] : player) {
            const int row = list->selectedRow();
            desktop.log.take();
            EXPECT_EQ(press(*list, key, Qt::AltModifier), "");
            EXPECT_EQ(desktop.log.linesOf({u"Mediaplayer.controls"_s}).join(u'\n').toStdString(), calls);
            EXPECT_EQ(list->selectedRow(), row) << "the selection stays where it is";
        }
    }
    EXPECT_EQ(press(root.LListView1, Qt::Key_Return, {}), "catalogue");
    EXPECT_EQ(press(root.LListView2, Qt::Key_Enter, Qt::KeypadModifier), "tracks");
}

TEST_F(ListInputView, NoMenuTakesAKeyOfTheLists)
{
    const QList<QAction*> menus = window.menuBar()->actions();
    for (const QAction* menu : menus)
        EXPECT_NE(QKeySequence::mnemonic(menu->text()), QKeySequence(Qt::ALT | Qt::Key_Q));
    const QList<QAction*> actions = window.findChildren<QAction*>();
    QList<QKeySequence> keys;
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Left, Qt::Key_Down, Qt::Key_Up, Qt::Key_Space, Qt::Key_PageUp,
                              Qt::Key_PageDown, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Home, Qt::Key_End, Qt::Key_Q})
        keys += QKeySequence(Qt::ALT | key);
    keys += QKeySequence(QKeyCombination(Qt::AltModifier | Qt::KeypadModifier, Qt::Key_0));
    for (const Qt::Key key : {Qt::Key_PageUp, Qt::Key_PageDown})
        keys += QKeySequence(Qt::CTRL | key);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter})
        keys += QKeySequence(key);
    for (const Qt::Key key : {Qt::Key_Less, Qt::Key_Greater})
        keys += QKeySequence(Qt::SHIFT | key);
    for (const QAction* action : actions)
        for (const QKeySequence& key : keys)
            EXPECT_FALSE(action->shortcuts().contains(key))
                << action->objectName().toStdString() << " " << key.toString().toStdString();
}

TEST_F(ListInputView, ARightPressSelectsTheRowBeforeTheMenuComesUp)
{
    ReportList& list = view(root.LListView2);
    auto* const popup = window.findChild<QMenu*>(u"mnuSpecial"_s);
    ASSERT_NE(popup, nullptr);
    root.LListView2.select(1);
    const QPoint place = list.visualRect(root.LListView2.index(2, 2)).center();
    int selected = 0;
    bool open = false;
    QTimer::singleShot(0, [&] {
        open = popup->isVisible();
        selected = root.LListView2.selectedRow();
        popup->close();
    });
    QTest::mousePress(list.viewport(), Qt::RightButton, {}, place);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, place, list.viewport()->mapToGlobal(place));
    QApplication::sendEvent(list.viewport(), &menu);
    EXPECT_TRUE(open);
    EXPECT_EQ(selected, 3);
    // The menu took the release away; one that comes later ends no click.
    root.LListView2.select(2);
    QTest::mouseRelease(list.viewport(), Qt::RightButton, {}, place);
    EXPECT_EQ(root.LListView2.selectedRow(), 2);
    EXPECT_EQ(list.currentIndex().row() + 1, 2);
    EXPECT_EQ(taken(), "");
}

TEST_F(ListInputView, BehindARightPressTheTitleIsThatOfTheSelectedTrack)
{
    const QString path = root.LListView2.subItem(5, 3);
    ASSERT_TRUE(desktop.disk().makeFolder(desktop.folders.program) || desktop.disk().isFolder(desktop.folders.program));
    ASSERT_TRUE(desktop.disk().writeBytes(desktop.folders.program + u"/Orvantine.dll"_s, "x"));
    desktop.memory()->put(path, "mp3");
    desktop.tags.tracks[path] = {.title = u"Halb sechs"_s, .artist = u"Trio Morgenrot"_s};
    ReportList& list = view(root.LListView2);
    QStringList titles;
    const auto press = [&](int row) {
        QTimer::singleShot(0, &list, [&] {
            titles += root.sAnzeige[1].Caption.value() + u'|' + root.sAnzeige[2].Caption.value();
            if (QWidget* const menu = QApplication::activePopupWidget())
                menu->close();
        });
        const QPoint place = list.visualRect(root.LListView2.index(row - 1, 2)).center();
        QTest::mousePress(list.viewport(), Qt::RightButton, {}, place);
        QContextMenuEvent menu(QContextMenuEvent::Mouse, place, list.viewport()->mapToGlobal(place));
        QApplication::sendEvent(list.viewport(), &menu);
    };
    press(5);
    press(3);
    EXPECT_EQ(titles.join(u", "_s).toStdString(), "Halb sechs|Trio Morgenrot, |") << "row 3 has no file";
    EXPECT_EQ(taken(), "") << "it was no click";
}

TEST_F(ListInputView, ARowTellsPlaceCountAndStateInWords)
{
    const auto said = [](const ListView& list, int row, int column) {
        return list.data(list.index(row - 1, column), Qt::AccessibleTextRole).toString().toStdString();
    };
    EXPECT_EQ(said(root.LListView2, 2, 2), "Käthe Blum - Wenn der Abend kommt, wird wiedergegeben, 2 von 18");
    EXPECT_EQ(said(root.LListView2, 3, 2), "Unbekannt - Verlorene Spur, fehlt, 3 von 18")
        << "the name tells it too: the path may be out of sight";
    EXPECT_EQ(said(root.LListView2, 3, 3),
              "/home/anna/Musik/Sommerabend/Unbekannt - Verlorene Spur.mp3, fehlt, 3 von 18");
    EXPECT_EQ(said(root.LListView1, 1, 1), "Sommerabend auf dem Balkon, wird wiedergegeben, 1 von 12");
    EXPECT_EQ(said(root.LListView1, 2, 1), "Frühstück, Favorit, 2 von 12");
    EXPECT_EQ(said(root.LListView1, 4, 1), "Alte Kassetten, fehlt, 4 von 12");
    EXPECT_EQ(root.LListView2.data(root.LListView2.index(2, 2), Qt::ToolTipRole).toString().toStdString(),
              "Unbekannt - Verlorene Spur\n(Datei fehlt)");
}

TEST_F(ListInputView, TheListsTellTheirNamesRowsAndSelectedRow)
{
    const auto face = [this](const ListView& list) { return QAccessible::queryAccessibleInterface(&view(list)); };
    const auto facts = [&](const ListView& list) {
        const QAccessibleInterface* const shown = face(list);
        return (shown->text(QAccessible::Name) + u", "_s + QString::number(face(list)->tableInterface()->rowCount()) +
                u" Zeilen, "_s + shown->focusChild()->text(QAccessible::Name))
            .toStdString();
    };
    EXPECT_EQ(face(root.LListView1)->role(), QAccessible::Tree);
    view(root.LListView1).setFocus();
    EXPECT_EQ(facts(root.LListView1),
              "Wiedergabelisten, 12 Zeilen, Sommerabend auf dem Balkon, wird wiedergegeben, 1 von 12");
    view(root.LListView2).setFocus();
    EXPECT_EQ(facts(root.LListView2),
              "Einträge in der Playliste, 18 Zeilen, Käthe Blum - Wenn der Abend kommt, wird wiedergegeben, 2 von 18");
}

TEST_F(ListInputView, AMissingFileIsToldInWordsInTheNameToo)
{
    ReportList& list = view(root.LListView2);
    const auto picture = [&] {
        const QRect cell = list.visualRect(root.LListView2.index(4, 2));
        return list.viewport()->grab(cell).toImage();
    };
    const QImage there = picture();
    root.LListView2.setColor(5, 3, Color::DarkRed);
    const QImage missing = picture();
    EXPECT_NE(there, missing);
    const QImage leftThere = there.copy(0, 0, there.width() / 2, there.height());
    EXPECT_EQ(leftThere, missing.copy(0, 0, there.width() / 2, there.height())) << "the name stands as it was";
}

TEST_F(ListInputView, ThePopUpMenuOfTheKeyboardKeepsTheSelectedRow)
{
    root.LListView2.select(3);
    ReportList& list = view(root.LListView2);
    list.setFocus();
    QTimer::singleShot(0, &list, [] {
        if (QWidget* const menu = QApplication::activePopupWidget())
            menu->close();
    });
    const QPoint centre = list.viewport()->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, centre, list.viewport()->mapToGlobal(centre));
    QApplication::sendEvent(list.viewport(), &event);
    EXPECT_EQ(root.LListView2.selectedRow(), 3);
}

TEST_F(ListInputView, TheCatalogueHasAPopUpOfItsCommandsByMouseAndKeyboard)
{
    ReportList& list = view(root.LListView1);
    QStringList entries;
    int selected = 0;
    const auto open = [&](QContextMenuEvent::Reason reason, const QPoint& place) {
        entries.clear();
        QTimer::singleShot(0, &list, [&] {
            selected = root.LListView1.selectedRow();
            auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
            ASSERT_NE(menu, nullptr);
            for (const QAction* action : menu->actions())
                entries += action->isSeparator() ? u"-"_s : action->objectName();
            menu->close();
        });
        QContextMenuEvent event(reason, place, list.viewport()->mapToGlobal(place));
        QApplication::sendEvent(list.viewport(), &event);
    };
    root.LListView1.select(1);
    open(QContextMenuEvent::Mouse, list.visualRect(root.LListView1.index(2, 1)).center());
    EXPECT_EQ(selected, 3);
    EXPECT_EQ(entries.join(u' ').toStdString(), "- mnuWiedergabe - mnuEigenschaften mnuUmbenennen mnuBeschriftung "
                                                "mnuFavoriten - mnuSpeichernUnter - mnuLöschen");
    root.LListView1.select(2);
    list.setFocus();
    open(QContextMenuEvent::Keyboard, list.viewport()->rect().center());
    EXPECT_EQ(selected, 2);
    EXPECT_EQ(entries.size(), 11);
}

TEST_F(ListInputView, F2RenamesThePlaylist)
{
    int pressed = 0;
    root.mnuUmbenennen.Click = [&pressed] { ++pressed; };
    ReportList& list = view(root.LListView1);
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_F2);
    EXPECT_EQ(pressed, 1);
    view(root.LListView2).setFocus();
    QTest::keyClick(&view(root.LListView2), Qt::Key_F2);
    EXPECT_EQ(pressed, 1);
    root.mnuUmbenennen.Enabled = false;
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_F2);
    EXPECT_EQ(pressed, 1);
}

} // namespace

} // namespace orvantine
