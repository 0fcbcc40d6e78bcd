#include "desktop/tags/TrackLayout.h"

#include "desktop/tags/Id3v1.h"

#include <apefooter.h>
#include <id3v2header.h>

#include <algorithm>
#include <array>

namespace orvantine {
namespace {

constexpr qint64 id3v2HeadSize = 10;
constexpr qint64 apeFooterSize = 32;

QByteArrayView latin(const char* text)
{
    return QByteArrayView(text);
}

TagLib::ByteVector toTagLib(QByteArrayView bytes)
{
    return {bytes.data(), static_cast<unsigned>(bytes.size())};
}

/// Size of the leading tag with its head; 0 if `head` is none or its size is no such number.
qint64 id3v2Size(QByteArrayView head)
{
    const auto isSizeByte = [](char byte) { return static_cast<unsigned char>(byte) < 0x80; };
    if (head[3] == '\xff' || head[4] == '\xff' || !std::all_of(head.cbegin() + 6, head.cend(), isSizeByte))
        return 0;
    return TagLib::ID3v2::Header(toTagLib(head)).completeTagSize();
}

void findLeadingTags(ByteWindow& window, TrackLayout& layout)
{
    for (;;) {
        const QByteArrayView head = window.at(layout.soundBegin, id3v2HeadSize);
        if (!head.startsWith(latin("ID3")))
            return;
        const qint64 size = id3v2Size(head);
        if (size == 0 || layout.soundBegin + size > window.size()) {
            layout.brokenId3v2 = true;
            return;
        }
        layout.soundBegin += size;
    }
}

bool isForeign(QByteArrayView head)
{
    static const std::array marks{
        QByteArrayLiteral("RIFF"),
        QByteArrayLiteral("RIFX"),
        QByteArrayLiteral("RF64"),
        QByteArrayLiteral("FORM"),
        QByteArrayLiteral("OggS"),
        QByteArrayLiteral("fLaC"),
        QByteArrayLiteral("MAC "),
        QByteArrayLiteral("wvPK"),
        QByteArrayLiteral("MPCK"),
        QByteArrayLiteral("\x30\x26\xb2\x75\x8e\x66\xcf\x11"),
        QByteArrayLiteral("\x1a\x45\xdf\xa3"),
    };
    const bool marked = std::any_of(marks.begin(), marks.end(),
                                    [head](const QByteArray& mark) { return head.startsWith(QByteArrayView(mark)); });
    return marked || (head.size() >= 8 && head.sliced(4, 4) == latin("ftyp"));
}

/// An APE tag without a version 1 tag behind it can have "TAG" at the very place: the end of its head's "APETAGEX".
bool isHeadOfApeTag(ByteWindow& tail)
{
    constexpr qint64 smallTag = id3v1Size + 3;
    const qint64 size = tail.size();
    if (tail.at(size - smallTag, 8) != latin("APETAGEX"))
        return false;
    const QByteArrayView end = tail.at(size - apeFooterSize, apeFooterSize);
    if (!end.startsWith(latin("APETAGEX")))
        return false;
    const TagLib::APE::Footer footer(toTagLib(end));
    return footer.headerPresent() && !footer.isHeader() && footer.tagSize() == smallTag - apeFooterSize;
}

/// Size of the APE tag that ends at `end`; 0 for none.
qint64 apeSize(ByteWindow& tail, qint64 end)
{
    const QByteArrayView bytes = tail.at(end - apeFooterSize, apeFooterSize);
    if (!bytes.startsWith(latin("APETAGEX")))
        return 0;
    const TagLib::APE::Footer footer(toTagLib(bytes));
    const qint64 size = footer.tagSize();
    if (footer.isHeader() || size < apeFooterSize)
        return 0;
    return size + (footer.headerPresent() ? apeFooterSize : 0);
}

/// Size of the Lyrics3 block of either version that ends at `end`; 0 for none.
qint64 lyricsSize(ByteWindow& tail, qint64 end)
{
    constexpr qint64 markSize = 9;
    constexpr qint64 digits = 6;
    constexpr qint64 longestVersion1 = 5100 + 11 + markSize;
    const QByteArray mark = tail.at(end - markSize, markSize).toByteArray();

    if (mark == "LYRICS200") {
        bool isNumber = false;
        const int length = tail.at(end - markSize - digits, digits).toByteArray().toInt(&isNumber);
        const qint64 size = length + digits + markSize;
        const bool begins = isNumber && length >= 0 && tail.at(end - size, 11) == latin("LYRICSBEGIN");
        return begins ? size : 0;
    }
    if (mark == "LYRICSEND") {
        const qint64 from = std::max(qint64{0}, end - longestVersion1);
        const qsizetype begin = tail.at(from, end - from).toByteArray().lastIndexOf("LYRICSBEGIN");
        return begin < 0 ? 0 : end - from - begin;
    }
    return 0;
}

/// Size of the tag of version 2 with its head and footer that ends at `end`; 0 for none.
qint64 appendedId3v2Size(ByteWindow& tail, qint64 end)
{
    constexpr qint64 markSize = 3;
    constexpr char hasFooter = '\x10';
    const QByteArray footer = tail.at(end - id3v2HeadSize, id3v2HeadSize).toByteArray();
    if (!footer.startsWith("3DI") || (footer[5] & hasFooter) == 0)
        return 0;
    // The mark apart, a footer is a copy of the head.
    const QByteArray head = "ID3" + footer.sliced(markSize);
    const qint64 size = id3v2Size(head);
    return size > 0 && tail.at(end - size, id3v2HeadSize) == QByteArrayView(head) ? size : 0;
}

void findTrailingTags(const ByteSource& source, TrackLayout& layout)
{
    constexpr qint64 block = 512;
    constexpr qint64 enhancedSize = 227;
    const qint64 size = source.size();
    ByteWindow tail(source, block);
    const qint64 begin = std::max(qint64{0}, size - block);
    if (tail.at(begin, size - begin).isEmpty())
        return;

    layout.hasId3v1 = tail.at(size - id3v1Size, id3v1Size).startsWith(latin("TAG")) && !isHeadOfApeTag(tail);
    if (layout.hasId3v1)
        layout.id3v1 = tail.at(size - id3v1Size, id3v1Size).toByteArray();
    qint64 end = layout.hasId3v1 ? size - id3v1Size : size;
    if (layout.hasId3v1 && tail.at(end - enhancedSize, 4) == latin("TAG+"))
        end -= enhancedSize;
    for (qint64 length = 1; length > 0;) {
        length = apeSize(tail, end);
        if (length == 0)
            length = lyricsSize(tail, end);
        const qint64 appended = length == 0 ? appendedId3v2Size(tail, end) : 0;
        length += appended;
        if (end - length < layout.soundBegin)
            break;
        if (appended > 0)
            layout.appendedId3v2.push_back({.begin = end - appended, .end = end});
        end -= length;
    }
    layout.soundEnd = std::max(end, layout.soundBegin);
}

} // namespace

TrackLayout trackLayout(ByteWindow& head)
{
    constexpr qint64 longestMark = 8;
    TrackLayout layout;
    findLeadingTags(head, layout);
    layout.foreign = isForeign(head.at(layout.soundBegin, std::min(longestMark, head.size() - layout.soundBegin)));
    findTrailingTags(head.source(), layout);
    return layout;
}

TrackLayout trackLayout(const ByteSource& source)
{
    ByteWindow head(source);
    return trackLayout(head);
}

} // namespace orvantine
