#include "app/Direkthilfe.h"
#include "app/Root.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/forms/HelpWindow.h"
#include "desktop/qt/services/QtForms.h"
#include "shell/Dialoge.h"
#include "shell/Optionen.h"
#include "shell/Tastatur.h"
#include "support/FakeDesktop.h"
#include "support/FormsContract.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The dialogs on the real service, used by mouse and by keys.
class OptionsOnScreen : public testing::Test
{
protected:
    OptionsOnScreen()
    {
        desktop.complaints.Report = [](const QString& text) { ADD_FAILURE() << text.toStdString(); };
    }
    ~OptionsOnScreen() override
    {
        forms.dropAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void show(Form& form)
    {
        forms.show(form);
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows)
            if (candidate->objectName() == form.name && candidate->isVisible())
                window = candidate;
        ASSERT_NE(window, nullptr);
        QApplication::setActiveWindow(window);
        QCoreApplication::processEvents();
    }

    template <class W>
    W* find(const Control& control) const
    {
        W* const widget = window->findChild<W*>(control.fullName());
        EXPECT_NE(widget, nullptr) << control.fullName().toStdString();
        return widget;
    }

    /// Alt and a letter.
    void alt(Qt::Key key) const { QTest::keyClick(window->windowHandle(), key, Qt::AltModifier); }
    static void type(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }

