#pragma once

#include <QImage>

namespace orvantine {

/// Largest file, in bytes, that is read as a cover.
inline constexpr qint64 LargestCoverFile = qint64{128} * 1024 * 1024;

/// Decodes a JPEG, GIF, BMP or PNG, whatever its file is called; of a moving picture the first frame. The result's
/// sides are at most a few times those of the panel. Null for anything else, for a broken picture, and for one that
/// would take unreasonable time or memory.
[[nodiscard]] QImage coverPicture(const QByteArray& bytes);

} // namespace orvantine
