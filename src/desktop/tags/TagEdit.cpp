#include "desktop/tags/TagEdit.h"

#include "desktop/tags/FrameSearch.h"
#include "desktop/tags/Id3v1.h"
#include "desktop/tags/TrackLayout.h"

namespace orvantine {
namespace {

bool hasFrame(const ByteSource& source, const TrackLayout& layout)
{
    ByteWindow window(source);
    return !layout.foreign && FrameSearch(window, layout).first();
}

/// What lies before the sound may go only where the sound is beyond doubt.
bool isRemovable(const ByteSource& source, const TrackLayout& layout)
{
    if (layout.foreign || layout.brokenId3v2)
        return false;
    ByteWindow window(source);
    FrameSearch search(window, layout);
    return search.first() && search.isCertain();
}

} // namespace

std::optional<TagEdit> id3v1Edit(const ByteSource& source, const Mp3Record& record)
{
    const TrackLayout layout = trackLayout(source);
    if (!hasFrame(source, layout))
        return std::nullopt;
    return TagEdit{
        .keptFrom = 0, .keptTo = source.size() - (layout.hasId3v1 ? id3v1Size : 0), .tail = id3v1Bytes(record)};
}

std::optional<TagEdit> id3v2Removal(const ByteSource& source)
{
    const TrackLayout layout = trackLayout(source);
    if (!isRemovable(source, layout))
        return std::nullopt;
    TagEdit edit{.keptFrom = layout.soundBegin, .keptTo = source.size(), .tail = {}};
    for (const ByteSpan& tag : layout.appendedId3v2) {
        edit.tail.prepend(source.read(tag.end, edit.keptTo - tag.end));
        edit.keptTo = tag.begin;
    }
    return edit;
}

bool changesNothing(const ByteSource& source, const TagEdit& edit)
{
    return edit.keptFrom == 0 && edit.keptTo + edit.tail.size() == source.size() &&
           source.read(edit.keptTo, edit.tail.size()) == edit.tail;
}

} // namespace orvantine
