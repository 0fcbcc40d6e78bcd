#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <functional>

namespace orvantine {

/// Gives up to `length` bytes of an archive at `offset`; fewer where it cannot.
using ArchiveReader = std::function<QByteArray(qint64 offset, qint64 length)>;

/// The library hands a NUL in a name over as a blank, so that two names look alike: the names as they stand in the
/// archive are looked at here. True if none has a control character in it; false also where the directory is not found.
[[nodiscard]] bool namesAreClean(const ArchiveReader& read, qint64 size);

} // namespace orvantine