    /// Names of the widgets that the Tab key visits, from the first one on until it is back.
    [[nodiscard]] QStringList tabOrder() const
    {
        QStringList names;
        for (int i = 0; i < 100; ++i) {
            const QString name = QApplication::focusWidget()->objectName();
            if (names.contains(name))
                break;
            names += name;
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        return names;
    }

    void expectNothingClipped() const
    {
        for (const QPushButton* button : window->findChildren<QPushButton*>())
            EXPECT_TRUE(!button->isVisible() || button->width() >= button->sizeHint().width())
                << button->text().toStdString();
        for (const QCheckBox* box : window->findChildren<QCheckBox*>())
            EXPECT_TRUE(!box->isVisible() || box->width() >= box->sizeHint().width()) << box->text().toStdString();
        for (const QLabel* label : window->findChildren<QLabel*>())
            EXPECT_TRUE(!label->isVisible() || label->height() >= label->heightForWidth(label->width()))
                << label->text().toStdString();
    }

    void expectNamesForAll() const
    {
        for (const QWidget* widget : window->findChildren<QWidget*>()) {
            if (widget->focusPolicy() == Qt::NoFocus || widget->objectName().startsWith(u"qt_"_s))
                continue;
            const auto* box = qobject_cast<const QAbstractButton*>(widget);
            const auto* label = qobject_cast<const QLabel*>(widget);
            EXPECT_TRUE(!widget->accessibleName().isEmpty() || (box != nullptr && !box->text().isEmpty()) ||
                        label != nullptr || widget->parentWidget()->focusProxy() != nullptr ||
                        qobject_cast<const QAbstractItemView*>(widget->parentWidget()) != nullptr ||
                        qobject_cast<const QComboBox*>(widget->parentWidget()) != nullptr)
                << widget->metaObject()->className() << " " << widget->objectName().toStdString();
        }
    }

    fake::FakeDesktop desktop;
    Root& root = desktop.root();
    QtForms forms;
    QWidget* window = nullptr;
};

TEST_F(OptionsOnScreen, TheSettingsAreReachedInTheOrderInWhichTheyAreSeen)
{
    show(*root.optionen);
    EXPECT_EQ("bFolderView bLokalePlayliste bShowDialog bCheckEntrys bAutoTag tSoundfiles bSoundfiles tRipper bRipper "
              "bShowChange bShowDate bHelpDirekt bCreateFolder bUseCDBurner bZipCompress bLoadPlayer bNoUpdate BReady "
              "bAbbrechen bHilfe",
              tabOrder().join(u' ').toStdString());
    expectNothingClipped();
    expectNamesForAll();
}

TEST_F(OptionsOnScreen, TheSettingsAreSetByKeysAlone)
{
    root.loaded = true;
    show(*root.optionen);
    Optionen& form = *root.optionen;
    alt(Qt::Key_P);
    EXPECT_TRUE(QTest::qWaitFor([&form] { return !form.bCheckEntrys.Value.value(); }));
    // Two told captions share the letter: each press goes on to the next of them.
    alt(Qt::Key_K);
    QWidget* const first = QApplication::focusWidget();
    alt(Qt::Key_K);
    EXPECT_NE(first, QApplication::focusWidget());
    alt(Qt::Key_O);
    EXPECT_EQ(find<QLineEdit>(form.tSoundfiles), QApplication::focusWidget());
    QTest::keyClicks(QApplication::focusWidget(), u"/musik"_s);
    EXPECT_EQ("/musik", form.tSoundfiles.Text.value().toStdString());
    find<QComboBox>(form.bZipCompress)->setFocus();
    type(Qt::Key_Up);
    EXPECT_EQ(1, form.bZipCompress.ListIndex.value());
    type(Qt::Key_Return);
    const auto stored = desktop.settings.peek(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, u"Lokal"_s);
    EXPECT_FALSE(stored.has_value()); // The key does not exist before a start: nothing is written anywhere else.
    EXPECT_FALSE(form.Visible.value());
}

TEST_F(OptionsOnScreen, OnlyTheToldCaptionsShareALetter)
{
    show(*root.optionen);
    QMap<QChar, int> letters;
    for (const Control* control : root.optionen->controls.all()) {
        QString caption;
        if (const auto* box = dynamic_cast<const CheckBox*>(control))
            caption = box->Caption;
        else if (const auto* label = dynamic_cast<const Label*>(control))
            caption = label->Caption;
        else if (const auto* button = dynamic_cast<const Button*>(control))
            caption = button->Caption;
        if (const qsizetype at = caption.indexOf(u'&'); at >= 0)
            ++letters[caption[at + 1].toUpper()];
    }
    QString shared;
    for (auto letter = letters.cbegin(); letter != letters.cend(); ++letter)
        if (letter.value() > 1)
            shared += letter.key();
    EXPECT_EQ("KN", shared.toStdString());
}

TEST_F(OptionsOnScreen, EscapeLeavesTheSettingsAsTheyWere)
{
    show(*root.optionen);
    find<QCheckBox>(root.optionen->bAutoTag)->click();
    type(Qt::Key_Escape);
    EXPECT_FALSE(root.optionen->Visible.value());
    EXPECT_FALSE(desktop.settings.keyExists(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s));
}

TEST_F(OptionsOnScreen, TheKeysStandInTwoTablesThatAreReadByCell)
{
    show(*root.tastatur);
    for (const auto& [keys, rows] : {std::pair{&root.tastatur->LKeys, 12}, std::pair{&root.tastatur->LMoreKeys, 17}}) {
        auto* const table = find<QTreeWidget>(*keys);
        EXPECT_EQ(rows, table->topLevelItemCount());
        EXPECT_FALSE(table->accessibleName().isEmpty());
        for (int row = 0; row < table->topLevelItemCount(); ++row) {
            EXPECT_EQ(keys->List.value()[row].section(u'\t', 0, 0), table->topLevelItem(row)->text(0));
            EXPECT_EQ(keys->List.value()[row].section(u'\t', 1), table->topLevelItem(row)->text(1));
        }
    }
    EXPECT_EQ("LKeys LMoreKeys bAbbrechen", tabOrder().join(u' ').toStdString());
    expectNothingClipped();
    type(Qt::Key_Escape);
    EXPECT_FALSE(root.tastatur->Visible.value());
}

TEST_F(OptionsOnScreen, ATipShowsMarkupAndPercentSignsAsTheyStand)
{
    Direkthilfe& form = *root.direkthilfe;
    form.Caption = u"Orvanten Manager\rEine <b>Überschrift</b>"_s;
    form.RHelpID.Caption = u"113"_s;
    form.RText.Caption = u"100 % <img src=/dev/zero> & mehr\n\nEnde"_s;
    show(form);
    EXPECT_EQ("Orvanten Manager – Eine <b>Überschrift</b>", window->windowTitle().toStdString());
    for (const QLabel* label : window->findChildren<QLabel*>())
        EXPECT_TRUE(label->textFormat() == Qt::PlainText || label->text().isEmpty()) << label->text().toStdString();
    EXPECT_EQ("100 % <img src=/dev/zero> & mehr\n\nEnde", find<QLabel>(form.RText)->text().toStdString());
    EXPECT_GT(form.RText.Height.value(), 0);
    EXPECT_EQ(form.RText.Height.value() + 1000, form.Height.value());
    expectNothingClipped();
}

TEST_F(OptionsOnScreen, AFormThatIsUpIsNotShownModalOnceMore)
{
    expectAFormThatIsUpToStayAsItIs(forms, *root.direkthilfe);
}

TEST_F(OptionsOnScreen, ATipGoesByEnterAndByEscape)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        forms.unload(*root.direkthilfe);
        show(*root.direkthilfe);
        EXPECT_EQ(find<QPushButton>(root.direkthilfe->BReady), QApplication::focusWidget());
        type(key);
        EXPECT_FALSE(root.direkthilfe->Visible.value());
    }
}

