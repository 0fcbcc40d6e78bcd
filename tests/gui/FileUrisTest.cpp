#include "desktop/qt/widgets/FileUris.h"

#include "desktop/posix/PosixFiles.h"
#include "desktop/qt/services/QtDesktop.h"

#include <QClipboard>
#include <QDir>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>
#include <QSysInfo>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

std::string pathsOf(const QByteArray& list)
{
    QMimeData data;
    data.setData(u"text/uri-list"_s, list);
    return localPaths(data).join(u'|').toStdString();
}

TEST(FileUris, BlanksPercentSignsAndUmlautsAreRead)
{
    EXPECT_EQ(pathsOf("file:///m/zwei%20Worte.mp3\r\nfile:///m/100%25%20da.mp3\r\nfile:///m/%C3%BCber.mp3\r\n"),
              "/m/zwei Worte.mp3|/m/100% da.mp3|/m/über.mp3");
    EXPECT_EQ(pathsOf("file:///m/a%0Ab.mp3"), "/m/a\nb.mp3");
    EXPECT_EQ(pathsOf("file:///m/100%zz.mp3\nfile:///m/ende%"), "/m/100%zz.mp3|/m/ende%")
        << "what is no percent form is taken as it stands";
}

TEST(FileUris, NamesThatAreNotUtf8AreWindows1252EachForItself)
{
    EXPECT_EQ(pathsOf("file:///%C3%BC/%FCber.mp3"), "/ü/über.mp3");
}

TEST(FileUris, OnlyFilesOfThisMachineCount)
{
    const QByteArray here = QSysInfo::machineHostName().toUtf8();
    EXPECT_EQ(pathsOf("http://host/a.mp3\r\nsmb://host/a.mp3\r\nfile://woanders/a.mp3\r\nfile:///b.mp3\r\n"
                      "file://localhost/c.mp3\r\nFILE:/d.mp3\r\nfile://" +
                      here + "/e.mp3\r\n"),
              "/b.mp3|/c.mp3|/d.mp3|/e.mp3");
}

TEST(FileUris, CommentsEmptyLinesAndBrokenOnesAreNone)
{
    EXPECT_EQ(pathsOf("# file:///a.mp3\r\n\r\n  \r\nfile:\r\nfile://\r\nfile://x\r\nfile:relativ.mp3\r\n/a.mp3\r\n"),
              "");
    EXPECT_EQ(pathsOf("file:///a%00b.mp3"), "");
    EXPECT_EQ(pathsOf({}), "");
}

TEST(FileUris, AFolderHasNoSeparatorAtItsEnd)
{
    EXPECT_EQ(pathsOf("file:///m/Album/\r\nfile:///\r\n"), "/m/Album|/");
}

TEST(FileUris, UrlsOfQtPrograms)
{
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(u"/m/ü 100%.mp3"_s), QUrl(u"https://host/x.mp3"_s)});
    EXPECT_TRUE(mayHoldFiles(data));
    EXPECT_EQ(localPaths(data).join(u'|').toStdString(), "/m/ü 100%.mp3");
    QMimeData text;
    text.setText(u"/m/a.mp3"_s);
    EXPECT_FALSE(mayHoldFiles(text));
}

TEST(FileUris, WhatIsDrawnOutComesBack)
{
    const QByteArray list = uriList({"/m/a b%\xC3\xBC#?.mp3", "/m/\xFC.mp3"});
    EXPECT_EQ(list, "file:///m/a%20b%25%C3%BC%23%3F.mp3\r\nfile:///m/%FC.mp3\r\n");
    EXPECT_EQ(pathsOf(list), "/m/a b%ü#?.mp3|/m/ü.mp3");
}

TEST(FileUris, AFileWhoseNameIsNotUtf8IsFoundAgain)
{
    const QTemporaryDir folder;
    const QByteArray name = folder.path().toUtf8() + "/\xFC"
                                                     "ber.mp3";
    const int descriptor = ::open(name.constData(), O_CREAT | O_WRONLY, 0600);
    ASSERT_GE(descriptor, 0);
    ::close(descriptor);
    const std::string path = pathsOf(uriList({name}));
    PosixFiles files({.recoveryFolder = folder.filePath(u"recovery"_s)});
    EXPECT_EQ(files.nativePath(QString::fromStdString(path)), name);
    // The folder's own way of emptying itself does not know such names.
    ::unlink(name.constData());
}

