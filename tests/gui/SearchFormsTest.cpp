#include "app/Root.h"
#include "desktop/qt/services/QtForms.h"
#include "desktop/qt/widgets/LineList.h"
#include "search/FindAudio.h"
#include "search/Suchen.h"
#include "transfer/Kopieren.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
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

namespace {

/// Forms whose window is found on the screen.
class SearchForms : public testing::Test
{
protected:
    QWidget* show(Form& form)
    {
        forms.show(form);
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows)
            if (candidate->objectName() == form.name && candidate->isVisible()) {
                QApplication::setActiveWindow(candidate);
                return candidate;
            }
        ADD_FAILURE() << form.name.toStdString() << " is not seen";
        return nullptr;
    }
    void fill(int lines)
    {
        QStringList found;
        for (int i = 1; i <= lines; ++i)
            found += u"/m\tLied %1.mp3"_s.arg(i);
        finder.LFileList.Checked = QList<bool>(lines, true);
        finder.LFileList.List = found;
    }
    [[nodiscard]] std::string marks() const
    {
        QString text;
        for (const bool mark : finder.LFileList.Checked.value())
            text += mark ? u'x' : u'-';
        return text.toStdString();
    }

    QtForms forms;
    FindAudio finder;
    Kopieren copying;
};

} // namespace

TEST_F(SearchForms, TheFinderIsFilledAndStartedByKeys)
{
    int scans = 0;
    finder.Command1.Click = [&] { ++scans; };
    finder.LFindType.ListIndex = FindAudio::Heading;
    QWidget* const window = show(finder);
    ASSERT_NE(window, nullptr);
    QTest::keyClicks(QApplication::focusWidget(), u"/m"_s);
    auto* const type = window->findChild<QComboBox*>(u"LFindType"_s);
    type->setFocus();
    QTest::keyClick(type, Qt::Key_Down);
    QTest::keyClick(type, Qt::Key_Return);
    EXPECT_EQ("/m", finder.TDrives.Text.value().toStdString());
    EXPECT_EQ(FindAudio::Playlists, finder.LFindType.ListIndex.value());
    EXPECT_EQ(1, scans);
    forms.unload(finder);
}

TEST_F(SearchForms, TheTabKeyGoesThroughTheFinder)
{
    ASSERT_NE(show(finder), nullptr);
    QStringList reached;
    for (int i = 0; i < 9; ++i) {
        reached += QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ("TDrives bDurchsuchen LFindType bOnlyAudio Command1 LFileList BReady bAbbrechen bHilfe",
              reached.join(u' ').toStdString());
    forms.unload(finder);
}

TEST_F(SearchForms, ResultsAppearWhileTheyAreFoundAndLoseTheirMarksByTheSpaceBar)
{
    QWidget* const window = show(finder);
    ASSERT_NE(window, nullptr);
    auto* const list = window->findChild<LineList*>(u"LFileList"_s);
    ASSERT_NE(list, nullptr);
    const QAbstractItemModelTester tester(list->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ("Gefundene Dateien", list->accessibleName().toStdString());
    fill(2);
    EXPECT_EQ(2, list->model()->rowCount());
    fill(5);
    EXPECT_EQ(5, list->model()->rowCount());
    EXPECT_EQ("/m  ›  Lied 5.mp3", list->model()->index(4, 0).data().toString().toStdString());
    list->setFocus();
    list->setCurrentIndex(list->model()->index(1, 0));
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ("x-xxx", marks());
    QTest::keyClick(list, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(list, Qt::Key_Down, Qt::ShiftModifier);
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ("x---x", marks());
    QTest::keyClick(list, Qt::Key_Space);
    EXPECT_EQ("xxxxx", marks());
    EXPECT_EQ(3, finder.LFileList.ListIndex.value());
    fill(0);
    EXPECT_EQ(0, list->model()->rowCount());
    forms.unload(finder);
}

TEST_F(SearchForms, EscapeInTheFinderPressesCancel)
{
    int cancelled = 0;
    finder.bAbbrechen.Click = [&] { ++cancelled; };
    QWidget* const window = show(finder);
    ASSERT_NE(window, nullptr);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(1, cancelled);
    EXPECT_TRUE(window->isVisible());
    forms.unload(finder);
}

TEST_F(SearchForms, TheProgressDialogIsStoppedByEscapeAndByItsButtonAndStays)
{
    int stops = 0;
    copying.bAbbrechen.Click = [&] { ++stops; };
    QWidget* const window = show(copying);
    ASSERT_NE(window, nullptr);
    EXPECT_EQ(" Datenübertragung", window->windowTitle().toStdString());
    QTest::keyClick(window, Qt::Key_Escape);
    window->findChild<QPushButton*>(u"bAbbrechen"_s)->click();
    window->close();
    EXPECT_EQ(3, stops);
    EXPECT_TRUE(window->isVisible());
    forms.unload(copying);
}

TEST_F(SearchForms, TheProgressDialogShowsTheFileTheBarAndTheTimeThatIsLeft)
{
    QWidget* const window = show(copying);
    ASSERT_NE(window, nullptr);
    auto* const bar = window->findChild<QProgressBar*>(u"pFortschritt"_s);
    ASSERT_NE(bar, nullptr);
    EXPECT_FALSE(bar->isVisible());
    copying.pFortschritt.Max = 1000;
    copying.pFortschritt.Value = 250;
    copying.pFortschritt.Visible = true;
    copying.LDatei.Caption = u"Ein Lied mit einem Namen, der viel länger ist als das Fenster breit sein kann.mp3"_s;
    copying.LMenge.Caption = u"12,3 MB von 514,0 MB"_s;
    copying.LTempo.Caption = u"4,2 MB/s, noch etwa 2 Minuten"_s;
    for (Label* const label : {&copying.LDatei, &copying.LMenge, &copying.LTempo})
        label->Visible = true;
    QCoreApplication::processEvents();
    EXPECT_TRUE(bar->isVisible());
    EXPECT_EQ("Fortschritt", bar->accessibleName().toStdString());
    EXPECT_EQ(1000, bar->maximum());
    EXPECT_EQ(250, bar->value());
    for (const Label* const label : {&copying.LMenge, &copying.LTempo}) {
        auto* const text = window->findChild<QLabel*>(label->name);
        ASSERT_NE(text, nullptr) << label->name.toStdString();
        EXPECT_GE(text->width(), text->sizeHint().width()) << label->name.toStdString();
    }
    EXPECT_LE(window->width(), 480);
    forms.unload(copying);
}

} // namespace orvantine
