#pragma once

#include <QString>
#include <QStringList>

namespace orvantine {

/// What would become of the rows that stand now if the version took their place.
struct VersionDifference
{
    /// Come in that are missing now.
    qsizetype added = 0;
    /// Go away.
    qsizetype gone = 0;
    /// The fewest that have to be taken to another place, of those that stay.
    qsizetype moved = 0;

    bool operator==(const VersionDifference&) const = default;
};

/// A row that stands there several times counts as often.
[[nodiscard]] VersionDifference versionDifference(const QStringList& now, const QStringList& then);

/// "+3 −2, 5 verschoben"; "" where there is none.
[[nodiscard]] QString differenceText(const VersionDifference& difference);

} // namespace orvantine
