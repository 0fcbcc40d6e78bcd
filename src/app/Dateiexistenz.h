#pragma once

#include <QString>

namespace orvantine {
struct Root;
}

namespace orvantine::Dateiexistenz {

/// True if anything matches: patterns count, folders too.
[[nodiscard]] bool FileExists(const Root& root, const QString& path);

/// True only where there is none for certain: a disk that does not answer proves nothing.
[[nodiscard]] bool IsMissing(const Root& root, const QString& path);

/// True if the attributes can be read: a file counts too.
[[nodiscard]] bool FolderExists(const Root& root, const QString& path);

} // namespace orvantine::Dateiexistenz
