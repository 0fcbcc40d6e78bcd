#pragma once

#include "desktop/tags/ByteSource.h"
#include "platform/Mp3Record.h"

#include <optional>

namespace orvantine {

/// What stays of a track's bytes, and what stands behind them then.
struct TagEdit
{
    qint64 keptFrom = 0;
    qint64 keptTo = 0;
    QByteArray tail;
};

/// Puts the record's tag at the end, in the place of one that stands there. Nothing where the bytes had better be left
/// alone: they are of another kind, a leading tag claims a size that cannot be, or no two frames follow.
[[nodiscard]] std::optional<TagEdit> id3v1Edit(const ByteSource& source, const Mp3Record& record);

/// Takes the tags of version 2 away, the leading and the appended ones; an edit that changes nothing where there are
/// none. Nothing as above.
[[nodiscard]] std::optional<TagEdit> id3v2Removal(const ByteSource& source);

[[nodiscard]] bool changesNothing(const ByteSource& source, const TagEdit& edit);

} // namespace orvantine
