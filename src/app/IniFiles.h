#pragma once

#include <QString>

namespace orvantine {
struct Root;
}

/// Values of files in INI form, key by key. Every call names the file.
namespace orvantine::IniFiles {

/// At most 254 characters, the rest is cut; "" for a missing file, section or key.
[[nodiscard]] QString ReadValue(const Root& root, const QString& file, const QString& section, const QString& key);
bool WriteValue(Root& root, const QString& file, const QString& section, const QString& key, const QString& value);
bool DeleteKey(Root& root, const QString& file, const QString& section, const QString& key);
bool DeleteSection(Root& root, const QString& file, const QString& section);

/// A database stands there that the catalogue knows nothing of (see Root.databaseAwaited). Its section `Index` is not
/// written.
[[nodiscard]] bool isForeign(const Root& root);

} // namespace orvantine::IniFiles
