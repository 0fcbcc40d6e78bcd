#include "desktop/tags/Id3v1.h"
#include "desktop/tags/TagEdit.h"
#include "desktop/tags/TrackLayout.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

using namespace orvantine;

namespace {

void require(bool holds)
{
    if (!holds)
        std::abort();
}

QByteArray applied(const QByteArray& bytes, const TagEdit& edit)
{
    require(edit.keptFrom >= 0 && edit.keptFrom <= edit.keptTo && edit.keptTo <= bytes.size());
    return bytes.mid(edit.keptFrom, edit.keptTo - edit.keptFrom) + edit.tail;
}

QByteArray withoutId3v1(const QByteArray& bytes)
{
    return bytes.chopped(trackLayout(MemoryBytes(bytes)).hasId3v1 ? id3v1Size : 0);
}

bool isBroken(const QByteArray& bytes)
{
    return trackLayout(MemoryBytes(bytes)).brokenId3v2;
}

QByteArray withoutId3v2(QByteArray bytes)
{
    const TrackLayout layout = trackLayout(MemoryBytes(bytes));
    for (const ByteSpan& tag : layout.appendedId3v2)
        bytes.remove(tag.begin, tag.end - tag.begin);
    return bytes.mid(layout.soundBegin);
}

qint64 soundEnd(const QByteArray& bytes)
{
    return trackLayout(MemoryBytes(bytes)).soundEnd;
}

bool hasId3v1(const QByteArray& bytes)
{
    return trackLayout(MemoryBytes(bytes)).hasId3v1;
}

} // namespace

/// The first 158 bytes make the record's fields, the rest is the track. Writing and erasing keep every byte of the
/// sound, and twice is once.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr qsizetype Fields = 158;
    if (size < Fields)
        return 0;
    const QByteArray input(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    Mp3Record record;
    std::memcpy(record.title, input.constData(), Fields);
    record.trackFlagA = static_cast<qint16>(input[124] & 3);
    record.track = static_cast<unsigned char>(input[125]);
    record.genre = static_cast<qint16>(static_cast<unsigned char>(input[126]) * 4 - 300);
    const QByteArray track = input.mid(Fields);

    if (const std::optional<TagEdit> edit = id3v1Edit(MemoryBytes(track), record)) {
        const QByteArray once = applied(track, *edit);
        require(once.endsWith(id3v1Bytes(record)));
        require(once.startsWith(withoutId3v1(track)) && once.size() == withoutId3v1(track).size() + id3v1Size);
        const std::optional<TagEdit> again = id3v1Edit(MemoryBytes(once), record);
        // A leading tag that claimed a few bytes more than there were is whole now, with the sound inside; or "TAG+",
        // which means something before a tag of version 1 alone, now cuts off the end of the sound.
        require(again || isBroken(track) != isBroken(once) || soundEnd(track) != soundEnd(once));
        require(!again || (changesNothing(MemoryBytes(once), *again) && applied(once, *again) == once));
    }
    if (const std::optional<TagEdit> edit = id3v2Removal(MemoryBytes(track))) {
        const QByteArray once = applied(track, *edit);
        require(once == withoutId3v2(track));
        const std::optional<TagEdit> again = id3v2Removal(MemoryBytes(once));
        // Bytes that only now end the file can read as a tag of version 1, with others in front of it.
        require(again && (hasId3v1(once) != hasId3v1(track) || changesNothing(MemoryBytes(once), *again)));
    }
    return 0;
}
