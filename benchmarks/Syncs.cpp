#include "Syncs.h"

#include "Measure.h"

#include <QFile>

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

int made = 0;

} // namespace

// In the place of the library's: what is linked into this program comes through here.
extern "C" int fsync(int file)
{
    ++made;
    return static_cast<int>(::syscall(SYS_fsync, file));
}

extern "C" int fdatasync(int file)
{
    ++made;
    return static_cast<int>(::syscall(SYS_fdatasync, file));
}

namespace orvantine::bench {

using namespace Qt::StringLiterals;

int syncsOf(const std::function<void()>& work)
{
    const int before = made;
    work();
    return made - before;
}

void syncLine(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::Append | QIODevice::Unbuffered) || file.write("160c=/daten/Liste 160.m3u\r\n") < 0 ||
        ::fdatasync(file.handle()) != 0)
        qFatal("the file cannot be written");
}

double savingFloor(const QString& file, int syncs)
{
    const QString copy = file + u".kopie"_s;
    const QString lines = file + u".zeilen"_s;
    return medianMilliseconds(9, [&] {
        QFile::remove(copy);
        QFile::copy(file, copy);
        QFile written(copy);
        if (!written.open(QIODevice::ReadWrite) || ::fsync(written.handle()) != 0)
            qFatal("the file cannot be copied");
        for (int sync = 1; sync < syncs; ++sync)
            syncLine(lines);
    });
}

QString told(int syncs)
{
    return u", %1 syncs"_s.arg(syncs);
}

} // namespace orvantine::bench
