#include "desktop/qt/services/QtForms.h"
#include "desktop/qt/widgets/ReportList.h"
#include "support/FakeDesktop.h"
#include "transfer/Fassungen.h"

#include <QApplication>
#include <QBuffer>
#include <QImage>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class VersionsOnScreen : public testing::Test
{
protected:
    VersionsOnScreen()
    {
        desktop.complaints.Report = [](const QString& text) { ADD_FAILURE() << text.toStdString(); };
        root.tDatenbank.Text = u"/d/"_s;
        keep(u"/l/Alt.m3u"_s, "/m/eins.mp3\r\n/m/zwei.mp3\r\n", 1);
        keep(u"/l/Alt.m3u"_s, "/m/eins.mp3\r\n", 2);
        keep(u"/l/<b>Rock</b> & Roll.m3u"_s, "/m/eins.mp3\r\n", 3);
        form.bAbbrechen.Click = [this] { forms.unload(form); };
        form.bAnsehen.Click = [this] { ++looked; };
        form.bZurückholen.Click = [this] { ++brought; };
        form.bSpeichernUnter.Click = [this] { ++saved; };
    }
    ~VersionsOnScreen() override
    {
        forms.dropAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void keep(const QString& path, const QByteArray& bytes, int hoursAgo)
    {
        const QDateTime when = QDateTime(QDate(2026, 11, 20), QTime(12, 0)).addSecs(-3600 * hoursAgo);
        desktop.memory()->AllKept.prepend({path, when, u"Löschen"_s, bytes});
    }
    QWidget* show(Form& shown)
    {
        forms.show(shown);
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows)
            if (candidate->objectName() == shown.name && candidate->isVisible())
                window = candidate;
        EXPECT_NE(window, nullptr);
        QApplication::setActiveWindow(window);
        QCoreApplication::processEvents();
        return window;
    }
    template <class W>
    W* find(const Control& control) const
    {
        W* const widget = window->findChild<W*>(control.fullName());
        EXPECT_NE(widget, nullptr) << control.fullName().toStdString();
        return widget;
    }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QWidget* const focus = window->focusWidget();
        ASSERT_NE(focus, nullptr);
        QTest::keyClick(focus, key, modifiers);
    }

    fake::FakeDesktop desktop;
    Root& root = desktop.root();
    Fassungen& form = *root.fassungen;
    QtForms forms;
    QWidget* window = nullptr;
    int looked = 0;
    int brought = 0;
    int saved = 0;
};

} // namespace

