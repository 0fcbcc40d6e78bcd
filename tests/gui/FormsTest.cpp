#include "app/Root.h"
#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/services/QtForms.h"
#include "metadata/frmID3.h"
#include "operations/Eigenschaften.h"
#include "shell/Dialoge.h"
#include "shell/Info.h"
#include "shell/Startup.h"
#include "support/FakeDesktop.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The forms of the main window on the real service, whose buttons unload them.
class FormsOnScreen : public testing::Test
{
protected:
    template <class W>
    static W* find(const QString& form, const QString& control)
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows)
            if (window->objectName() == form && window->isVisible())
                return window->findChild<W*>(control);
        return nullptr;
    }

    QtForms forms;
};

TEST_F(FormsOnScreen, TheTagDialogSelectsAFieldThatGetsTheFocusAndSaves)
{
    frmID3V1 form;
    form.ID3Titel.Text = u"Der Titel"_s;
    form.ID3Titel.GotFocus = [&form] { GetFocus(form.ID3Titel); };
    form.cmdCancel.Click = [&] { forms.unload(form); };
    QString selected;
    QTimer::singleShot(0, [&] {
        auto* const title = find<QLineEdit>(u"frmID3V1"_s, u"ID3Titel"_s);
        ASSERT_NE(title, nullptr);
        EXPECT_EQ(title->accessibleName(), u"Titel"_s);
        EXPECT_EQ(title->window()->windowTitle(), u" ID3V1 Tag ändern"_s);
        QFocusEvent focus(QEvent::FocusIn);
        QApplication::sendEvent(title, &focus);
        QTimer::singleShot(0, [&, title] {
            selected = title->selectedText();
            find<QPushButton>(u"frmID3V1"_s, u"cmdCancel"_s)->click();
        });
    });
    forms.showModal(form);
    EXPECT_EQ(selected.toStdString(), "Der Titel");
}

TEST_F(FormsOnScreen, TheOtherTagDialogClosesByItsButton)
{
    frmID3V2 form;
    form.Command1.Click = [&] { forms.unload(form); };
    QTimer::singleShot(0, [&] {
        auto* const close = find<QPushButton>(u"frmID3V2"_s, u"Command1"_s);
        ASSERT_NE(close, nullptr);
        close->click();
    });
    forms.showModal(form);
    EXPECT_FALSE(form.Visible.value());
}

TEST_F(FormsOnScreen, AModalFormLoadsIsSeenAndReturnsWhenItIsUnloaded)
{
    Info info;
    QStringList calls;
    info.Load = [&] { calls.append(u"load"_s); };
    info.Unload = [&] { calls.append(u"unload"_s); };
    info.BAbbrechen.Click = [&] { forms.unload(info); };
    QTimer::singleShot(0, [&] {
        auto* const cancel = find<QPushButton>(u"Info"_s, u"BAbbrechen"_s);
        ASSERT_NE(cancel, nullptr);
        EXPECT_EQ(cancel->text(), u"&Abbrechen"_s);
        EXPECT_TRUE(cancel->isDefault());
        EXPECT_TRUE(info.Visible.value());
        EXPECT_EQ(cancel->window()->windowTitle(), u" Info über Orvanten Manager"_s);
        calls.append(u"press"_s);
        cancel->click();
    });
    forms.showModal(info);
    EXPECT_FALSE(info.Visible.value());
    EXPECT_EQ(calls.join(u' ').toStdString(), "load press unload");
}

TEST_F(FormsOnScreen, EscapePressesTheCancelButton)
{
    Info info;
    int cancelled = 0;
    info.BAbbrechen.Click = [&] {
        ++cancelled;
        forms.unload(info);
    };
    QTimer::singleShot(0, [&] {
        auto* const cancel = find<QPushButton>(u"Info"_s, u"BAbbrechen"_s);
        ASSERT_NE(cancel, nullptr);
        QTest::keyClick(cancel->window(), Qt::Key_Escape);
    });
    forms.showModal(info);
    EXPECT_EQ(cancelled, 1);
}

TEST_F(FormsOnScreen, AModalFormThatHidesItselfReturnsToo)
{
    Info info;
    QTimer::singleShot(0, [&] { info.Visible = false; });
    forms.showModal(info);
    forms.unload(info);
    SUCCEED();
}

TEST_F(FormsOnScreen, UnloadingAFormThatIsNotShownCallsNothing)
{
    Info info;
    int calls = 0;
    info.Unload = [&] { ++calls; };
    forms.unload(info);
    EXPECT_EQ(calls, 0);
}

