#include "BenchDesktop.h"

#include "desktop/tags/TagLibTags.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <algorithm>
#include <memory>

namespace orvantine::bench {

using namespace Qt::StringLiterals;

BenchDesktop::BenchDesktop()
    : DiskDesktop(temporary.path(), [](Files& disk) { return std::make_unique<TagLibTags>(disk); })
{
    for (const QString& name : {u"program"_s, u"data"_s, u"data/Playlisten"_s, u"data/Resource"_s})
        QDir(folder).mkpath(name);
    services.folders.applicationData = path(u"data"_s);
    layOut(path(u"program/Orvantine.dll"_s), "marker");
}

QString BenchDesktop::database() const
{
    return path(u"data/Orvantine.dat"_s);
}

QStringList makeTracks(const QString& folder, int tracks)
{
    constexpr int Folders = 300;
    QStringList paths;
    paths.reserve(tracks);
    for (int track = 0; track < tracks; ++track) {
        const QString album = u"%1/Album %2"_s.arg(folder).arg(track % Folders);
        if (track < Folders)
            QDir().mkpath(album);
        paths.append(u"%1/%2 - Ein Lied mit Namen.mp3"_s.arg(album).arg(track, 5, 10, QLatin1Char('0')));
        layOut(paths.back(), {});
    }
    return paths;
}

QByteArray tagInfoSection(int keys, const QStringList& tracks)
{
    QByteArray text = "[TagInfo]\r\n";
    for (int key = 0; key < keys; ++key) {
        const QString path = key < tracks.size() ? tracks[key] : u"/musik/archiv/Album/Lied %1.mp3"_s.arg(key);
        text += path.toUtf8() + "=Eine Band - Lied Nummer " + QByteArray::number(key) + "\r\n";
    }
    return text;
}

Row longestWait(fake::VirtualEvents& events, const std::function<void()>& work)
{
    constexpr int MostYields = 200'000;
    struct Beats
    {
        void note()
        {
            longest = std::max(longest, static_cast<double>(clock.nsecsElapsed()) / 1e6);
            clock.start();
        }
        QElapsedTimer clock;
        double longest = 0;
    };
    const auto beats = std::make_shared<Beats>();
    for (int yield = 1; yield <= MostYields; ++yield)
        events.atYield(yield, [beats] { beats->note(); });
    beats->clock.start();
    work();
    beats->note();
    return {u"longest wait of the window in it"_s, u"ms"_s, beats->longest, {}, 100, false};
}

void layOut(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

} // namespace orvantine::bench
