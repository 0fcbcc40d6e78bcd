#pragma once

#include "platform/Files.h"

#include <cerrno>

namespace orvantine {

/// What an `errno` tells of a disk.
[[nodiscard]] inline WriteFault diskFault(int error)
{
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return WriteFault::NoRoom;
    case EROFS:
        return WriteFault::ReadOnlyDisk;
    case EACCES:
    case EPERM:
        return WriteFault::NoRights;
    default:
        return WriteFault::Disk;
    }
}

/// The `errno` that stands for bytes which are no archive, or no whole one: no fault of the disk.
constexpr int UnsoundArchive = EBADMSG;

} // namespace orvantine
