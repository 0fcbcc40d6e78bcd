#include "app/DataFolder.h"
#include "app/Root.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/services/QtForms.h"
#include "desktop/qt/widgets/ReportList.h"
#include "search/ErrorListe.h"
#include "search/FolderCheck.h"
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

/// The dialogs over a catalogue with one list that is there and one that is missing.
class ChecksOnScreen : public testing::Test
{
protected:
    ChecksOnScreen()
    {
        desktop.complaints.Report = [](const QString& text) { ADD_FAILURE() << text.toStdString(); };
        root.tDatenbank.Text = u"/d/"_s;
        desktop.memory()->put(databaseFile(root), "[Index]\r\n1b=Erste\r\n1c=/l/Erste.m3u\r\n"
                                                  "2b=<b>Zweite</b>\r\n2c=/l/Zweite.m3u\r\n");
        desktop.memory()->put(u"/l/Erste.m3u"_s, "/m/eins.mp3\r\n/m/weg.mp3\r\n");
        desktop.memory()->put(u"/m/eins.mp3"_s, "1");
    }
    ~ChecksOnScreen() override
    {
        forms.dropAll();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    void show(Form& form, Button& cancel)
    {
        cancel.Click = [this, &form] {
            ++cancelled;
            forms.unload(form);
        };
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

    void expectNothingClipped() const
    {
        const auto buttons = window->findChildren<QPushButton*>();
        for (const QPushButton* button : buttons)
            EXPECT_GE(button->width(), button->sizeHint().width()) << button->text().toStdString();
        const auto labels = window->findChildren<QLabel*>();
        for (const QLabel* label : labels)
            EXPECT_TRUE(!label->isVisible() || label->height() >= label->heightForWidth(label->width()))
                << label->text().toStdString();
    }

    fake::FakeDesktop desktop;
    Root& root = desktop.root();
    QtForms forms;
    QWidget* window = nullptr;
    int cancelled = 0;
};

} // namespace

TEST_F(ChecksOnScreen, TheFoldersAreTypedAndAcceptedByKeysAlone)
{
    FolderCheck& form = *root.folderCheck;
    int accepted = 0;
    form.BReady.Click = [&accepted] { ++accepted; };
    show(form, form.bAbbrechen);
    auto* const old = find<QLineEdit>(form.tFolderOld);
    auto* const fresh = find<QLineEdit>(form.tFolderNew);
    ASSERT_TRUE(old->hasFocus());
    EXPECT_EQ("Alter Speicherordner", old->accessibleName().toStdString());
    EXPECT_EQ("Neuer Speicherordner", fresh->accessibleName().toStdString());

    QTest::keyClicks(old, u"/m"_s);
    QTest::keyClick(old, Qt::Key_Return);
    EXPECT_TRUE(fresh->hasFocus());
    QTest::keyClicks(fresh, u"/neu"_s);
    EXPECT_EQ("/m", form.tFolderOld.Text.value().toStdString());
    EXPECT_EQ("/neu", form.tFolderNew.Text.value().toStdString());
    QTest::keyClick(fresh, Qt::Key_Return);
    EXPECT_EQ(0, accepted);
    EXPECT_TRUE(find<QPushButton>(form.bOrdner)->hasFocus());

    QTest::keyClick(find<QPushButton>(form.bOrdner), Qt::Key_Return);
    EXPECT_EQ(1, accepted);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(1, cancelled);
}

TEST_F(ChecksOnScreen, ThePreviewFitsIntoTheDialog)
{
    FolderCheck& form = *root.folderCheck;
    show(form, form.bAbbrechen);
    const QSize before = window->size();
    QTest::keyClicks(find<QLineEdit>(form.tFolderOld), u"/m"_s);
    QTest::keyClicks(find<QLineEdit>(form.tFolderNew), u"/neu"_s);
    desktop.events().run(std::chrono::seconds{1});
    EXPECT_EQ("2 Einträge würden sich ändern (in einer Playliste). Keine der neuen Dateien ist vorhanden.",
              find<QLabel>(form.LVorschau)->text().toStdString());
    QCoreApplication::processEvents();
    EXPECT_EQ(before, window->size());
    expectNothingClipped();
    forms.unload(form);
}

TEST_F(ChecksOnScreen, AClickOnAFaultSaysWhatItMeansAndEnterChoosesIt)
{
    ErrorListe& form = *root.errorListe;
    form.LErrorView.DblClick = [this, &form] {
        form.chosen = form.LErrorView.selectedRow();
        forms.unload(form);
    };
    show(form, form.bAbbrechen);
    auto* const lines = find<ReportList>(form.LErrorView);
    ASSERT_TRUE(lines->hasFocus());
    ASSERT_EQ(2, form.LErrorView.count());
    EXPECT_EQ("Fehlende Dateien", lines->accessibleName().toStdString());
    EXPECT_TRUE(lines->isColumnHidden(0));

    const QModelIndex first = lines->model()->index(0, 2);
    QTest::mouseClick(lines->viewport(), Qt::LeftButton, {}, lines->visualRect(first).center());
    auto* const meaning = find<QLabel>(form.LFehler);
    EXPECT_EQ("FEHLERHAFTE SOUNDDATEI IN PLAYLISTE: Erste", meaning->text().toStdString());
    EXPECT_EQ(Qt::PlainText, meaning->textFormat());
    QTest::keyClick(lines, Qt::Key_Down);
    EXPECT_EQ("DIESE DATEI IST EINE FEHLENDE WIEDERGABELISTE", meaning->text().toStdString());
    expectNothingClipped();

    QTest::keyClick(lines, Qt::Key_Return);
    EXPECT_EQ(2, form.chosen);
    EXPECT_EQ(0, cancelled);
    EXPECT_FALSE(form.Visible.value());
}

TEST_F(ChecksOnScreen, EscapeClosesTheListOfFaultsWithoutABox)
{
    ErrorListe& form = *root.errorListe;
    show(form, form.bAbbrechen);
    QTest::keyClick(window, Qt::Key_Escape);
    EXPECT_EQ(1, cancelled);
    EXPECT_FALSE(form.Visible.value());
}

} // namespace orvantine
