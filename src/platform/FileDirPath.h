#pragma once

#include <QString>

/// Parts of a path text. "\" and "/" both separate.
namespace orvantine::FileDirPath {

/// Text behind the last separator; the whole text where there is none.
[[nodiscard]] QString FileNameOf(const QString& path);

/// Text up to and including the last separator; "" where there is none.
[[nodiscard]] QString FolderOf(const QString& path);

[[nodiscard]] bool hasSeparator(QStringView text);

/// True for a path that begins with a separator or with a drive, "C:" and a separator.
[[nodiscard]] bool isAbsolute(QStringView path);

/// False for a text with a character that no file name holds on the desktops that the lists travel between.
[[nodiscard]] bool canBeFileName(QStringView name);

/// The same for a folder of its own: "." and ".." are others.
[[nodiscard]] bool canBeFolderName(QStringView name);

/// The separator of a path that is formed on a base: the first one in the base, "/" where it has none.
[[nodiscard]] QChar separatorOf(QStringView base);

/// `base`, a separator unless it ends in one, `name`.
[[nodiscard]] QString join(const QString& base, QStringView name);

/// The folder less the separators at its end; the root of a file system keeps its own.
[[nodiscard]] QString withoutSeparator(QString folder);

/// The name less its last `characters`; "" for a shorter one.
[[nodiscard]] QString without(const QString& name, int characters);

/// The file name of a path less the four characters of its ending: what a list or a track is called without another
/// name.
[[nodiscard]] QString titleOf(const QString& path);

/// Less a double quote at the beginning and one at the end.
[[nodiscard]] QString withoutQuotes(QString path);

/// The form in which two texts that name the same file are equal: case, the kind of separator and the way that an
/// umlaut is composed do not count.
[[nodiscard]] QString compared(const QString& path);
[[nodiscard]] bool isSameFile(const QString& one, const QString& other);

} // namespace orvantine::FileDirPath
