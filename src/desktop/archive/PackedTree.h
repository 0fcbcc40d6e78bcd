#pragma once

#include "platform/ZipArchive.h"

#include <QByteArray>
#include <QHash>

#include <functional>
#include <vector>

#include <sys/stat.h>

namespace orvantine {

/// A file or folder that is to go into an archive.
struct PackedFile
{
    /// The host's.
    QByteArray path;
    /// In the archive; that of a folder ends in "/".
    QString name;
    bool folder = false;
    qint64 size = 0;
    qint64 modifiedSeconds = 0;
};

/// By it two names are one name: case and normal form do not count.
[[nodiscard]] QString entryKey(const QString& name);

struct PackedTree
{
    std::vector<PackedFile> files;
    QStringList leftOut;
    /// Place of each name in `files`.
    QHash<QString, std::size_t> places;
};

struct TreeRules
{
    bool foldersToo = true;
    bool followsLinks = true;
    /// Empty takes all.
    std::function<bool(const QString& name)> takes;
    /// Identity of the archive itself, if it stands.
    const struct stat* archive = nullptr;
};

/// Adds what lies below a folder, each folder's names in the order of their bytes. What an earlier tree has under one
/// of its names goes; of two such files in one folder the second is left out.
void addTree(const QByteArray& folder, const TreeRules& rules, PackedTree& tree);
/// One file; what an earlier folder has under its name goes.
void addFile(const QByteArray& path, const QString& name, PackedTree& tree);

} // namespace orvantine
