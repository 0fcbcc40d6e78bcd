#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/services/QtForms.h"

#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

struct Pair : Form
{
    Pair() : Form(u"Pair"_s)
    {
        ready.Caption = u"&Fertig"_s;
        cancel.CausesValidation = false;
        help.CausesValidation = false;
    }

    TextBox checked{controls, u"checked"};
    TextBox plain{controls, u"plain"};
    Button ready{controls, u"ready"};
    Button cancel{controls, u"cancel"};
    Button help{controls, u"help"};
};

/// A form of two fields, the first of which takes digits alone and keeps the focus until it holds "12".
class TextFields : public testing::Test
{
protected:
    void SetUp() override
    {
        form.checked.KeyPress = [this](int code) {
            asked.append(code);
            if (code == u',')
                return int{u'.'};
            return code == 1 || code == 8 || (code >= u'0' && code <= u'9') ? code : 0;
        };
        form.checked.Validate = [this] {
            ++checks;
            return form.checked.Text.value() != u"12"_s;
        };
        form.ready.Click = [this] { presses += u"ready "_s; };
        form.cancel.Click = [this] { presses += u"cancel "_s; };
        form.help.Click = [this] { presses += u"help "_s; };

        checked = window.addTextBox(form.checked, u"Zahl"_s);
        plain = window.addTextBox(form.plain, u"Text"_s);
        ready = window.addButton(form.ready);
        cancel = window.addButton(form.cancel);
        help = window.addButton(form.help);
        window.content().addWidget(checked);
        window.content().addWidget(plain);
        window.setCancel(cancel);
        window.addButtons({help}, {ready, cancel});
        form.Visible = true;
        QApplication::setActiveWindow(&window);
        checked->setFocus();
        ASSERT_TRUE(checked->hasFocus());
    }

    QtForms forms;
    Pair form;
    FormWindow window{form, forms, nullptr};
    QLineEdit* checked = nullptr;
    QLineEdit* plain = nullptr;
    QPushButton* ready = nullptr;
    QPushButton* cancel = nullptr;
    QPushButton* help = nullptr;
    QList<int> asked;
    QString presses;
    int checks = 0;
};

TEST_F(TextFields, TheFilterDropsAndReplacesWhatIsTyped)
{
    QTest::keyClicks(checked, u"1a,ß2"_s);
    EXPECT_EQ("1.2", checked->text().toStdString());
    EXPECT_EQ("1.2", form.checked.Text.value().toStdString());
    EXPECT_EQ((QList<int>{'1', 'a', ',', 0xDF, '2'}), asked);
    QTest::keyClicks(plain, u"1a,"_s);
    EXPECT_EQ("1a,", form.plain.Text.value().toStdString());
}

