#include "support/Quoting.h"

#include "playlists/PlaylistText.h"

#include <QStringDecoder>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

QString hexEscape(uint code)
{
    return u"\\x"_s + QString::number(code, 16).rightJustified(2, u'0').toUpper();
}

QString escapedCharacter(QChar unit)
{
    switch (unit.unicode()) {
    case u'\r':
        return u"\\r"_s;
    case u'\n':
        return u"\\n"_s;
    case u'\t':
        return u"\\t"_s;
    case u'\\':
        return u"\\\\"_s;
    case u'"':
        return u"\\\""_s;
    case u'{':
        return u"\\{"_s;
    default:
        return unit.unicode() < 0x20 || unit.unicode() == 0x7f ? hexEscape(unit.unicode()) : QString(unit);
    }
}

/// Length of the UTF-8 sequence at the front, 0 if there is none that is valid.
qsizetype sequenceLength(QByteArrayView bytes)
{
    const auto first = static_cast<uchar>(bytes.front());
    const qsizetype length = first < 0x80   ? 1
                             : first < 0xC2 ? 0
                             : first < 0xE0 ? 2
                             : first < 0xF0 ? 3
                             : first < 0xF5 ? 4
                                            : 0;
    if (length == 0 || length > bytes.size())
        return 0;
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(bytes.first(length));
    return decoder.hasError() || text.contains(QChar::ReplacementCharacter) ? 0 : length;
}

} // namespace

QString escaped(const QString& text)
{
    QString shown;
    for (const QChar unit : text)
        shown += escapedCharacter(unit);
    return shown;
}

QString quoted(const QString& text)
{
    return u'"' + escaped(text) + u'"';
}

QString escapedBytes(const QByteArray& bytes)
{
    QString shown;
    for (qsizetype at = 0; at < bytes.size();) {
        const QByteArrayView rest = QByteArrayView(bytes).sliced(at);
        const qsizetype length = sequenceLength(rest);
        const QString text = length > 0 ? QString::fromUtf8(rest.first(length)) : QString();
        if (length > 0 && (length == 1 || text != QString(QChar::ByteOrderMark)) && !text.isEmpty()) {
            shown += escaped(text);
            at += length;
        } else {
            shown += hexEscape(static_cast<uchar>(rest.front()));
            ++at;
        }
    }
    return shown;
}

QString quotedBytes(const QByteArray& bytes)
{
    return u'"' + escapedBytes(bytes) + u'"';
}

} // namespace orvantine::fake
