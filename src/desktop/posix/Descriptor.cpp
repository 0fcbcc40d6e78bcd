#include "desktop/posix/Descriptor.h"

#include <cerrno>
#include <cstdlib>
#include <ctime>

#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {

bool readAt(const Descriptor& file, qint64 offset, qint64 length, QByteArray& bytes)
{
    bytes.resize(length);
    qint64 done = 0;
    while (done < length) {
        const ssize_t count =
            ::pread(file.get(), bytes.data() + done, static_cast<std::size_t>(length - done), offset + done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return false;
        if (count == 0)
            break;
        done += count;
    }
    bytes.truncate(done);
    return true;
}

bool writeAt(const Descriptor& file, qint64 offset, QByteArrayView bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t count =
            ::pwrite(file.get(), bytes.data() + done, static_cast<std::size_t>(bytes.size() - done), offset + done);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        done += count;
    }
    return true;
}

QByteArray realPath(const QByteArray& path)
{
    char* const real = ::realpath(path.constData(), nullptr);
    QByteArray result(real);
    std::free(real); // realpath allocates with malloc
    return result;
}

void stampNow(const Descriptor& file)
{
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    ::clock_gettime(CLOCK_REALTIME, &times[1]);
    ::futimens(file.get(), times);
}

} // namespace orvantine