TEST_F(TextFields, TheFilterHearsOfControlKeysAndOfNoneThatOnlyMoves)
{
    QTest::keyClicks(checked, u"123"_s);
    asked.clear();
    QTest::keyClick(checked, Qt::Key_Left);
    QTest::keyClick(checked, Qt::Key_Delete);
    QTest::keyClick(checked, Qt::Key_Home);
    EXPECT_TRUE(asked.isEmpty());
    EXPECT_EQ("12", form.checked.Text.value().toStdString());
    QTest::keyClick(checked, Qt::Key_V, Qt::ControlModifier);
    QTest::keyClick(checked, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ("12", checked->selectedText().toStdString());
    QTest::keyClick(checked, Qt::Key_Backspace);
    EXPECT_EQ((QList<int>{22, 1, 8}), asked);
    EXPECT_EQ("", form.checked.Text.value().toStdString());
}

TEST_F(TextFields, TheFilterReplacesASelectionAndHearsOfTextFromAnInputMethod)
{
    QTest::keyClicks(checked, u"345"_s);
    checked->selectAll();
    QTest::keyClicks(checked, u","_s);
    EXPECT_EQ(".", form.checked.Text.value().toStdString());
    QInputMethodEvent commit;
    commit.setCommitString(u"ä7"_s);
    QApplication::sendEvent(checked, &commit);
    EXPECT_EQ(".7", form.checked.Text.value().toStdString());
}

TEST_F(TextFields, EnterGoesToTheFilterAndNotToTheDefaultButton)
{
    ready->setDefault(true);
    QTest::keyClick(checked, Qt::Key_Return);
    EXPECT_EQ(QList<int>{13}, asked);
    EXPECT_EQ("", presses.toStdString());
    form.checked.Text = u"12"_s;
    plain->setFocus();
    QTest::keyClick(plain, Qt::Key_Return);
    EXPECT_EQ("ready ", presses.toStdString());
}

TEST_F(TextFields, SendTabMovesOnToTheNextField)
{
    form.checked.Text = u"12"_s;
    form.checked.SendTab();
    EXPECT_TRUE(plain->hasFocus());
}

TEST_F(TextFields, ARefusedTextKeepsTheFocusAndAGoodOneLetsItGo)
{
    QTest::keyClick(checked, Qt::Key_Tab);
    EXPECT_TRUE(checked->hasFocus());
    QTest::mouseClick(plain, Qt::LeftButton);
    plain->setFocus();
    EXPECT_TRUE(checked->hasFocus());
    form.checked.Text = u"12"_s;
    const int before = checks;
    QTest::keyClick(checked, Qt::Key_Tab);
    EXPECT_TRUE(plain->hasFocus());
    EXPECT_EQ(before + 1, checks);
    QTest::keyClick(plain, Qt::Key_Tab);
    EXPECT_EQ(before + 1, checks);
}

TEST_F(TextFields, ARefusedTextHoldsAButtonUpByMouseAndByMnemonic)
{
    QTest::mouseClick(ready, Qt::LeftButton);
    ready->click();
    EXPECT_EQ("", presses.toStdString());
    EXPECT_TRUE(checked->hasFocus());
    form.checked.Text = u"12"_s;
    ready->click();
    EXPECT_EQ("ready ", presses.toStdString());
    // The mnemonic left the focus in the field: it is asked again.
    form.checked.Text = u"1"_s;
    QTest::keyClick(checked, Qt::Key_Tab);
    EXPECT_TRUE(checked->hasFocus());
}

TEST_F(TextFields, EscapeTheCloseButtonAndCancelWorkWhateverStandsInTheField)
{
    QTest::keyClick(checked, Qt::Key_Escape);
    window.close();
    QTest::mouseClick(cancel, Qt::LeftButton);
    EXPECT_EQ("cancel cancel cancel ", presses.toStdString());
    EXPECT_EQ(0, checks);
}

TEST_F(TextFields, AButtonThatIsNotHeldUpOnlyPutsTheCheckOff)
{
    help->setFocus();
    EXPECT_TRUE(help->hasFocus());
    QTest::mouseClick(help, Qt::LeftButton);
    EXPECT_EQ("help ", presses.toStdString());
    EXPECT_EQ(0, checks);
    plain->setFocus();
    EXPECT_TRUE(checked->hasFocus());
    EXPECT_EQ(1, checks);
}

TEST_F(TextFields, AnotherWindowCanAlwaysBeGoneTo)
{
    QLineEdit other;
    other.show();
    QApplication::setActiveWindow(&other);
    other.setFocus();
    EXPECT_TRUE(other.hasFocus());
    EXPECT_EQ(0, checks);
    // Back again, the field is still to be checked.
    QApplication::setActiveWindow(&window);
    plain->setFocus();
    EXPECT_TRUE(checked->hasFocus());
}

TEST_F(TextFields, AFormThatGoesAsksNothing)
{
    form.Visible = false;
    EXPECT_EQ(0, checks);
}

TEST_F(TextFields, AMenuOfTheFieldIsNoWayInThatSelects)
{
    int gained = 0;
    form.plain.GotFocus = [&gained] { ++gained; };
    QFocusEvent back(QEvent::FocusIn, Qt::PopupFocusReason);
    QApplication::sendEvent(plain, &back);
    EXPECT_EQ(0, gained);
    QFocusEvent in(QEvent::FocusIn, Qt::TabFocusReason);
    QApplication::sendEvent(plain, &in);
    EXPECT_EQ(1, gained);
}

} // namespace

} // namespace orvantine
