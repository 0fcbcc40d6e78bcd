#include "desktop/qt/widgets/CoverPicture.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Larger pictures are read smaller. Enough for the panel at four times its size.
constexpr int LargestSide = 800;
constexpr int AllocationLimitMegabytes = 256;
/// More than any camera of today takes: a JPEG is made smaller while it is decoded line by line.
constexpr qint64 MostPixels = 110'000'000;
/// Each scan is gone over, if there are more of them than the head tells of.
constexpr qint64 MostScannedPixels = 20 * MostPixels;
/// Other pictures are decoded whole, at up to four bytes a pixel.
constexpr qint64 MostPixelsAtOnce = 40'000'000;
/// A JPEG of several scans keeps two bytes for each of its samples, and goes over all of them with each scan.
constexpr qint64 MostKeptSamples = 100'000'000;
constexpr qint64 MostScannedSamples = 1'000'000'000;

/// How many scans the bytes of a JPEG could hold at the most: inside the data of a scan, FF is always followed by 00.
qint64 scansOf(const QByteArray& bytes)
{
    constexpr QByteArrayView StartOfScan("\xFF\xDA");
    qint64 scans = 0;
    for (qsizetype at = bytes.indexOf(StartOfScan); at >= 0; at = bytes.indexOf(StartOfScan, at + 2))
        ++scans;
    return scans;
}

/// What the head of a JPEG tells of the way it is decoded.
struct JpegHead
{
    int components = 0;
    bool progressive = false;
    /// Each scan has but some of the components.
    bool parted = false;
};

JpegHead jpegHead(const QByteArray& bytes)
{
    const auto at = [&bytes](qsizetype i) { return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U; };
    JpegHead head;
    for (qsizetype i = 2; i + 4 < bytes.size();) {
        const unsigned marker = at(i + 1);
        if (at(i) != 0xFF || marker == 0xFF) {
            ++i;
            continue;
        }
        const bool isFrame = marker >= 0xC0 && marker <= 0xCF && marker != 0xC4 && marker != 0xC8 && marker != 0xCC;
        if (isFrame) {
            head.components = static_cast<int>(at(i + 9));
            head.progressive = (marker & 3U) == 2;
        } else if (marker == 0xDA) {
            head.parted = static_cast<int>(at(i + 4)) < head.components;
            break;
        }
        i += 2 + static_cast<qsizetype>(at(i + 2) * 256 + at(i + 3));
    }
    return head;
}

bool isReasonable(QSize size, const QByteArray& format, const QByteArray& bytes)
{
    const qint64 pixels = qint64{size.width()} * size.height();
    if (size.isEmpty())
        return false;
    if (format != "jpeg")
        return pixels <= MostPixelsAtOnce;
    const JpegHead head = jpegHead(bytes);
    const qint64 samples = pixels * std::max(1, head.components);
    if (pixels > MostPixels || pixels * scansOf(bytes) > MostScannedPixels)
        return false;
    return (!head.progressive && !head.parted) ||
           (samples <= MostKeptSamples && samples * scansOf(bytes) <= MostScannedSamples);
}

} // namespace

QImage coverPicture(const QByteArray& bytes)
{
    QImageReader::setAllocationLimit(AllocationLimitMegabytes);
    QBuffer buffer;
    buffer.setData(bytes);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QByteArray format = reader.format();
    if (format != "jpeg" && format != "gif" && format != "bmp" && format != "png")
        return {};

    const QSize size = reader.size();
    if (!isReasonable(size, format, bytes))
        return {};
    reader.setAutoTransform(true);
    if (size.width() > LargestSide || size.height() > LargestSide)
        reader.setScaledSize(size.scaled(LargestSide, LargestSide, Qt::KeepAspectRatio).expandedTo({1, 1}));
    return reader.read();
}

} // namespace orvantine
