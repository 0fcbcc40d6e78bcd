#include "transfer/FolderDialogs.h"
#include "app/Root.h"
#include "desktop/posix/PosixFiles.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/services/QtForms.h"
#include "desktop/qt/widgets/FolderTreeView.h"
#include "playlists/PlaylistText.h"
#include "support/DesktopTest.h"
#include "transfer/Trackcopy.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSemaphore>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QStringList childNames(const QTreeWidgetItem& item)
{
    QStringList names;
    for (int i = 0; i < item.childCount(); ++i)
        names += item.child(i)->text(0);
    return names;
}

std::string joined(const QStringList& names)
{
    return names.join(u'|').toStdString();
}

/// Folders of a temporary folder in the real tree.
class FolderTreeOnScreen : public testing::Test
{
protected:
    void SetUp() override
    {
        for (const QString& name : {u"Musik/Alben/Eins"_s, u"Musik/alte"_s, u"Musik/.geheim/tief"_s, u"Leer"_s})
            ASSERT_TRUE(QDir(base()).mkpath(name));
        QFile file(base() + u"/Musik/datei.mp3"_s);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        control.RootCaption = u"Arbeitsplatz"_s;
        control.Change = [this] { changes += control.SelectedFolder.value(); };
    }

    [[nodiscard]] QString base() const { return folder.path(); }
    [[nodiscard]] QByteArray bytes(const QString& path) const { return QFile::encodeName(path); }

    FolderTreeView& show(const FolderReader& reader = readFolder)
    {
        tree = std::make_unique<FolderTreeView>(control, nullptr,
                                                std::vector<TreePlace>{{u"Ort"_s, bytes(base()), u"folder"_s}}, reader);
        tree->resize(400, 500);
        tree->show();
        return *tree;
    }
    /// The item of a path below the folder.
    QTreeWidgetItem* item(const QString& path)
    {
        QTreeWidgetItem* found = tree->topLevelItem(0)->child(0);
        const QStringList parts = path.split(u'/', Qt::SkipEmptyParts);
        for (const QString& part : parts) {
            QTreeWidgetItem* next = nullptr;
            for (int i = 0; found != nullptr && i < found->childCount(); ++i)
                if (found->child(i)->text(0) == part)
                    next = found->child(i);
            found = next;
        }
        return found;
    }
    /// Opens a folder and waits for what it holds.
    void open(const QString& path)
    {
        item(path)->setExpanded(true);
        ASSERT_TRUE(QTest::qWaitFor([&] { return isRead(path); }));
    }
    bool isRead(const QString& path)
    {
        return item(path)->childIndicatorPolicy() == QTreeWidgetItem::DontShowIndicatorWhenChildless;
    }

    QTemporaryDir folder;
    ControlSet controls;
    FolderTree control{controls, u"LTreeview"};
    QStringList changes;
    std::unique_ptr<FolderTreeView> tree;
};

TEST_F(FolderTreeOnScreen, TheRootBearsItsCaptionAndHoldsThePlaces)
{
    show();
    EXPECT_EQ("Arbeitsplatz", tree->topLevelItem(0)->text(0).toStdString());
    EXPECT_EQ("Ort", joined(childNames(*tree->topLevelItem(0))));
    EXPECT_TRUE(tree->topLevelItem(0)->isExpanded());
    EXPECT_EQ("Ordner", tree->accessibleName().toStdString());
    control.RootCaption = u"Rechner"_s;
    EXPECT_EQ("Rechner", tree->topLevelItem(0)->text(0).toStdString());
}

TEST_F(FolderTreeOnScreen, AFolderIsReadWhenItIsOpenedSortedAndWithoutHiddenOnesAndFiles)
{
    show();
    EXPECT_EQ(0, item({})->childCount());
    open({});
    EXPECT_EQ("Leer|Musik", joined(childNames(*item({}))));
    EXPECT_EQ(0, item(u"Musik"_s)->childCount());
    open(u"Musik"_s);
    EXPECT_EQ("Alben|alte", joined(childNames(*item(u"Musik"_s))));
    open(u"Leer"_s);
    EXPECT_EQ(0, item(u"Leer"_s)->childCount());
}