TEST_F(VersionsOnScreen, EverythingIsReachedByKeysAlone)
{
    show(form);
    auto* const files = find<ReportList>(form.LDateien);
    auto* const versions = find<ReportList>(form.LFassungen);
    ASSERT_TRUE(files->hasFocus());
    EXPECT_EQ(2, form.LFassungen.count());
    press(Qt::Key_Down);
    EXPECT_EQ(1, form.LFassungen.count());
    EXPECT_EQ("/l/<b>Rock</b> & Roll.m3u", find<QLabel>(form.LPfad)->text().toStdString());
    EXPECT_EQ(Qt::PlainText, find<QLabel>(form.LPfad)->textFormat());
    press(Qt::Key_Up);

    press(Qt::Key_F, Qt::AltModifier);
    ASSERT_TRUE(find<QLineEdit>(form.tFilter)->hasFocus());
    QTest::keyClicks(window->focusWidget(), u"rock"_s);
    EXPECT_EQ(1, form.LDateien.count());
    find<QLineEdit>(form.tFilter)->clear();
    EXPECT_EQ(2, form.LDateien.count());

    press(Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(files->hasFocus());
    press(Qt::Key_N, Qt::AltModifier);
    ASSERT_TRUE(versions->hasFocus());
    press(Qt::Key_Return);
    EXPECT_EQ(1, looked);
    for (const Button* button : {&form.bAnsehen, &form.bZurückholen, &form.bSpeichernUnter}) {
        find<QPushButton>(*button)->setFocus();
        press(Qt::Key_Space);
    }
    EXPECT_EQ(2, looked);
    EXPECT_EQ(1, brought);
    EXPECT_EQ(1, saved);
    press(Qt::Key_Escape);
    EXPECT_FALSE(form.Visible.value());
}

TEST_F(VersionsOnScreen, TabGoesThroughAllThatCanBeUsed)
{
    show(form);
    QStringList way;
    for (int step = 0; step < 8; ++step) {
        way += window->focusWidget()->objectName();
        press(Qt::Key_Tab);
    }
    for (const Control* control : std::initializer_list<const Control*>{
             &form.tFilter, &form.LDateien, &form.LFassungen, &form.bAnsehen, &form.bZurückholen, &form.bSpeichernUnter,
             &form.bAbbrechen, &form.bHilfe})
        EXPECT_TRUE(way.contains(control->fullName())) << control->fullName().toStdString();
}

TEST_F(VersionsOnScreen, NoTwoMnemonicsAreAlike)
{
    show(form);
    QStringList keys;
    const auto buttons = window->findChildren<QPushButton*>();
    for (const QPushButton* button : buttons)
        keys += QKeySequence::mnemonic(button->text()).toString();
    const auto labels = window->findChildren<QLabel*>();
    for (const QLabel* label : labels)
        if (label->buddy() != nullptr)
            keys += QKeySequence::mnemonic(label->text()).toString();
    keys.sort();
    EXPECT_EQ("Alt+A Alt+D Alt+F Alt+H Alt+N Alt+S Alt+U Alt+Z", keys.join(u' ').toStdString());
}

TEST_F(VersionsOnScreen, HasNamesForAScreenReaderAndNothingIsClipped)
{
    show(form);
    EXPECT_EQ("Dateien mit früheren Fassungen", find<ReportList>(form.LDateien)->accessibleName().toStdString());
    EXPECT_EQ("Fassungen der Datei", find<ReportList>(form.LFassungen)->accessibleName().toStdString());
    EXPECT_EQ("Filter", find<QLineEdit>(form.tFilter)->accessibleName().toStdString());
    const QSize least = window->minimumSizeHint();
    EXPECT_LE(least.width(), 1024);
    EXPECT_LE(least.height(), 600);
    window->resize(least);
    QCoreApplication::processEvents();
    const auto buttons = window->findChildren<QPushButton*>();
    for (const QPushButton* button : buttons)
        EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
}

TEST_F(VersionsOnScreen, WhatDiffersComesIntoTheRowsInSight)
{
    desktop.memory()->put(u"/l/Alt.m3u"_s, "/m/eins.mp3\r\n");
    show(form);
    desktop.events().run(std::chrono::milliseconds{100});
    const QAbstractItemModel* const model = find<ReportList>(form.LFassungen)->model();
    EXPECT_EQ("+1", model->index(0, 4).data().toString().toStdString());
    EXPECT_EQ("wie jetzt", model->index(1, 4).data().toString().toStdString());
}

TEST_F(VersionsOnScreen, TheTextOfAVersionIsPlainAndReadByKeys)
{
    Fassung& look = *root.fassung;
    look.tInhalt.Text = u"    1  <b>fett</b><img src=/dev/zero>"_s;
    look.pBild.Visible = false;
    show(look);
    auto* const text = find<QPlainTextEdit>(look.tInhalt);
    EXPECT_EQ("    1  <b>fett</b><img src=/dev/zero>", text->toPlainText().toStdString());
    EXPECT_TRUE(text->isReadOnly());
    EXPECT_TRUE(text->hasFocus());
    EXPECT_EQ("Inhalt der Fassung", text->accessibleName().toStdString());
    press(Qt::Key_Tab);
    EXPECT_TRUE(find<QPushButton>(look.bAbbrechen)->hasFocus());
    press(Qt::Key_Escape);
    EXPECT_FALSE(look.Visible.value());
}

TEST_F(VersionsOnScreen, ACoverIsShownAndHostileBytesAreHarmless)
{
    Fassung& look = *root.fassung;
    look.tInhalt.Visible = false;
    QByteArray png;
    QBuffer buffer(&png);
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly));
    ASSERT_TRUE(QImage(30, 20, QImage::Format_RGB32).save(&buffer, "PNG"));
    look.Bytes = png;
    show(look);
    auto* const picture = find<QWidget>(look.pBild);
    EXPECT_EQ("30 mal 20 Punkte", picture->accessibleDescription().toStdString());
    for (const QByteArray& bytes : {QByteArray("<svg onload='x'/>"), png.left(40), QByteArray(1000, '\xff'),
                                    QByteArray("BM\xff\xff\xff\x7f", 6), QByteArray()}) {
        look.Bytes = bytes;
        EXPECT_EQ("Kein Bild", picture->accessibleDescription().toStdString());
        EXPECT_FALSE(window->grab().isNull());
    }
}

} // namespace orvantine
