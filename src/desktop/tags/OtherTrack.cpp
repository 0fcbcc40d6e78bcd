#include "desktop/tags/OtherTrack.h"

#include "desktop/posix/Descriptor.h"
#include "platform/CodePage.h"

#include <fileref.h>
#include <tag.h>
#include <tfilestream.h>
#include <wavfile.h>

#include <algorithm>
#include <limits>

namespace orvantine {
namespace {

QByteArray recordText(const TagLib::String& text)
{
    const std::string utf8 = text.to8Bit(true);
    const QString whole = QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
    return CodePage::toWindows1252(whole.left(whole.indexOf(QChar::Null)));
}

/// What `into` does not know yet.
void complete(Id3v1& into, const TagLib::Tag& tag)
{
    constexpr unsigned mostTracks = std::numeric_limits<qint16>::max();
    const auto take = [](QByteArray& field, const TagLib::String& text) {
        if (field.isEmpty())
            field = recordText(text);
    };
    take(into.title, tag.title());
    take(into.artist, tag.artist());
    take(into.album, tag.album());
    take(into.comment, tag.comment());
    if (into.year.isEmpty() && tag.year() > 0)
        into.year = QByteArray::number(tag.year());
    if (into.track == 0 && tag.track() <= mostTracks)
        into.track = static_cast<int>(tag.track());
}

Id3v1 tagOf(const TagLib::FileRef& track)
{
    Id3v1 found;
    if (track.tag() != nullptr)
        complete(found, *track.tag());
    // A wave has two kinds, and TagLib gives one of them unasked.
    const auto* const wave = dynamic_cast<const TagLib::RIFF::WAV::File*>(track.file());
    if (wave != nullptr && wave->InfoTag() != nullptr)
        complete(found, *wave->InfoTag());
    return found;
}

} // namespace

TrackFacts otherTrackFacts(const Descriptor& file)
{
    TrackFacts facts{.tag = {}, .bitRate = 0, .seconds = 0};
    // The stream closes what it is given.
    Descriptor own(::dup(file.get()));
    if (!own.isOpen())
        return facts;
    TagLib::FileStream stream(own.release(), true);
    const TagLib::FileRef found(&stream);
    if (found.isNull())
        return facts;
    facts.tag = tagOf(found);
    if (const TagLib::AudioProperties* sound = found.audioProperties()) {
        facts.bitRate = std::max(sound->bitrate(), 0);
        facts.seconds = std::max(sound->lengthInSeconds(), 0);
    }
    return facts;
}

} // namespace orvantine
