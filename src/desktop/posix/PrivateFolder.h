#pragma once

#include <QByteArray>

namespace orvantine {

/// Makes a folder and its parents with mode 0700; true if it stands already.
bool makePrivateFolder(const QByteArray& path);

/// A folder, and no link to one, of this user, into which nobody else can look or write.
[[nodiscard]] bool isPrivateFolder(const QByteArray& path);

/// Makes the folder if it is missing and takes the rights of others away from one of this user's. False if it is not
/// his alone then.
[[nodiscard]] bool preparePrivateFolder(const QByteArray& path);

} // namespace orvantine