TEST_F(FolderTreeOnScreen, KeysOpenAndSelect)
{
    show();
    tree->setCurrentItem(item({}));
    QTest::keyClick(tree.get(), Qt::Key_Right);
    ASSERT_TRUE(QTest::qWaitFor([&] { return isRead({}); }));
    QTest::keyClick(tree.get(), Qt::Key_Down);
    EXPECT_EQ((base() + u"/Leer"_s).toStdString(), control.SelectedFolder.value().toStdString());
    QTest::keyClick(tree.get(), Qt::Key_M);
    EXPECT_EQ((base() + u"/Musik"_s).toStdString(), control.SelectedFolder.value().toStdString());
    QTest::keyClick(tree.get(), Qt::Key_Home);
    EXPECT_EQ("", control.SelectedFolder.value().toStdString());
    EXPECT_EQ("", changes.last().toStdString());
}

TEST_F(FolderTreeOnScreen, AMouseClickSelectsAndADoubleClickOpens)
{
    show();
    open({});
    const QPoint place = tree->visualItemRect(item(u"Musik"_s)).center();
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ((base() + u"/Musik"_s).toStdString(), control.SelectedFolder.value().toStdString());
    QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, place);
    ASSERT_TRUE(QTest::qWaitFor([&] { return isRead(u"Musik"_s); }));
    EXPECT_TRUE(item(u"Musik"_s)->isExpanded());
}

TEST_F(FolderTreeOnScreen, TheSelectedFolderIsShownAtOnceAndStaysWhenTheOthersCome)
{
    show();
    control.SelectedFolder = base() + u"/Musik/Alben"_s;
    EXPECT_EQ("Alben", tree->currentItem()->text(0).toStdString());
    ASSERT_TRUE(QTest::qWaitFor([&] { return isRead({}) && isRead(u"Musik"_s); }));
    EXPECT_EQ("Leer|Musik", joined(childNames(*item({}))));
    EXPECT_EQ("Alben|alte", joined(childNames(*item(u"Musik"_s))));
    EXPECT_EQ("Alben", tree->currentItem()->text(0).toStdString());
    EXPECT_TRUE(item(u"Musik"_s)->isExpanded());
    EXPECT_EQ("", joined(changes));
    EXPECT_EQ((base() + u"/Musik/Alben"_s).toStdString(), control.SelectedFolder.value().toStdString());
}

TEST_F(FolderTreeOnScreen, TheSelectedFolderStaysInSightAmongManyOthers)
{
    for (int i = 0; i < 300; ++i)
        ASSERT_TRUE(QDir(base()).mkpath(u"Aa %1"_s.arg(i)));
    show();
    control.SelectedFolder = base() + u"/Musik/Alben"_s;
    ASSERT_TRUE(QTest::qWaitFor([&] { return isRead({}) && isRead(u"Musik"_s); }));
    EXPECT_TRUE(tree->viewport()->rect().intersects(tree->visualItemRect(tree->currentItem())));
}

TEST_F(FolderTreeOnScreen, AHiddenFolderThatIsSelectedIsShownThough)
{
    control.SelectedFolder = base() + u"/Musik/.geheim/tief/"_s;
    show();
    ASSERT_TRUE(QTest::qWaitFor([&] { return isRead(u"Musik"_s); }));
    EXPECT_EQ("tief", tree->currentItem()->text(0).toStdString());
    EXPECT_EQ(".geheim|Alben|alte", joined(childNames(*item(u"Musik"_s))));
}

TEST_F(FolderTreeOnScreen, AFolderOutsideOfAllPlacesSelectsTheRoot)
{
    show();
    for (const QString& path : {u""_s, u"C:\\Musik"_s, u"/anderswo"_s}) {
        tree->setCurrentItem(item({}));
        control.SelectedFolder = path;
        EXPECT_EQ(tree->topLevelItem(0), tree->currentItem()) << path.toStdString();
    }
}

