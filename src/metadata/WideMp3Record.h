#pragma once

#include "platform/Mp3Record.h"

#include <QByteArray>
#include <QString>

namespace orvantine {

/// The program's own copy of the record, with wide texts. Each text has the fixed width of its field, padded with
/// blanks.
struct WideMp3Record
{
    WideMp3Record();

    /// The numeric header as the library left it; the numbers below stand in its place.
    QByteArray header;
    qint16 bitRate = 0;
    qint32 playingTime = 0;
    qint16 trackFlagA = 0;
    qint16 trackFlagB = 0;
    QString title, artist, album, year, comment, reserved208;
    qint16 genre = 0;
    qint16 track = 0;
    QString extendedTrack, extendedYear, extendedTitle, extendedArtist, extendedAlbum, extendedGenre;
    QString reserved1772, reserved2027, reserved2282;
    QString extendedBitRate;
    QString reserved2792;
    QString extendedComment;
};

/// The library's form; what windows-1252 does not know becomes "?".
[[nodiscard]] Mp3Record narrow(const WideMp3Record& wide);
[[nodiscard]] WideMp3Record widen(const Mp3Record& record);

/// Puts a text into a field of the record: cut to its width and padded with blanks on the right.
void setText(WideMp3Record& record, QString WideMp3Record::*field, const QString& text);

} // namespace orvantine
