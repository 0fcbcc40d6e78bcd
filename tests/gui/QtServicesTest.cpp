#include "desktop/posix/PosixFiles.h"
#include "desktop/qt/services/FolderPlaces.h"
#include "desktop/qt/services/QtChoosers.h"
#include "desktop/qt/services/QtDesktop.h"
#include "desktop/qt/services/QtLauncher.h"
#include "desktop/qt/services/QtMessages.h"
#include "desktop/qt/services/QtTray.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString captions(const QMessageBox& box)
{
    QStringList texts;
    const QList<QAbstractButton*> buttons = box.buttons();
    for (const QAbstractButton* button : buttons)
        texts.append(button->text());
    texts.sort();
    return texts.join(u' ');
}

struct BoxCase
{
    MessageButtons buttons;
    QString captions;
    /// What Escape, and so closing the box, means.
    Answer closed;
    /// What Enter means.
    Answer first;
};

TEST(Beep, OpensNothing)
{
    QtMessages().beep();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

class Boxes : public testing::TestWithParam<BoxCase>
{
protected:
    template <class F>
    static Answer show(MessageButtons buttons, F act)
    {
        QTimer::singleShot(0, [&act] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            act(*box);
        });
        return QtMessages().show(u"<b>Text</b>   \nzweite Zeile"_s, u" Titel"_s, MessageIcon::Exclamation, buttons);
    }
};

TEST_P(Boxes, SpeakGerman)
{
    const BoxCase& told = GetParam();
    show(told.buttons, [&](QMessageBox& box) {
        EXPECT_EQ(captions(box).toStdString(), told.captions.toStdString());
        EXPECT_EQ(box.windowTitle(), u" Titel"_s);
        EXPECT_EQ(box.text(), u"<b>Text</b>   \nzweite Zeile"_s);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        box.reject();
    });
}

TEST_P(Boxes, ClosingRefuses)
{
    const BoxCase& told = GetParam();
    EXPECT_EQ(show(told.buttons, [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Escape); }), told.closed);
    EXPECT_EQ(show(told.buttons, [](QMessageBox& box) { box.close(); }), told.closed);
}

TEST_P(Boxes, EnterTakesTheFirstButton)
{
    const BoxCase& told = GetParam();
    EXPECT_EQ(show(told.buttons, [](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); }), told.first);
}

INSTANTIATE_TEST_SUITE_P(
    All, Boxes,
    testing::Values(BoxCase{MessageButtons::Ok, u"OK"_s, Answer::Ok, Answer::Ok},
                    BoxCase{MessageButtons::OkCancel, u"Abbrechen OK"_s, Answer::Cancel, Answer::Ok},
                    BoxCase{MessageButtons::AbortRetryIgnore, u"&Abbrechen &Ignorieren &Wiederholen"_s, Answer::Abort,
                            Answer::Retry},
                    BoxCase{MessageButtons::YesNoCancel, u"&Ja &Nein Abbrechen"_s, Answer::Cancel, Answer::Yes},
                    BoxCase{MessageButtons::YesNo, u"&Ja &Nein"_s, Answer::No, Answer::Yes},
                    BoxCase{MessageButtons::RetryCancel, u"&Wiederholen Abbrechen"_s, Answer::Cancel, Answer::Retry}));

TEST(BoxIcons, ABoxShowsTheIconThatIsToldAndNoneWhereNoneIsTold)
{
    const std::pair<MessageIcon, QMessageBox::Icon> cases[] = {{MessageIcon::None, QMessageBox::NoIcon},
                                                               {MessageIcon::Critical, QMessageBox::Critical},
                                                               {MessageIcon::Question, QMessageBox::Question},
                                                               {MessageIcon::Exclamation, QMessageBox::Warning},
                                                               {MessageIcon::Information, QMessageBox::Information}};
    for (const auto& [told, shown] : cases) {
        std::optional<QMessageBox::Icon> seen;
        QTimer::singleShot(0, [&seen] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            seen = box->icon();
            box->reject();
        });
        QtMessages().show(u"Text"_s, u" Titel"_s, told, MessageButtons::Ok);
        EXPECT_EQ(shown, seen);
    }
}

TEST(TrayClicks, TheLeftAndTheRightButtonCallBackAndTheMiddleOneDoesNot)
{
    EXPECT_EQ(7695, trayCode(QSystemTrayIcon::Trigger));
    EXPECT_EQ(7740, trayCode(QSystemTrayIcon::Context));
    for (const auto reason : {QSystemTrayIcon::MiddleClick, QSystemTrayIcon::DoubleClick, QSystemTrayIcon::Unknown})
        EXPECT_FALSE(trayCode(reason).has_value());
}

