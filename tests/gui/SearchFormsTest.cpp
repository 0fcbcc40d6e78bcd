#include "app/Root.h"
#include "desktop/qt/services/QtForms.h"
#include "search/Suchen.h"
#include "search/mnuSuchen.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The search dialog on the screen, with two texts in its history.
class SearchWindow : public testing::Test
{
protected:
    void SetUp() override
    {
        form.Text1.List = QStringList{u"Nachtzug"_s, u"Lissabon"_s};
        form.Text1.Change = [this] { form.CSuchen.Enabled = !form.Text1.Text.value().isEmpty(); };
        form.Text1.Click = form.Text1.Change;
        form.CSuchen.Click = [this] { ++searched; };
        form.CAbbrechen.Click = [this] {
            ++cancelled;
            form.Visible = false;
        };
        forms.show(form);
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows)
            if (candidate->objectName() == u"Suchen"_s && candidate->isVisible())
                window = candidate;
        ASSERT_NE(window, nullptr);
        QApplication::setActiveWindow(window);
        text = window->findChild<QComboBox*>(u"Text1"_s);
        ASSERT_NE(text, nullptr);
    }
    ~SearchWindow() override { forms.unload(form); }

    template <class W>
    W* find(const QString& name) const
    {
        W* const widget = window->findChild<W*>(name);
        EXPECT_NE(widget, nullptr) << name.toStdString();
        return widget;
    }

    QtForms forms;
    Suchen form;
    QWidget* window = nullptr;
    QComboBox* text = nullptr;
    int searched = 0;
    int cancelled = 0;
};

} // namespace

TEST_F(SearchWindow, ComesUpBesideTheMainWindowWithTheFocusInTheText)
{
    EXPECT_EQ(Qt::NonModal, window->windowModality());
    EXPECT_TRUE(text->hasFocus());
    EXPECT_EQ("Suchen nach", text->accessibleName().toStdString());
    EXPECT_FALSE(find<QPushButton>(u"CSuchen"_s)->isEnabled());
}

TEST_F(SearchWindow, EnterSearchesForWhatWasTypedAsItStands)
{
    QTest::keyClicks(text, u"nacht"_s);
    EXPECT_EQ("nacht", form.Text1.Text.value().toStdString());
    EXPECT_EQ("nacht", text->currentText().toStdString());
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(1, searched);
    EXPECT_EQ(2, text->count());
}

TEST_F(SearchWindow, EnterInAnEmptyFieldSearchesForNothing)
{
    QTest::keyClick(text, Qt::Key_Return);
    EXPECT_EQ(0, searched);
}

TEST_F(SearchWindow, TheArrowsTakeATextFromTheHistory)
{
    QTest::keyClick(text, Qt::Key_Down);
    EXPECT_EQ("Nachtzug", form.Text1.Text.value().toStdString());
    EXPECT_TRUE(find<QPushButton>(u"CSuchen"_s)->isEnabled());
}

TEST_F(SearchWindow, ANewTextInTheHistoryLeavesWhatIsTyped)
{
    QTest::keyClicks(text, u"neu"_s);
    form.Text1.List = QStringList{u"Nachtzug"_s, u"Lissabon"_s, u"neu"_s};
    EXPECT_EQ("neu", text->currentText().toStdString());
    EXPECT_EQ(3, text->count());
    EXPECT_EQ("neu", form.Text1.Text.value().toStdString());
}

TEST_F(SearchWindow, EscapeCancelsAndHidesIt)
{
    QTest::keyClick(text, Qt::Key_Escape);
    EXPECT_EQ(1, cancelled);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(SearchWindow, TheDirectionsExcludeOneAnother)
{
    EXPECT_TRUE(find<QRadioButton>(u"OVorwärts"_s)->isChecked());
    find<QRadioButton>(u"ORückwärts"_s)->click();
    EXPECT_TRUE(form.ORückwärts.Value);
    EXPECT_FALSE(form.OVorwärts.Value);
    find<QCheckBox>(u"bIndexFinder"_s)->click();
    EXPECT_TRUE(form.bIndexFinder.Value);
}

TEST_F(SearchWindow, KeepsItsSizeUnderALongHistoryAndALongName)
{
    const QSize before = window->size();
    form.Text1.List = QStringList{QString(10000, u'x')};
    form.progress.Caption = u"Durchsucht wird „%1“, noch 3 Playlisten."_s.arg(QString(60, u'W'));
    QCoreApplication::processEvents();
    EXPECT_EQ(before.width(), window->width());
}

} // namespace orvantine
