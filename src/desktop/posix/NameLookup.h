#pragma once

#include <QByteArray>
#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

#include <sys/stat.h>

namespace orvantine {

/// Finds files by the texts that users and playlists have for them. In this order, the first that exists wins: the
/// text as it stands; "\" as "/"; ignoring case, component by component; in the other Unicode normal form; as
/// windows-1252 bytes. Listings of folders are kept until the folder changes.
class NameLookup
{
public:
    struct Found
    {
        /// 0 if it exists, else why not (ENOENT, EACCES …).
        int error = 0;
        QByteArray path;
        struct stat info = {};
    };

    /// `drives`: host folders by "C:".
    explicit NameLookup(const QMap<QString, QString>& drives = {});

    [[nodiscard]] Found find(const QString& path) const;
    /// The host's path for a new file or folder: its folder must exist, its name must be one that every desktop takes,
    /// and no part may be "." or "..".
    [[nodiscard]] std::optional<QByteArray> creationPath(const QString& path) const;
    /// All names of a folder but "." and "..", as texts that `find` leads back to the same bytes.
    [[nodiscard]] QStringList names(const QByteArray& folder) const;

    /// Keys of the names of a folder as it stands now.
    [[nodiscard]] std::function<bool(const QString& key)> keysOf(const QByteArray& folder) const;

    /// UTF-8, or windows-1252 where the bytes are not valid UTF-8.
    [[nodiscard]] static QString textOf(const QByteArray& name);
    /// Equal keys: the same name but for case and normal form.
    [[nodiscard]] static QString keyOf(const QString& name);

private:
    struct Folder
    {
        struct stat stamp = {};
        bool settled = false;
        /// Why the listing is not whole: then a name that it does not hold may be there all the same.
        int error = 0;
        QHash<QString, std::vector<QByteArray>> entries;
    };

    [[nodiscard]] std::optional<QString> hostText(const QString& path) const;
    [[nodiscard]] const Folder& folder(const QByteArray& path, const struct stat* known = nullptr) const;
    [[nodiscard]] Found search(const QByteArray& path) const;
    [[nodiscard]] bool descend(const QByteArray& base, const QList<QByteArray>& parts, qsizetype index, int& budget,
                               Found& found) const;

    QMap<QString, QString> m_drives;
    mutable QHash<QByteArray, Folder> m_folders;
    mutable QString m_lastText;
    mutable QByteArray m_lastBytes;
};

} // namespace orvantine