TEST_F(FolderTreeOnScreen, ADriveAndAnotherCaseLeadToTheOneFolderThatTheHostHas)
{
    PosixFilesOptions options;
    options.drives = {{u"C:"_s, base()}};
    const PosixFiles files(options);
    control.NativePath = [&files](const QString& path) { return files.nativePath(path); };
    for (const QString& text : {u"C:\\musik\\ALBEN"_s, u"C:\\Musik\\Alben\\"_s, base() + u"/MUSIK/alben"_s}) {
        show();
        control.SelectedFolder = text;
        EXPECT_EQ((base() + u"/Musik/Alben"_s).toStdString(),
                  FolderTreeView::pathOf(*tree->currentItem()).toStdString());
        ASSERT_TRUE(QTest::qWaitFor([&] { return isRead({}) && isRead(u"Musik"_s); }));
        EXPECT_EQ("Leer|Musik", joined(childNames(*item({}))));
        EXPECT_EQ("Alben|alte", joined(childNames(*item(u"Musik"_s))));
        EXPECT_EQ(text.toStdString(), control.SelectedFolder.value().toStdString()) << "the text stays as it is";
        EXPECT_EQ("", joined(changes));
    }
    show();
    control.SelectedFolder = u"C:\\Fort"_s;
    EXPECT_EQ(tree->topLevelItem(0), tree->currentItem());
}

TEST_F(FolderTreeOnScreen, RepeatedSeparatorsLeadToTheOneFolder)
{
    for (const auto& [drive, text] :
         {std::pair{u"/"_s, u"Z:"_s + base() + u"/Musik/Alben"_s}, std::pair{base() + u"/"_s, u"Z:\\Musik\\Alben"_s},
          std::pair{base() + u"//"_s, u"Z:\\\\Musik\\\\Alben\\\\"_s},
          std::pair{u"/"_s, base() + u"//Musik///Alben//"_s}}) {
        PosixFilesOptions options;
        options.drives = {{u"Z:"_s, drive}};
        const PosixFiles files(options);
        for (const bool native : {true, false}) {
            if (!native && text.startsWith(u'Z'))
                continue;
            control.NativePath = nullptr;
            if (native)
                control.NativePath = [&files](const QString& path) { return files.nativePath(path); };
            control.SelectedFolder = QString();
            show();
            control.SelectedFolder = text;
            EXPECT_EQ((base() + u"/Musik/Alben"_s).toStdString(),
                      FolderTreeView::pathOf(*tree->currentItem()).toStdString());
            ASSERT_TRUE(QTest::qWaitFor([&] { return isRead({}) && isRead(u"Musik"_s); }));
            EXPECT_EQ("Leer|Musik", joined(childNames(*item({}))));
        }
    }
    show();
    control.SelectedFolder = u"/gibt//es/nicht"_s;
    EXPECT_EQ(tree->topLevelItem(0), tree->currentItem());
}

TEST_F(FolderTreeOnScreen, NamesOfSeveralEncodingsInAPathAreReadEachForItself)
{
    const QByteArray name = bytes(base()) + "/J\xC3\xB6rg";
    const QByteArray path = name + "/Caf\xE9";
    ASSERT_EQ(0, ::mkdir(name.constData(), 0700));
    ASSERT_EQ(0, ::mkdir(path.constData(), 0700));
    show();
    open({});
    open(u"Jörg"_s);
    QTreeWidgetItem* const folderOfTwo = item(u"Jörg/Café"_s);
    ASSERT_NE(folderOfTwo, nullptr);
    tree->setCurrentItem(folderOfTwo);
    EXPECT_EQ((base() + u"/Jörg/Café"_s).toStdString(), control.SelectedFolder.value().toStdString());
    EXPECT_EQ((base() + u"/Jörg/Café"_s).toStdString(), folderOfTwo->toolTip(0).toStdString());
    EXPECT_EQ(path, PosixFiles(PosixFilesOptions()).nativePath(control.SelectedFolder.value()));
}

TEST_F(FolderTreeOnScreen, ALinkThatLeadsBackUpIsALeafAndOneThatLeadsRoundIsNoFolder)
{
    ASSERT_EQ(0, ::symlink(bytes(base()).constData(), bytes(base() + u"/Musik/zurück"_s).constData()));
    ASSERT_EQ(0, ::symlink("rund", bytes(base() + u"/Musik/rund"_s).constData()));
    ASSERT_EQ(0, ::symlink("nirgends", bytes(base() + u"/Musik/tot"_s).constData()));
    ASSERT_EQ(0, ::symlink("../Leer", bytes(base() + u"/Musik/anders"_s).constData()));
    show();
    open({});
    open(u"Musik"_s);
    EXPECT_EQ("Alben|alte|anders|zurück", joined(childNames(*item(u"Musik"_s))));
    EXPECT_EQ(QTreeWidgetItem::ShowIndicator, item(u"Musik/anders"_s)->childIndicatorPolicy());
    EXPECT_TRUE(isRead(u"Musik/zurück"_s));
    item(u"Musik/zurück"_s)->setExpanded(true);
    EXPECT_EQ(0, item(u"Musik/zurück"_s)->childCount());
}

