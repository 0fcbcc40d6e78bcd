#pragma once

#include <QByteArray>
#include <QString>

namespace orvantine::fake {

/// A text on one line as logs and scenarios show it: between double quotes, with \" \\ \{ for themselves, \r \n \t, and
/// \xHH for any other control character.
[[nodiscard]] QString quoted(const QString& text);

/// Bytes in the same form: valid UTF-8 stands as its characters, every other byte and a BOM as \xHH.
[[nodiscard]] QString quotedBytes(const QByteArray& bytes);

/// The inside of quoted(), without the quotes.
[[nodiscard]] QString escaped(const QString& text);
[[nodiscard]] QString escapedBytes(const QByteArray& bytes);

} // namespace orvantine::fake
