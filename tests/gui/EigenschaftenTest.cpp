#include "operations/Eigenschaften.h"
#include "app/DataFolder.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/mnuSpeichern.h"

#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/services/QtForms.h"
#include "desktop/qt/window/MainWindow.h"
#include "metadata/frmID3.h"
#include "support/FakeDesktop.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The properties dialog on the real forms, over a desktop with one playlist.
class EigenschaftenDialog : public testing::Test
{
protected:
    void SetUp() override
    {
        desktop.complaints.Report = [](const QString& text) { ADD_FAILURE() << text.toStdString(); };
        desktop.memory()->put(u"/m/Liste.m3u"_s, "/m/a.mp3\r\n");
        desktop.memory()->put(u"/m/a.mp3"_s, "x");
        desktop.memory()->putFolder(u"/daten"_s);
        root.tDatenbank.Text = u"/daten/"_s;
        ListItem row;
        row.Text = u"000"_s;
        row.SubItems = {{.Text = u"Liste"_s}, {.Text = u"/m/Liste.m3u"_s}, {.Text = u"1"_s}};
        root.LListView1.append(std::move(row));
        root.LListView1.select(1);
        root.tDatum.Caption = u"01.02.2003"_s;
        form.bAbbrechen.Click = [this] { forms.unload(form); };
        showEigenschaften(root);
        // The fake forms fill the fields; the real ones show them.
        form.Visible = false;
        forms.show(form);
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* candidate : windows)
            if (candidate->objectName() == form.name && candidate->isVisible())
                window = candidate;
        ASSERT_NE(window, nullptr);
        QApplication::setActiveWindow(window);
    }
    void TearDown() override { forms.dropAll(); }

    template <class W>
    W* widget(const QString& name) const
    {
        W* const found = window->findChild<W*>(name);
        EXPECT_NE(found, nullptr) << name.toStdString();
        return found;
    }
    [[nodiscard]] QLineEdit* field(const QString& name) const { return widget<QLineEdit>(name); }

    fake::FakeDesktop desktop;
    Root& root = desktop.root();
    Eigenschaften& form = *root.eigenschaften;
    QtForms forms;
    QWidget* window = nullptr;
};

TEST_F(EigenschaftenDialog, IsNotModalAndShowsTheFields)
{
    EXPECT_FALSE(window->isModal());
    EXPECT_EQ(window->windowTitle(), u" Eigenschaften"_s);
    EXPECT_EQ(widget<QLabel>(u"tName"_s)->text(), u"Liste"_s);
    EXPECT_EQ(widget<QLabel>(u"tTracks"_s)->text(), u"1 Tracks"_s);
    EXPECT_EQ(field(u"tPlaylistname"_s)->text(), u"Liste"_s);
    EXPECT_EQ(field(u"tPlayliste"_s)->text(), u"/m/Liste.m3u"_s);
    EXPECT_EQ(field(u"tDatum"_s)->text(), u"01.02.2003"_s);
    EXPECT_TRUE(widget<QPushButton>(u"BReady"_s)->isDefault());
    EXPECT_EQ(widget<QPushButton>(u"bAbbrechen"_s)->text(), u"Abbrechen"_s);
    EXPECT_EQ(widget<QPushButton>(u"bHilfe"_s)->text(), u"&Hilfe"_s);
}

TEST_F(EigenschaftenDialog, ALongDescriptionIsSeenFromItsBeginningAndAPathToItsEnd)
{
    const QString text(300, u'x');
    form.tBeschreibung.Text = text;
    form.tPlayliste.Text = text;
    EXPECT_EQ(0, field(u"tBeschreibung"_s)->cursorPosition());
    EXPECT_EQ(300, field(u"tPlayliste"_s)->cursorPosition());
    field(u"tBeschreibung"_s)->setFocus();
    field(u"tBeschreibung"_s)->setCursorPosition(5);
    QTest::keyClicks(field(u"tBeschreibung"_s), u"ab"_s);
    EXPECT_EQ(7, field(u"tBeschreibung"_s)->cursorPosition()) << "the cursor of a user who types stays";
}