TEST_F(OptionsOnScreen, TheWizardIsUsedByKeysAlone)
{
    for (const QString& track : {u"/musik/Rock/r1.mp3"_s, u"/musik/Jazz/j1.mp3"_s})
        desktop.memory()->put(track, "mp3");
    desktop.start();
    Dialoge& wizard = *root.dialoge;
    wizard.Visible = false;
    show(wizard);
    expectNothingClipped();
    type(Qt::Key_Return);
    EXPECT_EQ(1, wizard.page.value());
    auto* const folder = find<QLineEdit>(wizard.tOrdner);
    EXPECT_EQ(folder, QApplication::focusWidget());
    folder->selectAll();
    QTest::keyClicks(folder, u"/weg"_s);
    type(Qt::Key_Return);
    EXPECT_EQ("Bitte wählen Sie einen Ordner, der vorhanden ist.", find<QLabel>(wizard.refusal)->text().toStdString());
    expectNothingClipped();
    folder->selectAll();
    QTest::keyClicks(folder, u"/musik"_s);
    type(Qt::Key_Return);
    EXPECT_EQ(2, wizard.page.value());
    EXPECT_EQ("Jazz (1)|Rock (1)", wizard.LFindDir.List.value().join(u'|').toStdString());
    EXPECT_EQ(2, find<QListWidget>(wizard.LFindDir)->count());
    EXPECT_EQ("Fertig", find<QPushButton>(wizard.bButton[2])->text().toStdString());
    EXPECT_EQ(find<QPushButton>(wizard.bButton[2]), QApplication::focusWidget());
    expectNothingClipped();
    root.Timer2.Tick();
    type(Qt::Key_Return);
    EXPECT_TRUE(root.pPausePlayer.Enabled.value());
}

TEST_F(OptionsOnScreen, TheWizardIsUsedByTheMouseAlone)
{
    desktop.memory()->put(u"/musik/Rock/r1.mp3"_s, "mp3");
    desktop.start();
    Dialoge& wizard = *root.dialoge;
    wizard.Visible = false;
    show(wizard);
    const auto press = [this](Button& button) { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); };
    press(wizard.bButton[2]);
    press(wizard.bButton[1]);
    EXPECT_EQ(0, wizard.page.value());
    press(wizard.bButton[2]);
    desktop.choosers.chooseFolder(u"/musik"_s);
    press(wizard.bOrdner);
    QTest::mouseClick(find<QCheckBox>(wizard.bSndfiles), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_FALSE(wizard.bSndfiles.Value.value());
    press(wizard.bButton[2]);
    EXPECT_EQ(1, root.LListView1.count());
    press(wizard.bButton[0]);
    EXPECT_TRUE(wizard.Visible.value()); // There is nothing to cancel any more.
    press(wizard.bButton[2]);
    EXPECT_FALSE(wizard.Visible.value());
}

TEST_F(OptionsOnScreen, OnItsLastPageTheWizardGoesByEscapeAndByTheWindowsButton)
{
    desktop.memory()->put(u"/musik/Rock/r1.mp3"_s, "mp3");
    desktop.memory()->put(u"/mehr/Jazz/j1.mp3"_s, "mp3");
    desktop.start();
    Dialoge& wizard = *root.dialoge;
    wizard.Visible = false;
    for (const bool byKey : {true, false}) {
        show(wizard);
        wizard.bButton[2].Click();
        wizard.tOrdner.Text = byKey ? u"/musik"_s : u"/mehr"_s;
        wizard.bButton[2].Click();
        ASSERT_EQ(2, wizard.page.value());
        ASSERT_FALSE(wizard.working.value());
        root.Timer2.Tick();
        if (byKey)
            type(Qt::Key_Escape);
        else
            window->close();
        EXPECT_FALSE(wizard.Visible.value()) << byKey;
        // Nobody has pressed the button that plays.
        EXPECT_FALSE(root.pPausePlayer.Enabled.value());
    }
}

TEST_F(OptionsOnScreen, WhileItWorksTheWindowsButtonStopsTheWizardAndLeavesItUp)
{
    desktop.memory()->put(u"/musik/Rock/r1.mp3"_s, "mp3");
    desktop.memory()->put(u"/musik/Jazz/j1.mp3"_s, "mp3");
    desktop.start();
    Dialoge& wizard = *root.dialoge;
    wizard.Visible = false;
    show(wizard);
    wizard.bButton[2].Click();
    wizard.tOrdner.Text = u"/musik"_s;
    const auto added = wizard.LFindDir.List.addNotifier([this, &wizard] {
        if (wizard.LFindDir.List.value().size() == 1)
            window->close();
    });
    wizard.bButton[2].Click();
    EXPECT_TRUE(wizard.Visible.value());
    EXPECT_EQ("Jazz (1)", wizard.LFindDir.List.value().join(u'|').toStdString());
}

TEST(HelpOnPaper, APageBecomesAFileThatCanBePrinted)
{
    QString file;
    {
        HelpWindow help;
        ASSERT_TRUE(help.showTopic(QStringLiteral(ORVANTINE_HELP_FILE), u"/5.0 Tastaturbefehle.htm"_s));
        file = help.printed();
        QFile printed(file);
        ASSERT_TRUE(printed.open(QIODevice::ReadOnly)) << file.toStdString();
        EXPECT_TRUE(printed.readAll().startsWith("%PDF-"));
    }
    EXPECT_FALSE(QFile::exists(file));
}

} // namespace

} // namespace orvantine