TEST_F(FolderTreeOnScreen, AFolderWithoutRightsSaysSoAndCanStillBeSelected)
{
    show([this](const QByteArray& path) { return path == bytes(base()) ? readFolder(path) : FolderListing{}; });
    open({});
    open(u"Musik"_s);
    EXPECT_EQ(0, item(u"Musik"_s)->childCount());
    EXPECT_TRUE(item(u"Musik"_s)->toolTip(0).endsWith(u"\nDer Ordner kann nicht gelesen werden."_s));
    tree->setCurrentItem(item(u"Musik"_s));
    EXPECT_EQ((base() + u"/Musik"_s).toStdString(), control.SelectedFolder.value().toStdString());
}

TEST(FolderReading, AFolderThatCannotBeOpenedIsNotReadable)
{
    EXPECT_FALSE(readFolder("/gibt/es/nicht").readable);
    if (::geteuid() == 0)
        GTEST_SKIP() << "the superuser may read everything";
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::setPermissions(folder.path(), {}));
    EXPECT_FALSE(readFolder(QFile::encodeName(folder.path())).readable);
    QFile::setPermissions(folder.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

TEST_F(FolderTreeOnScreen, AFolderThatDoesNotAnswerHoldsUpNobody)
{
    const auto gate = std::make_shared<QSemaphore>();
    const auto done = std::make_shared<QSemaphore>();
    const QByteArray dead = bytes(base() + u"/Leer"_s);
    show([gate, done, dead](const QByteArray& path) {
        if (path != dead)
            return readFolder(path);
        gate->acquire();
        done->release();
        return FolderListing{};
    });
    open({});
    item(u"Leer"_s)->setExpanded(true);
    open(u"Musik"_s);
    EXPECT_EQ("Alben|alte", joined(childNames(*item(u"Musik"_s))));
    EXPECT_FALSE(isRead(u"Leer"_s));
    // It answers when the tree is long gone.
    tree.reset();
    gate->release();
    done->acquire();
    QCoreApplication::processEvents();
}

TEST(TreePlaces, HomeAndFileSystemThenVolumesThenTheNetwork)
{
    const QByteArray table = "22 1 8:1 / / rw - ext4 /dev/sda1 rw\n"
                             "23 22 0:20 / /proc rw - proc proc rw\n"
                             "24 22 0:21 / /run rw shared:1 - tmpfs tmpfs rw\n"
                             "25 22 8:2 / /boot/efi rw - vfat /dev/sda2 rw\n"
                             "26 22 7:1 / /snap/x rw - squashfs /dev/loop1 ro\n"
                             "27 22 8:17 / /media/ich/MEIN\\040STICK rw shared:9 - vfat /dev/sdb1 rw\n"
                             "28 22 8:33 / /daten rw - ext4 /dev/sdc1 rw\n"
                             "29 22 0:40 / /srv/musik rw - nfs4 server:/musik rw\n"
                             "30 24 0:41 / /run/user/1000/gvfs rw - fuse.gvfsd-fuse gvfsd-fuse rw\n"
                             "31 22 8:33 / /daten rw - ext4 /dev/sdc1 rw\n"
                             "32 22 8:3 / /home/ich rw - ext4 /dev/sda3 rw\n"
                             "33 24 0:42 / /run/media/ich/Platte rw - fuseblk /dev/sdd1 rw\n"
                             "34 22 0:43 / /sys rw - sysfs sysfs rw\n"
                             "kaputt\n";
    QStringList lines;
    for (const TreePlace& place : treePlaces("/home/ich", table))
        lines += place.name + u' ' + QString::fromUtf8(place.path) + u' ' + place.icon +
                 (place.network ? u" network"_s : QString());
    EXPECT_EQ("Persönlicher Ordner /home/ich user-home|Dateisystem / drive-harddisk|daten /daten drive-harddisk|"
              "MEIN STICK /media/ich/MEIN STICK drive-removable-media|"
              "Platte /run/media/ich/Platte drive-removable-media|musik /srv/musik folder-remote network|"
              "Netzwerkordner /run/user/1000/gvfs folder-remote network",
              joined(lines));
}

TEST(TreePlaces, WithoutHomeAndTableOnlyTheFileSystemIsLeft)
{
    const std::vector<TreePlace> places = treePlaces({}, {});
    ASSERT_EQ(1U, places.size());
    EXPECT_EQ("/", places[0].path.toStdString());
}

/// The three dialogs of the real window service over the fake desktop.
class FolderFormsOnScreen : public fake::DesktopTest
{
protected:
    void SetUp() override
    {
        root().tDatenbank.Text = data();
        putFolder(data().chopped(1));
        ASSERT_TRUE(QDir(folder.path()).mkpath(u"Musik"_s));
    }

    /// Shows a form, runs the script as soon as it is up, and ends it if the script did not.
    template <class Script>
    void show(Form& form, Script script)
    {
        QTimer::singleShot(0, [&] {
            FormWindow* window = nullptr;
            const QWidgetList all = QApplication::topLevelWidgets();
            for (QWidget* widget : all)
                if (widget->objectName() == form.name && widget->isVisible())
                    window = static_cast<FormWindow*>(widget);
            ASSERT_NE(window, nullptr);
            script(*window);
            EXPECT_FALSE(form.Visible.value());
            form.Visible = false;
        });
        forms.showModal(form);
        forms.unload(form);
    }
    [[nodiscard]] std::string option(const QString& key)
    {
        return desktop.profiles().value(data() + u"Orvantine.dat"_s, u"Options"_s, key).toStdString();
    }

    QTemporaryDir folder;
    QtForms forms;
};

TEST_F(FolderFormsOnScreen, EnterInTheTreeTakesTheFolder)
{
    for (FolderDialog* dialog : std::initializer_list<FolderDialog*>{root().filesCopy.get(), root().ordner.get()}) {
        show(*dialog, [&](FormWindow& window) {
            auto* const tree = window.findChild<FolderTreeView*>(u"LTreeview"_s);
            auto* const ready = window.findChild<QPushButton*>(u"BReady"_s);
            ASSERT_NE(tree, nullptr);
            EXPECT_EQ(window.windowTitle(), dialog->Caption.value());
            EXPECT_EQ("Arbeitsplatz", tree->topLevelItem(0)->text(0).toStdString());
            EXPECT_TRUE(ready->isDefault());
            EXPECT_EQ(tree, window.focusWidget());
            EXPECT_FALSE(tree->accessibleName().isEmpty());
            dialog->LTreeview.SelectedFolder = folder.path() + u"/Musik"_s;
            EXPECT_EQ("Musik", tree->currentItem()->text(0).toStdString());
            QTest::keyClick(tree, Qt::Key_Return);
        });
        EXPECT_EQ((folder.path() + u"/Musik"_s).toStdString(), root().tBrowseFolder.Text.value().toStdString());
    }
    EXPECT_EQ((folder.path() + u"/Musik/"_s).toStdString(), option(u"CopyStick"_s));
    EXPECT_EQ((folder.path() + u"/Musik/"_s).toStdString(), option(u"Soundfiles"_s));
}

TEST_F(FolderFormsOnScreen, APathThatIsTypedIsGoneToAndTaken)
{
    show(*root().filesCopy, [&](FormWindow& window) {
        auto* const tree = window.findChild<FolderTreeView*>(u"LTreeview"_s);
        auto* const field = window.findChild<QLineEdit*>(u"pathField"_s);
        ASSERT_NE(field, nullptr);
        const auto type = [&](const QString& text) {
            field->setFocus();
            field->selectAll();
            QTest::keyClicks(field, text);
            QTest::keyClick(field, Qt::Key_Return);
        };
        root().filesCopy->LTreeview.SelectedFolder = folder.path();
        type(folder.path() + u"/gibt es nicht"_s);
        EXPECT_EQ(folder.path().toStdString(), field->text().toStdString());
        EXPECT_EQ(folder.path(), root().filesCopy->LTreeview.SelectedFolder.value());
        type(u"tmp"_s); // of the folder that the program was started in
        EXPECT_EQ(folder.path().toStdString(), field->text().toStdString());
        type(folder.path() + u"/Musik/../Musik/."_s);
        EXPECT_EQ((folder.path() + u"/Musik"_s).toStdString(), field->text().toStdString());
        EXPECT_EQ("Musik", tree->currentItem()->text(0).toStdString());
        QTest::keyClick(field, Qt::Key_Return);
    });
    EXPECT_EQ((folder.path() + u"/Musik"_s).toStdString(), root().tBrowseFolder.Text.value().toStdString());
}

TEST_F(FolderFormsOnScreen, TheyStandInTheMiddleOfTheMainWindow)
{
    QWidget window;
    window.setGeometry(60, 40, 700, 520);
    window.show();
    forms.setMainWindow(&root(), &window);
    for (FolderDialog* dialog : std::initializer_list<FolderDialog*>{root().filesCopy.get(), root().ordner.get()})
        show(*dialog, [&](FormWindow& shown) {
            EXPECT_LE((shown.frameGeometry().center() - window.frameGeometry().center()).manhattanLength(), 2);
            dialog->bAbbrechen.Click();
        });
    forms.setMainWindow(nullptr, nullptr);
}

TEST_F(FolderFormsOnScreen, TheRootOfTheTreeCannotBeTaken)
{
    show(*root().ordner, [&](FormWindow& window) {
        auto* const tree = window.findChild<FolderTreeView*>(u"LTreeview"_s);
        auto* const ready = window.findChild<QPushButton*>(u"BReady"_s);
        tree->setCurrentItem(tree->topLevelItem(0)->child(0));
        EXPECT_TRUE(ready->isEnabled());
        tree->setCurrentItem(tree->topLevelItem(0));
        EXPECT_FALSE(ready->isEnabled());
        QTest::keyClick(tree, Qt::Key_Escape);
    });
    EXPECT_EQ("0", root().tBrowseFolder.Tag.toStdString());
}

TEST_F(FolderFormsOnScreen, TheCloseButtonIsCancel)
{
    root().tBrowseFolder.Tag = u"1"_s;
    show(*root().filesCopy, [&](FormWindow& window) { window.close(); });
    EXPECT_EQ("0", root().tBrowseFolder.Tag.toStdString());
    EXPECT_EQ("", option(u"CopyStick"_s));
}

TEST_F(FolderFormsOnScreen, TheListOfAllPlaylistsIsReachedByKeysAndMouse)
{
    for (const QString& name : {u"Eins"_s, u"Zwei"_s, u"Drei"_s}) {
        put(u"/l/"_s + name, "/m/a.mp3\r\n/m/b.mp3\r\n\r\n");
        ListItem row;
        row.SubItems = {{.Text = name}, {.Text = u"/l/"_s + name}, {.Text = u"2"_s}};
        catalogue().append(std::move(row));
    }
    setting(u"Error"_s, fake::dwordSetting(0));
    root().mnuErrorDisplay.Checked = false;
    catalogue().select(1);
    catalogue().Click();
    Trackcopy& form = *root().trackcopy;
    form.tTrackname.Caption = u"b"_s;
    tracks().select(2);
    show(form, [&](FormWindow& window) {
        auto* const lists = window.findChild<QListWidget*>(u"LListen"_s);
        ASSERT_NE(lists, nullptr);
        EXPECT_EQ(lists, window.focusWidget());
        EXPECT_EQ("Wiedergabelisten", lists->accessibleName().toStdString());
        EXPECT_EQ("b", window.findChild<QLabel*>(u"tTrackname"_s)->text().toStdString());
        EXPECT_EQ(0, lists->currentRow());
        QTest::keyClick(lists, Qt::Key_Down);
        EXPECT_EQ(1, form.LListen.ListIndex.value());
        QTest::mouseClick(lists->viewport(), Qt::LeftButton, {}, lists->visualItemRect(lists->item(2)).center());
        EXPECT_EQ(2, form.LListen.ListIndex.value());
        QTest::keyClick(lists, Qt::Key_Return);
    });
    EXPECT_EQ(3, catalogue().selectedRow());
    EXPECT_EQ(3, tracks().count());
    EXPECT_EQ("/m/b.mp3", tracks().subItem(3, 3).toStdString());
}

} // namespace

} // namespace orvantine
