#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <vector>

namespace orvantine {

/// A place below the root of a folder tree.
struct TreePlace
{
    QString name;
    /// The host's bytes, without a trailing "/" except for "/" itself.
    QByteArray path;
    QString icon;
    bool network = false;
};

/// Where folders are looked for: the home folder, the file system, then volumes and network places by name.
/// `mountTable` is the kernel's table of mounts (/proc/self/mountinfo); none of the mounts is touched, since a dead one
/// would hang. An empty home is left out.
[[nodiscard]] std::vector<TreePlace> treePlaces(const QByteArray& home, const QByteArray& mountTable);

/// The places of this machine and user.
[[nodiscard]] std::vector<TreePlace> treePlaces();

struct FolderEntry
{
    QByteArray name;
    /// A link to a folder that it lies in: it would never end.
    bool loop = false;
};

struct FolderListing
{
    bool readable = false;
    /// Sorted by their texts, ignoring case; hidden ones are left out.
    std::vector<FolderEntry> folders;
};

/// Lists the folders of a folder. May take for ever: it runs in a thread of its own.
using FolderReader = std::function<FolderListing(const QByteArray& path)>;

[[nodiscard]] FolderListing readFolder(const QByteArray& path);

/// The text by which the Files service finds the name or path. Names of several encodings may follow one another in a
/// path, each with its own.
[[nodiscard]] QString folderText(const QByteArray& path);

} // namespace orvantine
