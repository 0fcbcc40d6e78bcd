#include "transfer/Datenbank.h"
#include "app/Root.h"
#include "desktop/qt/services/QtForms.h"
#include "support/FakeDesktop.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The form of the main window on the real service.
class DatenbankOnScreen : public testing::Test
{
protected:
    ~DatenbankOnScreen() override { forms.dropAll(); }

    void show()
    {
        root.tDatenbank.Text = u"/home/anna/Daten/"_s;
        form.bAbbrechen.Click = [this] {
            ++cancelled;
            forms.unload(form);
        };
        forms.show(form);
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows)
            if (candidate->objectName() == u"Datenbank"_s && candidate->isVisible())
                window = candidate;
        ASSERT_NE(nullptr, window);
        QApplication::setActiveWindow(window);
    }
    template <class W>
    [[nodiscard]] W* find(const Control& control) const
    {
        return window->findChild<W*>(control.fullName());
    }

    fake::FakeDesktop desktop;
    Root& root{desktop.root()};
    Datenbank& form{*root.datenbank};
    QtForms forms;
    QWidget* window = nullptr;
    int cancelled = 0;
};

} // namespace

TEST_F(DatenbankOnScreen, TheFolderIsTypedAndAcceptedByKeysAlone)
{
    int accepted = 0;
    form.BReady.Click = [&accepted] { ++accepted; };
    show();
    auto* const folder = find<QLineEdit>(form.tDatabase);
    ASSERT_NE(nullptr, folder);
    EXPECT_TRUE(folder->hasFocus());
    EXPECT_EQ("/home/anna/Daten/", folder->text().toStdString());
    EXPECT_EQ("Datenbank-Ordner", folder->accessibleName().toStdString());
    EXPECT_EQ(folder, find<QLabel>(form.LDatabase)->buddy());
    EXPECT_EQ(" Datenbank-Ordner", window->windowTitle().toStdString());

    QTest::keyClick(folder, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(folder, Qt::Key_Delete);
    EXPECT_FALSE(find<QPushButton>(form.BReady)->isEnabled());
    QTest::keyClicks(folder, u"/neu"_s);
    EXPECT_EQ("/neu", form.tDatabase.Text.value().toStdString());
    QTest::keyClick(folder, Qt::Key_Return);
    EXPECT_EQ(1, accepted);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(1, cancelled);
}

TEST_F(DatenbankOnScreen, EveryWordIsSeenWhole)
{
    show();
    const QList<QLabel*> labels = window->findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        const int needed = label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
        EXPECT_LE(needed, label->height()) << label->text().toStdString();
    }
    const QList<QPushButton*> buttons = window->findChildren<QPushButton*>();
    EXPECT_EQ(4, buttons.size());
    for (const QPushButton* button : buttons)
        EXPECT_LE(button->sizeHint().width(), button->width()) << button->text().toStdString();
}

TEST_F(DatenbankOnScreen, TheMouseReachesEveryButton)
{
    int pressed = 0;
    for (Button* button : {&form.bDurchsuchen, &form.BReady, &form.bHilfe})
        button->Click = [&pressed] { ++pressed; };
    show();
    for (Button* button : {&form.bDurchsuchen, &form.BReady, &form.bHilfe})
        QTest::mouseClick(find<QPushButton>(*button), Qt::LeftButton);
    EXPECT_EQ(3, pressed);
    QTest::mouseClick(find<QPushButton>(form.bAbbrechen), Qt::LeftButton);
    EXPECT_EQ(1, cancelled);
}

} // namespace orvantine