TEST(InputBox, GivesTheTextOrNothing)
{
    const auto ask = [](bool accept) {
        QTimer::singleShot(0, [accept] {
            auto* const box = qobject_cast<QInputDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->textValue(), u"Vorschlag"_s);
            box->setTextValue(u"Regen"_s);
            accept ? box->accept() : box->reject();
        });
        return QtMessages().input(u"Name:"_s, u" Umbenennen"_s, u"Vorschlag"_s);
    };
    EXPECT_EQ(ask(true), u"Regen"_s);
    EXPECT_EQ(ask(false), QString());
}

TEST(NameFilters, TakePairsOfNameAndPatterns)
{
    EXPECT_EQ(nameFilters(u"Sounddateien|*.mp3; *.wma|Alle Dateitypen|*.*"_s).join(u" / "_s).toStdString(),
              "Sounddateien (*.mp3 *.wma) / Alle Dateitypen (*)");
    EXPECT_TRUE(nameFilters(QString()).isEmpty());
    EXPECT_TRUE(nameFilters(u"ohne Muster"_s).isEmpty());
}

TEST(FolderPlaces, TheComputerBeginsAtItsTopWithHomeAndMediaBeside)
{
    const FolderPlaces places = folderPlaces(FolderRoot::Computer, "/dev/sda1 / ext4 rw 0 0\n"
                                                                   "/dev/sdb1 /media/anna/Mein\\040Stick vfat rw 0 0\n"
                                                                   "/dev/sdc1 /run/media/anna/CD iso9660 ro 0 0\n"
                                                                   "/dev/sdd1 /mnt/platte ext4 rw 0 0\n"
                                                                   "server:/lieder /mnt/server nfs4 rw 0 0\n"
                                                                   "tmpfs /run tmpfs rw 0 0\n"
                                                                   "\n");
    EXPECT_EQ(places.start, u"/"_s);
    EXPECT_EQ(places.beside.join(u'|').toStdString(),
              u"/|%1|/media/anna/Mein Stick|/run/media/anna/CD|/mnt/platte"_s.arg(QDir::homePath()).toStdString());
}

/// A session with a folder of network places.
class Network : public testing::Test
{
protected:
    Network() { qputenv("XDG_RUNTIME_DIR", QFile::encodeName(session.path())); }
    ~Network() override { present.isNull() ? qunsetenv("XDG_RUNTIME_DIR") : qputenv("XDG_RUNTIME_DIR", present); }

    [[nodiscard]] QString connections() const { return session.filePath(u"gvfs"_s); }

    QByteArray present = qgetenv("XDG_RUNTIME_DIR");
    QTemporaryDir session;
};

TEST_F(Network, BeginsAtTheConnectionsOfTheSessionWithTheMountedDrivesBeside)
{
    ASSERT_TRUE(QDir().mkpath(connections() + u"/smb-share:server=nas,share=musik"_s));
    const FolderPlaces places = folderPlaces(FolderRoot::Network, "/dev/sdb1 /media/anna/Stick vfat rw 0 0\n"
                                                                  "//nas/musik /srv/musik cifs rw 0 0\n");
    EXPECT_EQ(places.start, connections());
    EXPECT_EQ(places.beside.value(0), connections());
    EXPECT_TRUE(places.beside.contains(u"/srv/musik"_s));
    EXPECT_FALSE(places.beside.contains(u"/media/anna/Stick"_s));
    EXPECT_FALSE(places.beside.contains(QDir::homePath()));
}

TEST_F(Network, WithoutConnectionsBeginsAtAFolderThatExists)
{
    const FolderPlaces places = folderPlaces(FolderRoot::Network, {});
    EXPECT_FALSE(places.beside.contains(connections()));
    EXPECT_TRUE(QDir(places.start).exists());
}

TEST_F(Network, TheChooserShowsTheTwoRootsApart)
{
    ASSERT_TRUE(QDir().mkpath(connections() + u"/nas"_s));
    const PosixFiles files;
    QtChoosers choosers(files);
    const auto look = [&](FolderRoot root, const QString& folder) {
        QString told;
        QTimer::singleShot(0, [&told] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            told = dialog->windowTitle() + u'|' + dialog->directory().absolutePath() + u'|' +
                   dialog->sidebarUrls().value(0).toLocalFile();
            dialog->reject();
        });
        EXPECT_EQ(choosers.folder({.prompt = u"Ordner ..."_s, .root = root, .folder = folder}), QString());
        return told.toStdString();
    };
    const QList<QUrl> before = QFileDialog().sidebarUrls();
    EXPECT_EQ(look(FolderRoot::Computer, {}), "Ordner ...|/|/");
    EXPECT_EQ(look(FolderRoot::Network, {}), u"Ordner ...|%1|%1"_s.arg(connections()).toStdString());
    EXPECT_EQ(look(FolderRoot::Network, session.path()),
              u"Ordner ...|%1|%2"_s.arg(session.path(), connections()).toStdString());
    EXPECT_EQ(QFileDialog().sidebarUrls(), before) << "the next dialog has the side bar of the user";
}

