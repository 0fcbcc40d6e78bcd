#include "desktop/qt/widgets/FileUris.h"

#include "desktop/qt/widgets/TreePlaces.h"

#include <QMimeData>
#include <QSysInfo>

#include <filesystem>
#include <optional>
#include <system_error>

#include <sys/stat.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString UriList = u"text/uri-list"_s;
/// What some file managers put on the clipboard beside the list or instead of it: a first line "copy" or "cut", then
/// the URIs. The text stands for a time when there was no format of its own for it.
const QString CopiedFiles = u"x-special/gnome-copied-files"_s;
const QString CopiedFilesText = u"x-special/nautilus-clipboard\n"_s;

/// Path of "file:/path", "file:///path" or "file://this-machine/path", still in percent form.
std::optional<QByteArray> encodedPath(const QByteArray& uri)
{
    constexpr qsizetype Scheme = 5;
    if (uri.left(Scheme).toLower() != "file:")
        return std::nullopt;
    QByteArray rest = uri.mid(Scheme);
    if (rest.startsWith("//")) {
        const qsizetype slash = rest.indexOf('/', 2);
        if (slash < 0)
            return std::nullopt;
        const QByteArray host = rest.mid(2, slash - 2).toLower();
        if (!host.isEmpty() && host != "localhost" && host != QSysInfo::machineHostName().toUtf8().toLower())
            return std::nullopt;
        rest = rest.mid(slash);
    }
    return rest.startsWith('/') ? std::optional(rest) : std::nullopt;
}

/// The host's bytes of a local path, folders without a separator at their end; empty for none.
QByteArray nativePath(const QByteArray& uri)
{
    const std::optional<QByteArray> encoded = encodedPath(uri);
    if (!encoded)
        return {};
    QByteArray path = QByteArray::fromPercentEncoding(*encoded);
    if (path.contains('\0'))
        return {};
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path;
}

QString localPath(const QByteArray& uri)
{
    const QByteArray path = nativePath(uri);
    return path.isEmpty() ? QString() : folderText(path);
}

/// The path that a word of the command line stands for, as if it were one.
QByteArray wordPath(const QByteArray& word)
{
    if (word.left(5).toLower() == "file:")
        return nativePath(word);
    std::error_code none;
    const std::filesystem::path absolute = std::filesystem::absolute(word.toStdString(), none);
    QByteArray path = QByteArray::fromStdString(absolute.lexically_normal().string());
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path;
}

bool isFileOrFolder(const QByteArray& path)
{
    struct stat info = {};
    return !path.isEmpty() && ::stat(path.constData(), &info) == 0 && (S_ISREG(info.st_mode) || S_ISDIR(info.st_mode));
}

QStringList pathsOf(const QByteArray& list)
{
    QStringList paths;
    // Not as QUrl, which makes question marks of bytes that are no UTF-8.
    const QList<QByteArray> lines = list.split('\n');
    for (const QByteArray& line : lines)
        if (const QString path = localPath(line.trimmed()); !path.isEmpty())
            paths += path;
    return paths;
}

} // namespace

bool mayHoldFiles(const QMimeData& data)
{
    return data.hasFormat(UriList);
}

QStringList localPaths(const QMimeData& data)
{
    return pathsOf(data.data(UriList));
}

QStringList argumentPaths(const QList<QByteArray>& words)
{
    QStringList paths;
    for (const QByteArray& word : words) {
        // Required: "/hide" and "/play" with a path behind them match nothing.
        if (word.toLower() == "/hide" || word.toLower() == "/play")
            return {};
        if (const QByteArray path = wordPath(word); !word.isEmpty() && isFileOrFolder(path))
            paths += folderText(path);
    }
    return paths;
}

QStringList copiedPaths(const QMimeData& data)
{
    if (data.hasFormat(UriList))
        return localPaths(data);
    if (data.hasFormat(CopiedFiles))
        return pathsOf(data.data(CopiedFiles));
    const QString text = data.text();
    return text.startsWith(CopiedFilesText) ? pathsOf(text.toUtf8()) : QStringList();
}

QByteArray uriList(const QList<QByteArray>& nativePaths)
{
    QByteArray list;
    for (const QByteArray& path : nativePaths)
        list += "file://" + path.toPercentEncoding("/") + "\r\n";
    return list;
}

} // namespace orvantine