TEST_F(FormsOnScreen, TheWizardShowsItsPagesAndDoesNotBlock)
{
    Dialoge wizard;
    forms.show(wizard);
    auto* const folder = find<QLineEdit>(u"Dialoge"_s, u"tOrdner"_s);
    ASSERT_NE(folder, nullptr);
    EXPECT_FALSE(folder->isVisible());
    wizard.page = 1;
    EXPECT_TRUE(folder->isVisible());
    QTest::keyClicks(folder, u"/Musik"_s);
    EXPECT_EQ(wizard.tOrdner.Text.value(), u"/Musik"_s);
    wizard.tOrdner.Text = u"/anders"_s;
    EXPECT_EQ(folder->text(), u"/anders"_s);
    auto* const box = find<QCheckBox>(u"Dialoge"_s, u"bSubDir"_s);
    box->click();
    EXPECT_TRUE(wizard.bSubDir.Value.value());
    forms.unload(wizard);
    EXPECT_FALSE(wizard.Visible.value());
}

TEST_F(FormsOnScreen, AltWithALetterTypesNothingIntoAField)
{
    frmID3V1 form;
    forms.show(form);
    auto* const title = find<QLineEdit>(u"frmID3V1"_s, u"ID3Titel"_s);
    ASSERT_NE(title, nullptr);
    QApplication::setActiveWindow(title->window());
    title->setFocus();
    for (const Qt::KeyboardModifiers held :
         {Qt::KeyboardModifiers(Qt::AltModifier), Qt::AltModifier | Qt::ShiftModifier}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_U, held, u"u"_s);
        QApplication::sendEvent(title, &press);
    }
    EXPECT_EQ(title->text().toStdString(), "");
    // Of another keyboard, where Ctrl and Alt together type what stands in the corner of a key.
    QKeyEvent corner(QEvent::KeyPress, Qt::Key_At, Qt::ControlModifier | Qt::AltModifier, u"@"_s);
    QApplication::sendEvent(title, &corner);
    QTest::keyClicks(title, u"u"_s);
    EXPECT_TRUE(title->text().endsWith(u'u'));
    forms.unload(form);
}

TEST_F(FormsOnScreen, ARefusedDateSaysWhy)
{
    Eigenschaften form;
    form.tDatum.Text = u"31.31"_s;
    form.tDatum.Validate = [&form] { return form.tDatum.Text.value().size() != 10; };
    forms.show(form);
    auto* const date = find<QLineEdit>(u"Eigenschaften"_s, u"tDatum"_s);
    ASSERT_NE(date, nullptr);
    const auto refusal = [date] {
        const QList<QLabel*> labels = date->window()->findChildren<QLabel*>();
        return std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
            return label->isVisible() && label->text().startsWith(u"Bitte ein Datum"_s);
        });
    };
    QApplication::setActiveWindow(date->window());
    date->setFocus();
    EXPECT_FALSE(refusal());
    find<QPushButton>(u"Eigenschaften"_s, u"BReady"_s)->click();
    EXPECT_TRUE(refusal());
    date->selectAll();
    QTest::keyClicks(date, u"21.06.2026"_s);
    EXPECT_FALSE(refusal());
    find<QPushButton>(u"Eigenschaften"_s, u"BReady"_s)->click();
    EXPECT_FALSE(refusal());
    forms.unload(form);
}

TEST_F(FormsOnScreen, AShownFormIsNotLoadedTwice)
{
    Dialoge wizard;
    int loads = 0;
    wizard.Load = [&] { ++loads; };
    forms.show(wizard);
    forms.show(wizard);
    EXPECT_EQ(loads, 1);
    forms.unload(wizard);
    forms.show(wizard);
    EXPECT_EQ(loads, 2);
    forms.unload(wizard);
}

TEST_F(FormsOnScreen, AControlOfAFormThatIsGoneTakesTheWishForTheFocusInSilence)
{
    Dialoge wizard;
    forms.show(wizard);
    forms.unload(wizard);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    wizard.tOrdner.SetFocus();
    SUCCEED();
}

TEST_F(FormsOnScreen, TheStartPictureHasNoBorder)
{
    Startup picture;
    forms.show(picture);
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto shown = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->objectName() == u"Startup"_s && window->isVisible();
    });
    ASSERT_NE(shown, windows.end());
    EXPECT_TRUE((*shown)->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_TRUE(picture.Visible.value());
    forms.unload(picture);
}

TEST(FormKeys, TheFormHearsAKeyOnceWhereverTheFocusIs)
{
    QtForms forms;
    Dialoge wizard;
    QList<int> keys;
    wizard.KeyDown = [&](int code) { keys.append(code); };
    forms.show(wizard);
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget* window : windows) {
        if (window->objectName() != u"Dialoge"_s || !window->isVisible())
            continue;
        QApplication::setActiveWindow(window);
        QTest::keyClick(window->focusWidget() != nullptr ? window->focusWidget() : window, Qt::Key_F1);
    }
    EXPECT_EQ(keys, QList<int>{112});
    forms.unload(wizard);
}

} // namespace

} // namespace orvantine