TEST(Chooser, OpensAtItsDefaultWhereAMarkStandsInThePlaceOfAFolder)
{
    const QTemporaryDir place;
    ASSERT_TRUE(QDir(place.path()).mkdir(u"1"_s));
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(place.path()));
    const PosixFiles files;
    QtChoosers choosers(files);
    QString told;
    QTimer::singleShot(0, [&told] {
        auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        told = dialog->directory().absolutePath();
        dialog->reject();
    });
    EXPECT_EQ(choosers.folder({.prompt = u"Ordner ..."_s, .root = FolderRoot::Computer, .folder = u"1"_s}), QString());
    EXPECT_EQ(told.toStdString(), "/");
    QDir::setCurrent(before);
}

TEST(Chooser, TheDesktopsOwnFileDialogsAreUsedWhereThereAreAny)
{
    const PosixFiles files;
    QtChoosers choosers(files);
    const auto own = [](const std::function<void()>& open) {
        std::optional<bool> native;
        QTimer::singleShot(0, [&native] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            native = !dialog->testOption(QFileDialog::DontUseNativeDialog);
            dialog->reject();
        });
        open();
        return native;
    };
    EXPECT_FALSE(QCoreApplication::testAttribute(Qt::AA_DontUseNativeDialogs));
    EXPECT_EQ(own([&] { EXPECT_FALSE(choosers.openFile({})); }), true);
    EXPECT_EQ(own([&] { EXPECT_FALSE(choosers.saveFile({})); }), true);
    EXPECT_EQ(own([&] { EXPECT_EQ(choosers.folder({}), QString()); }), true);
}

class Programs : public testing::Test
{
protected:
    QByteArray make(const QString& name, mode_t mode, const QByteArray& script = "#!/bin/true\n") const
    {
        const QByteArray path = QFile::encodeName(folder.filePath(name));
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(script);
        file.close();
        EXPECT_EQ(::chmod(path.constData(), mode), 0);
        return path;
    }

    QTemporaryDir folder;
};

TEST_F(Programs, OnlyARegularFileThatNobodyElseWritesIsTrusted)
{
    EXPECT_TRUE(isTrustedProgram(make(u"gut"_s, 0755)));
    EXPECT_TRUE(isTrustedProgram(make(u"eigen"_s, 0700)));
    EXPECT_FALSE(isTrustedProgram(make(u"gruppe"_s, 0775)));
    EXPECT_FALSE(isTrustedProgram(make(u"alle"_s, 0757)));
    EXPECT_FALSE(isTrustedProgram(make(u"daten"_s, 0644)));
    EXPECT_FALSE(isTrustedProgram(QFile::encodeName(folder.path())));
    EXPECT_FALSE(isTrustedProgram(QFile::encodeName(folder.filePath(u"fehlt"_s))));
}

TEST_F(Programs, AreStartedByPathAndEveryRequestIsKept)
{
    make(u"gut"_s, 0755);
    make(u"daten"_s, 0644);
    const PosixFiles files;
    QtLauncher launcher(files);
    const auto start = [&](const QString& name) {
        const QString path = folder.filePath(name);
        return launcher.start({.kind = LaunchKind::Program, .command = path, .target = path, .arguments = {}});
    };
    EXPECT_TRUE(start(u"gut"_s));
    EXPECT_FALSE(start(u"daten"_s));
    EXPECT_FALSE(start(u"fehlt"_s));
    ASSERT_EQ(launcher.recent().size(), 3U);
    EXPECT_EQ(launcher.recent().back().target, folder.filePath(u"fehlt"_s));
}

