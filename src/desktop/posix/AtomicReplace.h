#pragma once

#include "desktop/posix/Descriptor.h"

#include <QByteArray>

#include <sys/stat.h>

namespace orvantine {

/// A regular file that somebody is going to write anew: a part of its bytes with others behind them, in one step. A
/// reader sees the old bytes or the new ones, also after a full disk, a crash or a loss of power.
class AtomicReplace
{
public:
    /// Opens for reading; a link leads to its file and stays a link.
    explicit AtomicReplace(const QByteArray& path);

    /// A regular file that its mode and its folder allow to be written.
    [[nodiscard]] bool isPossible() const { return m_possible; }
    [[nodiscard]] const Descriptor& file() const { return m_file; }
    [[nodiscard]] qint64 size() const { return m_info.st_size; }

    /// Writes the bytes from `keptFrom` to `keptTo` and `tail` behind them to `scratch` beside the old one,
    /// compares what it then holds, gives it times, mode, owner and extended attributes of the old one and puts it in
    /// its place. False if any of this fails or somebody else has changed the file since; then the old one stands.
    bool replace(const QByteArray& scratch, qint64 keptFrom, qint64 keptTo, const QByteArray& tail);

private:
    [[nodiscard]] bool isUntouched() const;

    QByteArray m_path;
    Descriptor m_file;
    struct stat m_info = {};
    bool m_possible = false;
};

} // namespace orvantine