TEST(FileUris, FiftyThousandAreRead)
{
    QByteArray list;
    for (int i = 0; i < 50'000; ++i)
        list += "file:///m/Titel%20" + QByteArray::number(i) + ".mp3\r\n";
    QMimeData data;
    data.setData(u"text/uri-list"_s, list);
    EXPECT_EQ(localPaths(data).size(), 50'000);
}

TEST(FileUris, TheClipboardGivesTheFilesOfAFileManager)
{
    auto* const data = new QMimeData;
    data->setData(u"text/uri-list"_s, "file:///m/a%20b.mp3\r\nhttp://host/c.mp3\r\n");
    QGuiApplication::clipboard()->setMimeData(data);
    QtClipboard clipboard;
    EXPECT_EQ(clipboard.files(), QStringList{u"/m/a b.mp3"_s});
    clipboard.setText(u"Text"_s);
    EXPECT_TRUE(clipboard.files().isEmpty());
    QGuiApplication::clipboard()->clear();
    EXPECT_TRUE(clipboard.files().isEmpty());
}

TEST(FileUris, TheClipboardsFormsOfFileManagersAreRead)
{
    const auto copied = [](const QString& format, const QByteArray& bytes) {
        QMimeData data;
        data.setData(format, bytes);
        return copiedPaths(data).join(u'|').toStdString();
    };
    const QByteArray files = "file:///m/a%20b.mp3\nfile:///m/%FC.mp3\nsmb://host/c.mp3";
    EXPECT_EQ(copied(u"text/uri-list"_s, files), "/m/a b.mp3|/m/ü.mp3");
    EXPECT_EQ(copied(u"x-special/gnome-copied-files"_s, "copy\n" + files), "/m/a b.mp3|/m/ü.mp3");
    EXPECT_EQ(copied(u"x-special/gnome-copied-files"_s, "cut\n" + files), "/m/a b.mp3|/m/ü.mp3");
    EXPECT_EQ(copied(u"text/plain"_s, "x-special/nautilus-clipboard\ncopy\n" + files + "\n"), "/m/a b.mp3|/m/ü.mp3");
    EXPECT_EQ(copied(u"text/plain"_s, files), "") << "a text is a text";
}

TEST(ArgumentPaths, FilesFoldersAndTheirUrisAreTakenAllElseIsPassedOver)
{
    const QTemporaryDir folder;
    const QByteArray base = folder.path().toUtf8();
    for (const QByteArray& name : {QByteArray("zwei Worte.m3u"), QByteArray("\xFC"
                                                                            "ber.mp3")}) {
        const int file = ::open((base + '/' + name).constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        ASSERT_GE(file, 0);
        ::close(file);
    }
    const QStringList found =
        argumentPaths({base + "/zwei Worte.m3u", "file://" + base + "/zwei%20Worte.m3u", base + "/\xFC" + "ber.mp3",
                       base + "//", "FILE:" + base, "unbekannt", "--wort", "", "http://host/a.mp3", base + "/fehlt.m3u",
                       "/dev/null", "file://woanders" + base});
    const QString text = folder.path();
    EXPECT_EQ(found.join(u'|').toStdString(),
              QStringList({text + u"/zwei Worte.m3u"_s, text + u"/zwei Worte.m3u"_s, text + u"/über.mp3"_s, text, text})
                  .join(u'|')
                  .toStdString());
}

TEST(ArgumentPaths, RelativeOnesLieInTheCurrentFolder)
{
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    ASSERT_TRUE(QDir(folder.path()).mkpath(u"unten/tief"_s) && QDir::setCurrent(folder.path()));
    const QStringList found = argumentPaths({"unten", "./unten/tief/../", "."});
    QDir::setCurrent(before);
    const QString real = QFileInfo(folder.path()).canonicalFilePath();
    EXPECT_EQ(found.join(u'|').toStdString(), (real + u"/unten|"_s + real + u"/unten|"_s + real).toStdString());
}

TEST(ArgumentPaths, BesideATurnOfTheStartAPathMatchesNothing)
{
    const QTemporaryDir folder;
    const QByteArray base = folder.path().toUtf8();
    EXPECT_EQ(argumentPaths({"/hide", base}), QStringList());
    EXPECT_EQ(argumentPaths({base, "/PLAY"}), QStringList());
    EXPECT_EQ(argumentPaths({base}).size(), 1);
}

} // namespace

} // namespace orvantine
