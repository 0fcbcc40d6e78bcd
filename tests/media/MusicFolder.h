#pragma once

#include "desktop/posix/PosixFiles.h"

#include <QTemporaryDir>

#include <functional>
#include <string>

namespace orvantine::test {

/// A folder of its own with sounds and lists in it.
class MusicFolder
{
public:
    /// Full path of a name in the folder.
    [[nodiscard]] QString path(const QString& name) const;
    /// Writes a file and gives its path.
    QString write(const QString& name, const QByteArray& bytes) const;
    /// Writes a list, each line closed by CR LF, and gives its path.
    QString writeList(const QStringList& lines, const QString& name = QStringLiteral("list.m3u")) const;

private:
    QTemporaryDir m_folder;
};

/// Counts how many files a player looks up.
class CountingFiles : public PosixFiles
{
public:
    [[nodiscard]] std::optional<qint64> size(const QString& path) const override
    {
        ++lookUps;
        return PosixFiles::size(path);
    }

    mutable int lookUps = 0;
};

/// Serves events until it holds; false if that did not come about for a very long time.
[[nodiscard]] bool waitUntil(const std::function<bool()>& holds);

/// Serves the events that wait now, and those that they post.
void serveEvents();

} // namespace orvantine::test
