#include "desktop/posix/PrivateFolder.h"

#include <cerrno>

#include <sys/stat.h>

namespace orvantine {

bool makePrivateFolder(const QByteArray& path)
{
    if (::mkdir(path.constData(), 0700) == 0)
        return true;
    struct stat info = {};
    if (errno == EEXIST)
        return ::stat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode);
    const qsizetype slash = path.lastIndexOf('/');
    return errno == ENOENT && slash > 0 && makePrivateFolder(path.first(slash)) && ::mkdir(path.constData(), 0700) == 0;
}

} // namespace orvantine
