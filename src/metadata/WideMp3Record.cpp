#include "metadata/WideMp3Record.h"

#include "app/TextLimits.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace orvantine {

namespace {

struct Field
{
    QString WideMp3Record::*wide;
    std::size_t offset;
    qsizetype width;
};

#define ORVANTINE_FIELD(name)                                                                                          \
    Field                                                                                                              \
    {                                                                                                                  \
        &WideMp3Record::name, offsetof(Mp3Record, name), sizeof(Mp3Record::name)                                       \
    }

constexpr std::array fields{
    ORVANTINE_FIELD(title),         ORVANTINE_FIELD(artist),
    ORVANTINE_FIELD(album),         ORVANTINE_FIELD(year),
    ORVANTINE_FIELD(comment),       ORVANTINE_FIELD(reserved208),
    ORVANTINE_FIELD(extendedTrack), ORVANTINE_FIELD(extendedYear),
    ORVANTINE_FIELD(extendedTitle), ORVANTINE_FIELD(extendedArtist),
    ORVANTINE_FIELD(extendedAlbum), ORVANTINE_FIELD(extendedGenre),
    ORVANTINE_FIELD(reserved1772),  ORVANTINE_FIELD(reserved2027),
    ORVANTINE_FIELD(reserved2282),  ORVANTINE_FIELD(extendedBitRate),
    ORVANTINE_FIELD(reserved2792),  ORVANTINE_FIELD(extendedComment),
};

#undef ORVANTINE_FIELD

constexpr std::size_t HeaderSize = offsetof(Mp3Record, title);

} // namespace

WideMp3Record::WideMp3Record() : header(HeaderSize, '\0')
{
    for (const Field& field : fields)
        this->*field.wide = QString(field.width, u' ');
}

Mp3Record narrow(const WideMp3Record& wide)
{
    Mp3Record record;
    auto* const bytes = reinterpret_cast<char*>(&record);
    const QByteArray header = wide.header.leftJustified(HeaderSize, '\0', true);
    std::memcpy(bytes, header.constData(), HeaderSize);
    record.bitRate = wide.bitRate;
    record.playingTime = wide.playingTime;
    record.trackFlagA = wide.trackFlagA;
    record.trackFlagB = wide.trackFlagB;
    record.genre = wide.genre;
    record.track = wide.track;
    for (const Field& field : fields) {
        const QByteArray text = CodePage::toWindows1252(wide.*field.wide).leftJustified(field.width, ' ', true);
        std::memcpy(bytes + field.offset, text.constData(), static_cast<std::size_t>(field.width));
    }
    return record;
}

WideMp3Record widen(const Mp3Record& record)
{
    static const WideMp3Record blank;
    WideMp3Record wide = blank;
    const auto* const bytes = reinterpret_cast<const char*>(&record);
    wide.header = QByteArray(bytes, HeaderSize);
    wide.bitRate = record.bitRate;
    wide.playingTime = record.playingTime;
    wide.trackFlagA = record.trackFlagA;
    wide.trackFlagB = record.trackFlagB;
    wide.genre = record.genre;
    wide.track = record.track;
    for (const Field& field : fields)
        wide.*field.wide = CodePage::fromWindows1252(QByteArrayView(bytes + field.offset, field.width));
    return wide;
}

void setText(WideMp3Record& record, QString WideMp3Record::*field, const QString& text)
{
    const auto* const found =
        std::find_if(fields.begin(), fields.end(), [field](const Field& known) { return known.wide == field; });
    if (found != fields.end())
        record.*field = cutTo(text, found->width).leftJustified(found->width, u' ');
}

} // namespace orvantine
