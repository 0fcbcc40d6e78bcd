#include "desktop/qt/widgets/MountFields.h"

#include <QList>

namespace orvantine {

QByteArray withoutMountEscapes(const QByteArray& field)
{
    QByteArray text;
    for (qsizetype i = 0; i < field.size(); ++i) {
        bool octal = false;
        const int code = field[i] == '\\' ? field.mid(i + 1, 3).toInt(&octal, 8) : 0;
        if (octal && i + 3 < field.size()) {
            text += static_cast<char>(code);
            i += 3;
        } else {
            text += field[i];
        }
    }
    return text;
}

bool isNetworkFileSystem(const QByteArray& type)
{
    static const QList<QByteArray> types{
        "nfs", "nfs4", "cifs",  "smb3",        "smbfs", "ncpfs",     "fuse.sshfs", "fuse.rclone",
        "afs", "9p",   "davfs", "fuse.davfs2", "ceph",  "glusterfs", "coda",       "fuse.gvfsd-fuse"};
    return types.contains(type);
}

} // namespace orvantine
