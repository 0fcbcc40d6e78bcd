#pragma once

#include <QByteArray>

namespace orvantine {

/// True for a text file of the host's own kind: at least one LF, no CR anywhere. An image with NUL is no text.
[[nodiscard]] bool needsAdoption(QByteArrayView bytes);

/// The same text with CR LF line ends; a last line without line end gets one.
[[nodiscard]] QByteArray adopted(QByteArrayView bytes);

/// No playlist is larger.
constexpr qint64 LargestPlaylist = qint64{64} << 20;

/// False for what cannot be a playlist: control characters but tabs and line ends, a sound's or a picture's head, or
/// more bytes than a playlist has.
[[nodiscard]] bool isText(QByteArrayView bytes);

} // namespace orvantine