TEST_F(EigenschaftenDialog, TabGoesThroughTheFieldsInTheirOrder)
{
    field(u"tPlaylistname"_s)->setFocus();
    QStringList way;
    for (int i = 0; i < 9; ++i) {
        way.append(QApplication::focusWidget()->objectName());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ("tPlaylistname tPlayliste tBeschreibung tDatum tAlbumCover bFindPic BReady bAbbrechen bHilfe",
              way.join(u' ').toStdString());
}

TEST_F(EigenschaftenDialog, NoTwoMnemonicsClashAndEveryWidgetHasAName)
{
    QStringList letters;
    const QList<QWidget*> all = window->findChildren<QWidget*>();
    for (QWidget* one : all) {
        QString text;
        if (auto* const label = qobject_cast<QLabel*>(one); label != nullptr && label->buddy() != nullptr)
            text = label->text();
        if (auto* const button = qobject_cast<QPushButton*>(one); button != nullptr)
            text = button->text();
        if (const qsizetype mark = text.indexOf(u'&'); mark >= 0)
            letters.append(text.mid(mark + 1, 1).toUpper());
        if (one->focusPolicy() != Qt::NoFocus) {
            EXPECT_FALSE(one->accessibleName().isEmpty() && text.isEmpty()) << one->objectName().toStdString();
        }
    }
    QStringList unique = letters;
    unique.removeDuplicates();
    EXPECT_EQ(letters, unique);
    EXPECT_EQ(8, letters.size());
}

TEST_F(EigenschaftenDialog, ADateIsTypedWithDigitsCompletedOnLeavingAndRefusedWhileItIsNone)
{
    QLineEdit* const date = field(u"tDatum"_s);
    date->setFocus();
    QCoreApplication::processEvents();
    EXPECT_EQ(date->selectedText(), u"01.02.2003"_s);
    desktop.log.take();
    QTest::keyClicks(date, u"1x,2"_s);
    EXPECT_EQ(date->text(), u"1.2"_s);
    EXPECT_EQ(desktop.log.linesOf({u"messages.beep"_s}).size(), 1);
    QTest::keyClick(date, Qt::Key_Return);
    EXPECT_TRUE(date->hasFocus());
    QTest::mouseClick(widget<QPushButton>(u"BReady"_s), Qt::LeftButton);
    EXPECT_TRUE(form.Visible.value());
    EXPECT_TRUE(date->hasFocus());
    date->selectAll();
    QTest::keyClicks(date, u"010299"_s);
    QTest::keyClick(date, Qt::Key_Return);
    EXPECT_EQ(date->text(), u"01.02.1999"_s);
    EXPECT_TRUE(field(u"tAlbumCover"_s)->hasFocus());
    QTest::keyClick(field(u"tAlbumCover"_s), Qt::Key_Return);
    EXPECT_TRUE(field(u"tBeschreibung"_s)->hasFocus());
}

TEST_F(EigenschaftenDialog, EscapeClosesItWhateverTheDateSays)
{
    QLineEdit* const date = field(u"tDatum"_s);
    date->setFocus();
    date->selectAll();
    QTest::keyClick(date, Qt::Key_Backspace);
    QTest::keyClick(date, Qt::Key_Escape);
    EXPECT_FALSE(form.Visible.value());
}

TEST_F(EigenschaftenDialog, EnterInTheNameAcceptsWhatStandsThere)
{
    QLineEdit* const name = field(u"tPlaylistname"_s);
    name->setFocus();
    name->selectAll();
    QTest::keyClicks(name, u"Umbenannt"_s);
    QTest::keyClick(name, Qt::Key_Return);
    EXPECT_EQ("Umbenannt", root.LListView1.subItem(1, 1).toStdString());
    EXPECT_EQ("Umbenannt", indexValue(root, databaseFile(root), 1, 'b').toStdString());
}

TEST(CatalogueShortcuts, StartTheirCommands)
{
    fake::FakeDesktop desktop;
    Root& root = desktop.root();
    MainWindow window(root);
    QStringList pressed;
    root.mnuNeu.Click = [&] { pressed += u"mnuNeu"_s; };
    root.mnuDurchsuchen.Click = [&] { pressed += u"mnuDurchsuchen"_s; };
    root.mnuFavoriten.Click = [&] { pressed += u"mnuFavoriten"_s; };
    root.Visible = true;
    QApplication::setActiveWindow(&window);
    QTest::keyClick(&window, Qt::Key_L, Qt::ControlModifier);
    QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
    QTest::keyClick(&window, Qt::Key_I, Qt::ControlModifier);
    EXPECT_EQ("mnuNeu mnuDurchsuchen mnuFavoriten", pressed.join(u' ').toStdString());
}

} // namespace

} // namespace orvantine
