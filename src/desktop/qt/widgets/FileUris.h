#pragma once

#include <QByteArray>
#include <QList>
#include <QStringList>

class QMimeData;

namespace orvantine {

/// True if there may be files in it: asked while something is drawn over a window, when nothing is read yet.
[[nodiscard]] bool mayHoldFiles(const QMimeData& data);

/// Local files and folders of a drop, as the Files service names them, folders without a separator
/// at their end. What lies on another machine is left out.
[[nodiscard]] QStringList localPaths(const QMimeData& data);

/// Files and folders that stand on a command line, as paths or file URIs; relative ones are looked for in the current
/// folder. All other words are left out, and where one of the told words stands, so is everything.
[[nodiscard]] QStringList argumentPaths(const QList<QByteArray>& words);

/// The same as `localPaths` for what a file manager has put on the clipboard, in one of the forms that they use there.
[[nodiscard]] QStringList copiedPaths(const QMimeData& data);

/// The "text/uri-list" of files by their host names.
[[nodiscard]] QByteArray uriList(const QList<QByteArray>& nativePaths);

} // namespace orvantine
