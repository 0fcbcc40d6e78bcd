#pragma once

#include "platform/EarlierVersions.h"
#include "transfer/VersionShelf.h"

#include <QString>

namespace orvantine {

class Command;
struct Root;

/// One version of a file, as the user has chosen it.
struct ChosenVersion
{
    QString path;
    QString name;
    VersionKind kind = VersionKind::List;
    EarlierVersion version;
};

/// "21.06.2026 18:03:12"
[[nodiscard]] QString timeText(const QDateTime& time);

/// The bytes of the version; nothing, and that is told, where they cannot be read any more.
[[nodiscard]] std::optional<QByteArray> readVersion(Root& root, Command& command, const EarlierVersion& version);

// What came of it, as a line; "" for nothing, where that was told or not wished.

/// Asks, and puts the version back at its place. What stands there is kept first. A list in sight is read anew, one
/// that the catalogue does not know is offered to it, a database is loaded.
[[nodiscard]] QString bringBack(Root& root, Command& command, const ChosenVersion& chosen);
/// Writes the version to a file that the user chooses.
[[nodiscard]] QString saveElsewhere(Root& root, Command& command, const ChosenVersion& chosen);

} // namespace orvantine
