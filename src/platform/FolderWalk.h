#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace orvantine {

/// A folder that a walk has read.
struct WalkedFolder
{
    /// The folder that the walk began with as it was named, the others joined to it.
    QString path;
    /// 0 for the folder that the walk began with.
    int level = 0;
    /// Names of the files that match, sorted ignoring case.
    QStringList files;
};

/// A walk through a tree of folders that goes on by itself, so that a folder that does not answer holds up nobody. It
/// ends with this.
class FolderWalk
{
public:
    virtual ~FolderWalk() = default;

    /// What has been read since the last call: level by level, each in the order of the folders above it, those of one
    /// folder sorted ignoring case. Hidden files and folders, folders that cannot be read and those that lie in
    /// themselves are left out.
    [[nodiscard]] virtual std::vector<WalkedFolder> take() = 0;
    /// Nothing more comes.
    [[nodiscard]] virtual bool done() const = 0;
};

class FolderWalks
{
public:
    virtual ~FolderWalks() = default;

    /// Reads the folder and `levels` of levels below it. `patterns` is "*.mp3;*.wma".
    [[nodiscard]] virtual std::unique_ptr<FolderWalk> begin(const QString& folder, const QString& patterns,
                                                            int levels) = 0;
};

} // namespace orvantine
