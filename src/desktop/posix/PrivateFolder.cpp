#include "desktop/posix/PrivateFolder.h"

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

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

bool isPrivateFolder(const QByteArray& path)
{
    struct stat info = {};
    return ::lstat(path.constData(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == ::geteuid() &&
           (info.st_mode & 0077) == 0;
}

bool preparePrivateFolder(const QByteArray& path)
{
    struct stat info = {};
    if (path.isEmpty() || !makePrivateFolder(path) || ::lstat(path.constData(), &info) != 0 || !S_ISDIR(info.st_mode) ||
        info.st_uid != ::geteuid())
        return false;
    return (info.st_mode & 0077) == 0 || (::chmod(path.constData(), 0700) == 0 && isPrivateFolder(path));
}

} // namespace orvantine
