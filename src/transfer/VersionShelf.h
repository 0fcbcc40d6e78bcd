#pragma once

#include "platform/EarlierVersions.h"

#include <QStringList>

#include <cstddef>
#include <vector>

namespace orvantine {

struct Root;

/// What a user can bring back. All else that was kept (cut-off tags, other programs' files) is no version of a file.
enum class VersionKind { List, Cover, Database };

/// A file of which earlier versions were kept.
struct ShelvedFile
{
    QString path;
    /// That of the catalogue, or else of the file.
    QString name;
    VersionKind kind = VersionKind::List;
    /// The newest first.
    std::vector<EarlierVersion> versions;
};

/// The files, the one that was changed last first.
[[nodiscard]] std::vector<ShelvedFile> shelve(const Root& root, std::vector<EarlierVersion> versions);
[[nodiscard]] QString kindText(VersionKind kind);

/// Both texts name one file, by way of a drive or in another case as well.
[[nodiscard]] bool isOneFile(const Root& root, const QString& one, const QString& other);
/// The row of the catalogue with that file; 0 for none.
[[nodiscard]] int rowWithFile(const Root& root, const QString& path);

/// What a version holds, a line each: the tracks of a list, names and paths of the lists in a database; nothing of a
/// cover. `path` tells the form of a list.
[[nodiscard]] QStringList linesOf(const Root& root, VersionKind kind, const QString& path, const QByteArray& bytes);

} // namespace orvantine
