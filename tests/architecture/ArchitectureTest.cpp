#include <gtest/gtest.h>

#include <QDirIterator>
#include <QFile>
#include <QRegularExpression>
#include <QStringList>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QStringList LogicFolders{u"app"_s,        u"catalogue"_s, u"playlists"_s, u"metadata"_s, u"playback"_s,
                               u"operations"_s, u"search"_s,    u"transfer"_s,  u"shell"_s};

/// Source files of a folder of src/, those below it included.
QStringList sourcesOf(const QString& folder)
{
    QStringList files;
    QDirIterator walk(QStringLiteral(ORVANTINE_SOURCES "/") + folder, {u"*.cpp"_s, u"*.h"_s}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (walk.hasNext())
        files.append(walk.next());
    EXPECT_FALSE(files.isEmpty()) << folder.toStdString();
    return files;
}

/// Lines of the files that match, as "file:line: text".
std::string matches(const QStringList& files, const QString& pattern)
{
    const QRegularExpression expression(pattern);
    QStringList found;
    for (const QString& name : files) {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n');
        for (qsizetype line = 0; line < lines.size(); ++line)
            if (expression.match(lines[line]).hasMatch())
                found.append(u"%1:%2: %3"_s.arg(name).arg(line + 1).arg(lines[line]));
    }
    return found.join(u'\n').toStdString();
}

/// Includes in a folder of src/desktop whose paths do not begin with what it may know.
std::string foreignIncludes(const QString& folder, const QString& known)
{
    return matches(sourcesOf(u"desktop/"_s + folder), u"#include \"(?!%1)"_s.arg(known));
}

QStringList logicSources()
{
    QStringList files;
    for (const QString& folder : LogicFolders)
        files += sourcesOf(folder);
    return files;
}

} // namespace

TEST(Architecture, TheLogicIsThere)
{
    EXPECT_GT(logicSources().size(), 50);
}

TEST(Architecture, TheLogicKnowsNoDesktop)
{
    EXPECT_EQ("", matches(logicSources(), u"#include <(QtWidgets|QtGui|QtDBus|QtNetwork|QtSvg|QWidget|QDialog|"
                                          u"QMessageBox|QApplication|QGuiApplication|QIcon|QPixmap|QImage|QColor|QFont|"
                                          u"QPainter|QScreen|QClipboard|QSystemTrayIcon|QDBus|mpv/|pulse/|taglib/|"
                                          u"tag\\.h|zip\\.h|unistd|fcntl|sys/)"_s));
}

TEST(Architecture, TheLogicIncludesNothingOfTheDesktop)
{
    EXPECT_EQ("", matches(logicSources(), u"#include \"desktop/"_s));
}

TEST(Architecture, ThePlatformIncludesNothingButItself)
{
    EXPECT_EQ("", matches(sourcesOf(u"platform"_s), u"#include \"(?!platform/)"_s));
}

TEST(Architecture, AServiceOfTheHostKnowsThePlatformAndItself)
{
    EXPECT_EQ("", foreignIncludes(u"posix"_s, u"platform/|desktop/posix/"_s));
    EXPECT_EQ("", foreignIncludes(u"archive"_s, u"platform/|desktop/archive/|desktop/posix/(Descriptor|HostFile|"_s
                                                u"JournalNotes|NameLookup|PrivateFolder)\\.h"_s));
    EXPECT_EQ("", foreignIncludes(u"media"_s, u"platform/|desktop/media/"_s));
    EXPECT_EQ("", foreignIncludes(u"sound"_s, u"platform/|desktop/sound/"_s));
    // A track that is written anew stands on what the disk has for that.
    EXPECT_EQ("", foreignIncludes(u"tags"_s,
                                  u"platform/|desktop/tags/|desktop/posix/(AtomicReplace|Descriptor|HostFile)\\.h"_s));
}

TEST(Architecture, TheRoomsOfTheDesktopKnowOnlyThoseBelow)
{
    EXPECT_EQ("", foreignIncludes(u"qt/widgets"_s, u"platform/|desktop/qt/widgets/|desktop/posix/NameLookup\\.h"_s));
    EXPECT_EQ("", foreignIncludes(u"qt/forms"_s, u"(?!desktop/)|desktop/qt/(widgets|forms)/"_s));
    EXPECT_EQ("", foreignIncludes(u"qt/window"_s, u"(?!desktop/)|desktop/qt/(widgets|window)/"_s));
    EXPECT_EQ("", foreignIncludes(u"qt/services"_s, u"platform/|desktop/qt/(widgets|forms|services)/"_s));
    EXPECT_EQ("", foreignIncludes(u"mpris"_s, u"(?!desktop/)|desktop/mpris/"_s));
}

TEST(Architecture, UsersFilesGoThroughOneDoor)
{
    const QString doors = u"\\b(QSaveFile|QTemporaryFile|std::ofstream|std::fstream|std::rename|std::remove)\\b|"
                          u"\\bfopen\\(|QFile::(copy|remove|rename)|\\bQFile\\b.*WriteOnly|std::system|\\bpopen\\("_s;
    EXPECT_EQ("", matches(logicSources() + sourcesOf(u"desktop/qt"_s) + sourcesOf(u"desktop/media"_s), doors));
}

TEST(Architecture, NobodyWaitsOrReadsAClockButTheEvents)
{
    EXPECT_EQ("", matches(logicSources(), u"\\b(QThread|msleep|usleep|sleep_for|QElapsedTimer|currentDateTime|"
                                          u"currentDate\\b|currentTime\\b|steady_clock|system_clock)\\b"_s));
}

TEST(Architecture, MessagesStandInOneLiteralWhereTheyAreShown)
{
    // A box is shown through the service alone, so that a test sees each of them.
    EXPECT_EQ("", matches(logicSources(), u"QMessageBox|QInputDialog|qFatal|qWarning|std::cerr|printf"_s));
}

TEST(Architecture, EventsAreServedThroughTheDoorsOfACommandAlone)
{
    // Whoever waits is asked by the compiler what happened meanwhile, and nothing runs behind the end of the program.
    QStringList files = logicSources();
    files.removeIf([](const QString& file) { return file.contains(u"/app/Command."_s); });
    ASSERT_LT(files.size(), logicSources().size());
    QStringList others = files;
    others.removeIf([](const QString& file) { return file.contains(u"/app/Pause."_s); });
    EXPECT_EQ("", matches(others, u"\\bevents\\.yield\\(|\\bPause\\(|"_s
                                  u"\\bmessages\\.(show|input)\\(|\\bchoosers\\b|\\bforms\\.showModal\\("_s));
}

TEST(Architecture, TheRowsOfTheTrackListChangeInOnePlace)
{
    QStringList files = logicSources();
    files.removeIf([](const QString& file) { return file.endsWith(u"/playlists/TrackList.cpp"_s); });
    EXPECT_EQ("", matches(files,
                          u"\\b(LListView2|tracks|m_rows)\\.(append|insert|remove|clear|setText|setSubItem|setIcons|"_s
                          u"setColor|setTag|sortBy|setSorted)\\("_s));
}

TEST(Architecture, WhatASubItemMeansIsSaidByItsName)
{
    EXPECT_EQ("", matches(logicSources(), u"\\b(subItem|setSubItem|setColor)\\([^,]*(\\([^()]*\\))?[^,]*, [0-9]"_s));
}

} // namespace orvantine
