#include "transfer/VersionShelf.h"

#include "app/DataFolder.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "platform/FileDirPath.h"
#include "platform/PlaylistWalk.h"
#include "platform/ProfileText.h"
#include "playlists/PlaylistText.h"

#include <QHash>

#include <algorithm>
#include <optional>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool endsWithOneOf(const QString& path, std::initializer_list<QStringView> endings)
{
    return std::any_of(endings.begin(), endings.end(),
                       [&path](QStringView ending) { return path.endsWith(ending, Qt::CaseInsensitive); });
}

/// The text in which every name of the file is the same; for one that is missing as it stands.
QString hostText(const Root& root, const QString& path)
{
    const std::optional<QByteArray> native = root.files.nativePath(path);
    return FileDirPath::compared(native ? root.files.decode(*native) : path);
}

class Sorter
{
public:
    explicit Sorter(const Root& root)
        : m_covers(FileDirPath::compared(FileDirPath::FolderOf(resourceFile(root, u"x"_s)))),
          m_databases{hostText(root, databaseFile(root)), hostText(root, namedDatabaseFile(root))}
    {
        if (const std::optional<QByteArray> native = root.files.nativePath(dataFolder(root, u"Resource"_s)))
            m_coversOnHost = FileDirPath::compared(root.files.decode(*native) + u'/');
        for (int row = 1; row <= root.LListView1.count(); ++row) {
            const QString path = playlistPath(root, row);
            m_names.insert(FileDirPath::compared(path), playlistName(root, row));
            m_names.insert(hostText(root, path), playlistName(root, row));
        }
    }

    [[nodiscard]] std::optional<VersionKind> kindOf(const QString& path) const
    {
        const QString compared = FileDirPath::compared(path);
        if (m_databases.contains(compared))
            return VersionKind::Database;
        if (endsWithOneOf(path, {u".m3u", u".m3u8", u".pls", u".nml"}))
            return VersionKind::List;
        const QString folder = FileDirPath::compared(FileDirPath::FolderOf(path));
        if (endsWithOneOf(path, {u".jpg", u".gif", u".bmp"}) && (folder == m_covers || folder == m_coversOnHost))
            return VersionKind::Cover;
        return {};
    }

    [[nodiscard]] QString nameOf(const QString& path, VersionKind kind) const
    {
        if (kind == VersionKind::Database)
            return u"Datenbank"_s;
        const QString name = kind == VersionKind::List ? m_names.value(FileDirPath::compared(path)) : QString();
        return name.isEmpty() ? FileDirPath::FileNameOf(path).section(u'.', 0, -2) : name;
    }

private:
    QString m_covers;
    QString m_coversOnHost;
    QStringList m_databases;
    QHash<QString, QString> m_names;
};

QStringList entriesOfList(const QString& path, QString text)
{
    if (path.endsWith(u".nml"_s, Qt::CaseInsensitive))
        text = entriesOfNml(text.chopped(std::min<qsizetype>(2, text.size()))) + u"\r\n"_s;
    QStringList lines;
    const QList<PlaylistEntry> entries = playlistEntries({}, text);
    lines.reserve(entries.size());
    for (const PlaylistEntry& entry : entries)
        lines += entry.sourceURL;
    return lines;
}

QStringList listsOfDatabase(const Files& files, const QByteArray& bytes)
{
    ProfileText text(files, bytes);
    QStringList lines;
    for (int number = 1; number <= MostPlaylists; ++number) {
        const auto value = [&text, number](char letter) {
            return text.value(u"Index"_s, QString::number(number) + QLatin1Char(letter));
        };
        const QString name = value(EntryKey::Name);
        const QString path = value(EntryKey::Path);
        if (!name.isEmpty() || !path.isEmpty())
            lines += name + u" – "_s + path;
    }
    return lines;
}

} // namespace

std::vector<ShelvedFile> shelve(const Root& root, std::vector<EarlierVersion> versions)
{
    const Sorter sorter(root);
    std::vector<ShelvedFile> files;
    QHash<QString, std::optional<std::size_t>> places;
    for (EarlierVersion& version : versions) {
        auto place = places.find(version.path);
        if (place == places.end()) {
            const std::optional<VersionKind> kind = sorter.kindOf(version.path);
            place = places.insert(version.path, kind ? std::optional(files.size()) : std::nullopt);
            if (kind)
                files.push_back({version.path, sorter.nameOf(version.path, *kind), *kind, {}});
        }
        if (*place)
            files[**place].versions.push_back(std::move(version));
    }
    return files;
}

QString kindText(VersionKind kind)
{
    switch (kind) {
    case VersionKind::List:
        return u"Playliste"_s;
    case VersionKind::Cover:
        return u"CD-Cover"_s;
    case VersionKind::Database:
        return u"Datenbank"_s;
    }
    return {};
}

bool isOneFile(const Root& root, const QString& one, const QString& other)
{
    return FileDirPath::isSameFile(one, other) || (!one.isEmpty() && hostText(root, one) == hostText(root, other));
}

int rowWithFile(const Root& root, const QString& path)
{
    int row = root.LListView1.count();
    while (row > 0 && !isOneFile(root, playlistPath(root, row), path))
        --row;
    return row;
}

QStringList linesOf(const Root& root, VersionKind kind, const QString& path, const QByteArray& bytes)
{
    switch (kind) {
    case VersionKind::List:
        return entriesOfList(path, root.files.decode(bytes));
    case VersionKind::Database:
        return listsOfDatabase(root.files, bytes);
    case VersionKind::Cover:
        return {};
    }
    return {};
}

} // namespace orvantine
