#include "platform/posix/PosixFiles.h"
#include "platform/qt/QtChoosers.h"
#include "platform/qt/QtDesktop.h"
#include "platform/qt/QtLauncher.h"
#include "platform/qt/QtMessages.h"

#include <QApplication>
#include <QFile>
#include <QInputDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <sys/stat.h>

using namespace orvantine;
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

class Programs : public testing::Test
{
protected:
    QByteArray make(const QString& name, mode_t mode) const
    {
        const QByteArray path = QFile::encodeName(folder.filePath(name));
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/true\n");
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
    make(u"alle"_s, 0757);
    const PosixFiles files;
    QtLauncher launcher(files);
    const auto start = [&](const QString& name) {
        const QString path = folder.filePath(name);
        return launcher.start({.kind = LaunchKind::Program, .command = path, .target = path, .arguments = {}});
    };
    EXPECT_TRUE(start(u"gut"_s));
    EXPECT_FALSE(start(u"alle"_s));
    EXPECT_FALSE(start(u"fehlt"_s));
    ASSERT_EQ(launcher.recent().size(), 3U);
    EXPECT_EQ(launcher.recent().back().target, folder.filePath(u"fehlt"_s));
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
    const ScreenSize size = QtScreen().size();
    EXPECT_GT(size.width, 0);
    EXPECT_EQ(size.width % TwipsPerPixel, 0);
}

TEST(Desktop, KnowsTheFontsOfTheHost)
{
    EXPECT_FALSE(QtFonts().known(u"Diese Schrift gibt es nicht"_s));
    EXPECT_FALSE(QtFonts().registerFont(u"/gibt/es/nicht.ttf"_s));
}

TEST(Desktop, TheClipboardHoldsText)
{
    QtClipboard clipboard;
    clipboard.setText(u"Über alles"_s);
    EXPECT_EQ(clipboard.text(), u"Über alles"_s);
}

} // namespace