TEST_F(Programs, OnlyThoseOfTheProgramsOwnFolderMustBeTrusted)
{
    ASSERT_TRUE(QDir(folder.path()).mkpath(u"eigen/Updates"_s) && QDir(folder.path()).mkpath(u"eigentum"_s));
    for (const QString& name : {u"eigen/V.dll"_s, u"eigen/Updates/Setup.exe"_s, u"eigentum/ripper"_s, u"ripper"_s})
        make(name, 0775);
    make(u"daten"_s, 0664);
    const PosixFiles files;
    QtLauncher launcher(files, folder.filePath(u"eigen"_s));
    const auto starts = [&](const QString& name) {
        const QString path = folder.filePath(name);
        return launcher.start({.kind = LaunchKind::Program, .command = path, .target = path, .arguments = {}});
    };
    EXPECT_FALSE(starts(u"eigen/V.dll"_s));
    EXPECT_FALSE(starts(u"eigen/Updates/Setup.exe"_s));
    EXPECT_FALSE(starts(u"eigentum/../eigen/V.dll"_s));
    EXPECT_TRUE(starts(u"eigentum/ripper"_s));
    EXPECT_TRUE(starts(u"ripper"_s));
    // What is no program at all is started nowhere.
    EXPECT_FALSE(starts(u"daten"_s));
    EXPECT_FALSE(starts(u"eigentum"_s));
    EXPECT_FALSE(starts(u"fehlt"_s));
}

TEST_F(Programs, OneThatIsWatchedRunsUntilItEndsAndTellsItsCode)
{
    make(u"wartet"_s, 0755, "#!/bin/sh\nread line < \"$1\"\nexit 7\n");
    make(u"stirbt"_s, 0755, "#!/bin/sh\nkill -KILL $$\n");
    make(u"alle"_s, 0757);
    const QString pipe = folder.filePath(u"rohr"_s);
    ASSERT_EQ(0, ::mkfifo(QFile::encodeName(pipe).constData(), 0600));
    const PosixFiles files;
    QtLauncher launcher(files);
    const auto run = [&](const QString& name) {
        const QString path = folder.filePath(name);
        return launcher.run({.kind = LaunchKind::Program, .command = path, .target = path, .arguments = {pipe}});
    };
    const std::unique_ptr<RunningProgram> waiting = run(u"wartet"_s);
    ASSERT_TRUE(waiting);
    EXPECT_EQ(std::nullopt, waiting->exitCode());
    QFile line(pipe);
    ASSERT_TRUE(line.open(QIODevice::WriteOnly));
    line.write("weiter\n");
    line.close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return waiting->exitCode().has_value(); }));
    EXPECT_EQ(7, waiting->exitCode());
    const std::unique_ptr<RunningProgram> dying = run(u"stirbt"_s);
    ASSERT_TRUE(dying);
    EXPECT_TRUE(QTest::qWaitFor([&] { return dying->exitCode().has_value(); }));
    EXPECT_EQ(-1, dying->exitCode());
    EXPECT_FALSE(run(u"alle"_s));
    EXPECT_FALSE(run(u"fehlt"_s));
}

TEST_F(Programs, HelpWithoutItsFileShowsNothing)
{
    const PosixFiles files;
    QtLauncher launcher(files);
    EXPECT_FALSE(launcher.start({.kind = LaunchKind::Help,
                                 .command = {},
                                 .target = folder.filePath(u"Orvantine.chm"_s),
                                 .arguments = {u"/1.0 Erste Schritte.htm"_s}}));
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (const QWidget* window : windows)
        EXPECT_FALSE(window->objectName() == u"HelpWindow"_s && window->isVisible());
}

TEST(Desktop, TellsTheScreenInTwips)
{
    const std::vector<DesktopScreen> screens = QtScreen().screens();
    ASSERT_FALSE(screens.empty());
    const DesktopScreen& primary = screens.front();
    EXPECT_GT(primary.geometry.width, 0);
    EXPECT_EQ(primary.geometry.width % TwipsPerPixel, 0);
    EXPECT_GT(primary.available.height, 0);
    EXPECT_TRUE(QtScreen().holds(primary.geometry.left, primary.geometry.top));
}

TEST(Desktop, KnowsTheFontsOfTheHost)
{
    EXPECT_FALSE(QtFonts().known(u"Diese Schrift gibt es nicht"_s));
    EXPECT_FALSE(QtFonts().registerFont(u"/gibt/es/nicht.ttf"_s));
    EXPECT_FALSE(QtFonts().provide(u"Diese Schrift gibt es nicht"_s, u"/gibt/es/nicht.ttf"_s));
}

TEST(Desktop, TheClipboardHoldsText)
{
    QtClipboard clipboard;
    clipboard.setText(u"Über alles"_s);
    EXPECT_EQ(clipboard.text(), u"Über alles"_s);
}

} // namespace

} // namespace orvantine
