#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>

#include <functional>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The folders of the logic from the ground up.
const QStringList Floors{u"app"_s,        u"metadata"_s, u"catalogue"_s, u"playlists"_s, u"playback"_s,
                         u"operations"_s, u"search"_s,   u"transfer"_s,  u"shell"_s};

/// A header and the source of its name are one room: "playlists/TrackList". The rooms of the logic that each includes.
using Graph = QMap<QString, QSet<QString>>;

Graph includeGraph()
{
    Graph graph;
    const QDir sources(QStringLiteral(ORVANTINE_SOURCES));
    static const QRegularExpression include(u"#include \"([^\"]+)\\.h\""_s);
    for (const QString& floor : Floors) {
        QDirIterator walk(sources.filePath(floor), {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString path = walk.next();
            QFile file(path);
            EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
            const QString room = sources.relativeFilePath(path).section(u'.', 0, 0);
            QSet<QString>& arrows = graph[room];
            auto found = include.globalMatch(QString::fromUtf8(file.readAll()));
            while (found.hasNext()) {
                const QString other = found.next().captured(1);
                if (other != room && Floors.contains(other.section(u'/', 0, 0)))
                    arrows.insert(other);
            }
        }
    }
    return graph;
}

/// The rooms of a way that leads back to `room`; empty where there is none.
QStringList circleThrough(const Graph& graph, const QString& room)
{
    QSet<QString> seen;
    QStringList way;
    const std::function<bool(const QString&)> leadsBack = [&](const QString& at) {
        for (const QString& next : graph.value(at)) {
            if (next == room)
                return true;
            if (seen.contains(next))
                continue;
            seen.insert(next);
            way.append(next);
            if (leadsBack(next))
                return true;
            way.removeLast();
        }
        return false;
    };
    way.append(room);
    return leadsBack(room) ? way : QStringList();
}

} // namespace

TEST(IncludeGraph, TheLogicHasNoCircle)
{
    const Graph graph = includeGraph();
    ASSERT_GT(graph.size(), 80);
    for (const QString& room : graph.keys())
        EXPECT_EQ("", circleThrough(graph, room).join(u" -> "_s).toStdString());
}

TEST(IncludeGraph, AnArrowUpHasItsReason)
{
    const QStringList known{
        // Root holds the state of these three, and nothing of what is done with it.
        u"app/Root -> metadata/WideMp3Record"_s,
        u"app/Root -> playback/Sequence"_s,
        u"app/Root -> playlists/TrackList"_s,
        // A command on the catalogue ends with a playlist that is opened and its cover that is shown.
        u"catalogue/GetPlayListe -> playlists/GetPlayEntrys"_s,
        u"catalogue/GetPlayListe -> playlists/GetPlayCounts"_s,
        u"catalogue/mnuDurchsuchen -> playback/CoverPane"_s,
        u"catalogue/mnuDurchsuchen -> playlists/GetPlayEntrys"_s,
        u"catalogue/mnuL_schen -> playback/CoverPane"_s,
        u"catalogue/mnuL_schen -> playlists/GetPlayEntrys"_s,
        u"catalogue/mnuLaden -> playlists/GetPlayEntrys"_s,
        u"catalogue/mnuUmbenennen -> playback/CoverPane"_s,
        u"playlists/GetPlayEntrys -> playback/CoverPane"_s,
        // Forms are opened, or asked whether they are seen, where a command needs them.
        u"catalogue/mnuAddFolder -> search/FindAudio"_s,
        u"catalogue/mnuAddFolder -> search/IndexFiles"_s,
        u"metadata/ShowTrackInfo -> search/Suchen"_s,
        u"operations/DropOnCatalogue -> search/Dialogsuche"_s,
        u"operations/RepairSource -> transfer/BrowseFolders2k"_s,
        u"playlists/mnuAddSounds -> transfer/FolderDialogs"_s,
        u"search/FolderCheck -> transfer/BrowseFolders2k"_s,
        u"search/FindAudio -> transfer/BrowseFolders2k"_s,
        u"search/IndexFiles -> transfer/Kopieren"_s,
    };
    const auto floorOf = [](const QString& room) { return Floors.indexOf(room.section(u'/', 0, 0)); };
    QStringList found;
    const Graph graph = includeGraph();
    for (auto room = graph.cbegin(); room != graph.cend(); ++room)
        for (const QString& other : room.value())
            if (floorOf(other) > floorOf(room.key()))
                found.append(room.key() + u" -> "_s + other);
    for (const QString& arrow : found)
        EXPECT_TRUE(known.contains(arrow)) << arrow.toStdString();
    for (const QString& arrow : known)
        EXPECT_TRUE(found.contains(arrow)) << "is gone: " << arrow.toStdString();
}

TEST(IncludeGraph, NoFileIsLongerThan600Lines)
{
    constexpr qsizetype Longest = 600;
    const QDir project(QStringLiteral(ORVANTINE_SOURCES "/.."));
    int looked = 0;
    for (const QString& folder : {u"src"_s, u"tests"_s, u"benchmarks"_s, u"fuzz"_s}) {
        QDirIterator walk(project.filePath(folder), {u"*.cpp"_s, u"*.h"_s, u"*.scenario"_s}, QDir::Files,
                          QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString path = walk.next();
            QFile file(path);
            ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
            EXPECT_LE(file.readAll().count('\n'), Longest) << project.relativeFilePath(path).toStdString();
            ++looked;
        }
    }
    EXPECT_GT(looked, 300);
}

} // namespace orvantine
