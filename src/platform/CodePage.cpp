#include "platform/CodePage.h"

#include <QUtf8StringView>

#include <algorithm>
#include <array>
#include <cstring>

namespace orvantine {
namespace {

constexpr std::array<char16_t, 32> upperControls = {
    0x20ac, 0x0081, 0x201a, 0x0192, 0x201e, 0x2026, 0x2020, 0x2021, 0x02c6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008d, 0x017d, 0x008f, 0x0090, 0x2018, 0x2019, 0x201c, 0x201d, 0x2022,
    0x2013, 0x2014, 0x02dc, 0x2122, 0x0161, 0x203a, 0x0153, 0x009d, 0x017e, 0x0178,
};

char byteOf(char16_t unit)
{
    if (unit < 0x80 || (unit >= 0xa0 && unit <= 0xff))
        return static_cast<char>(unit);
    for (std::size_t i = 0; i < upperControls.size(); ++i) {
        if (upperControls[i] == unit)
            return static_cast<char>(0x80 + i);
    }
    return '?';
}

bool hasUpperHalf(QByteArrayView bytes)
{
    constexpr quint64 upperBits = 0x8080808080808080;
    qsizetype i = 0;
    for (; i + 8 <= bytes.size(); i += 8) {
        quint64 word = 0;
        std::memcpy(&word, bytes.data() + i, sizeof word);
        if ((word & upperBits) != 0)
            return true;
    }
    return std::any_of(bytes.cbegin() + i, bytes.cend(), [](char byte) { return (byte & 0x80) != 0; });
}

bool isValidUtf8(QByteArrayView bytes)
{
    return QUtf8StringView(bytes.data(), bytes.size()).isValidUtf8();
}

} // namespace

QString CodePage::decode(const QByteArray& bytes) const
{
    QByteArrayView view(bytes);
    if (view.startsWith("\xef\xbb\xbf"))
        view = view.sliced(3);
    if (isValidUtf8(view))
        return QString::fromUtf8(view);
    QString text;
    text.reserve(view.size());
    while (!view.isEmpty()) {
        const auto end = std::find_if(view.begin(), view.end(), [](char byte) { return byte == '\r' || byte == '\n'; });
        const QByteArrayView line = view.first(end == view.end() ? view.size() : end - view.begin() + 1);
        view = view.sliced(line.size());
        text += isValidUtf8(line) ? QString::fromUtf8(line) : fromWindows1252(line);
    }
    return text;
}

QByteArray CodePage::encode(const QString& text) const
{
    return m_kind == Utf8 ? text.toUtf8() : toWindows1252(text);
}

QString CodePage::fromWindows1252(QByteArrayView bytes)
{
    // Most texts are ASCII, and some records hold thousands of blanks: Qt's own conversion takes many at a time.
    if (!hasUpperHalf(bytes))
        return QString::fromLatin1(bytes);
    QString text(bytes.size(), Qt::Uninitialized);
    QChar* out = text.data();
    for (const char byte : bytes) {
        const auto value = static_cast<unsigned char>(byte);
        *out++ = QChar(value >= 0x80 && value < 0xa0 ? upperControls[value - 0x80U] : char16_t{value});
    }
    return text;
}

QByteArray CodePage::toWindows1252(QStringView text)
{
    QByteArray bytes = text.toLatin1();
    if (!bytes.contains('?') && !hasUpperHalf(bytes))
        return bytes;
    bytes.clear();
    bytes.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool pair = text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        bytes += byteOf(text[i].unicode());
        if (pair)
            ++i;
    }
    return bytes;
}

} // namespace orvantine
