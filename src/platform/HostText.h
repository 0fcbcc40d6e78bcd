#pragma once

#include <QByteArray>

namespace orvantine {

/// True for a text file of the host's own kind: at least one LF, no CR anywhere. An image with NUL is no text.
[[nodiscard]] bool needsAdoption(QByteArrayView bytes);

/// The same text with CR LF line ends; a last line without line end gets one.
[[nodiscard]] QByteArray adopted(QByteArrayView bytes);

} // namespace orvantine
