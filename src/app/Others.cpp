#include "app/Others.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/FreeSpace.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

bool Dateiexistenz::FileExists(const Root& root, const QString& path)
{
    return root.files.exists(path);
}

bool Dateiexistenz::FolderExists(const Root& root, const QString& path)
{
    return root.files.folderExists(path);
}

QString FreeSpace::VolumeType(const Root& root, const QString& volume)
{
    return root.services.volumes.fileSystem(volume).toUpper();
}

QString FreeSpace::FreeBytes(const Root& root, const QString& volume)
{
    // Required: nothing on the stick's file system; the callers have values of their own for that.
    if (VolumeType(root, volume) == u"FAT32"_s)
        return {};
    const std::optional<quint64> bytes = root.services.volumes.freeBytes(volume);
    return bytes ? QString::number(*bytes) : QString();
}

QString FreeSpace::TotalBytes(const Root& root, const QString& volume)
{
    const std::optional<quint64> bytes = root.services.volumes.totalBytes(volume);
    return bytes ? QString::number(*bytes) : QString();
}

void Pause(Root& root, double seconds)
{
    constexpr double SecondsOfDay = 86400;
    constexpr std::chrono::milliseconds Longest{20};

    Events& events = root.services.events;
    double start = events.secondsOfDay();
    for (;;) {
        const double now = events.secondsOfDay();
        if (now < start)
            start -= SecondsOfDay;
        const double left = seconds - (now - start);
        if (left <= 0 || events.ended())
            return;
        const std::chrono::milliseconds rest{static_cast<int>(left * 1000) + 1};
        events.yield(std::min(rest, Longest));
    }
}

QString WindowsFolder(const Root& root)
{
    return root.services.folders.windows;
}

QString TempFolder(const Root& root)
{
    return root.services.folders.temp;
}

QString TempFileName(Root& root)
{
    for (int number = 1; number <= 0xFFFF; ++number) {
        const QString name = FileDirPath::join(TempFolder(root), u"ORV%1.tmp"_s.arg(number, 4, 16, QLatin1Char('0')));
        if (!root.files.exists(name))
            return root.files.writeBytes(name, {}) ? name : QString();
    }
    return {};
}

QString SpecialFolder(const Root& root, int csidl)
{
    constexpr int Documents = 5;
    constexpr int ApplicationData = 26;
    switch (csidl) {
    case Documents:
        return root.services.folders.documents;
    case ApplicationData:
        return root.services.folders.applicationData;
    default:
        return {};
    }
}

QString WinVersionen(const SystemVersion& version)
{
    if (version.platform == 0)
        return u"Windows 16bit mit 32bit-Erweiterung"_s;
    if (version.platform == 1) {
        switch (version.minor) {
        case 0:
            return u"95"_s;
        case 10:
            return u"98"_s;
        case 90:
            return u"Me"_s;
        default:
            return u"Unknown"_s;
        }
    }
    if (version.platform == 2 && version.major > 4)
        return u"XP"_s;
    return u"Unknown"_s;
}

void FontWinRegister(Root& root, const QString& path)
{
    root.services.fonts.registerFont(path);
}

void ensureDataFolder(Root& root, const QString& name)
{
    const QString folder = root.tDatenbank.Text.value() + name;
    if (!Dateiexistenz::FolderExists(root, folder))
        root.files.makeFolder(folder);
}

} // namespace orvantine
