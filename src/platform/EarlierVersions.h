#pragma once

#include "platform/Files.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>
#include <vector>

namespace orvantine {

/// What a file held until a command replaced or deleted it.
struct EarlierVersion
{
    /// As the Files service names it.
    QString path;
    /// When it was replaced, in local time.
    QDateTime when;
    qint64 size = 0;
    /// The command that did it; "" where none is known.
    QString reason;
    /// By which its bytes are asked for. Versions of the same bytes may share one.
    QByteArray handle;

    bool operator==(const EarlierVersion&) const = default;
};

struct EarlierVersionList
{
    /// The newest first.
    std::vector<EarlierVersion> versions;
    /// Bytes that all of them take on the disk.
    qint64 room = 0;
};

/// What was kept of the user's files. Reading only: it is filled by the Files service, and emptied by age and size.
class EarlierVersions
{
public:
    /// Older ones go, and the oldest when all together take more, but never the newest one of a file.
    static constexpr int MostDays = 90;
    static constexpr qint64 MostBytes = qint64{200} << 20;

    virtual ~EarlierVersions() = default;

    /// Those whose bytes are there. Nothing if it cannot be known; no version for a user of whom nothing was kept yet.
    [[nodiscard]] virtual std::optional<EarlierVersionList> list() const = 0;
    /// Missing for one that has gone meanwhile, Failed for one that is not what was kept.
    [[nodiscard]] virtual ReadBytes bytes(const QByteArray& handle) const = 0;
};

} // namespace orvantine
