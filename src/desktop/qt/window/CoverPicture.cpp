#include "desktop/qt/window/CoverPicture.h"

#include <QBuffer>
#include <QImageReader>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Larger pictures are read smaller. Enough for the panel at four times its size.
constexpr int LargestSide = 800;
constexpr int AllocationLimitMegabytes = 256;
/// More than any camera of today takes. A JPEG is made smaller while it is decoded; what else is so large stops at the
/// allocation limit.
constexpr qint64 MostPixels = 110'000'000;
/// A progressive JPEG goes over all its pixels with each scan.
constexpr qint64 MostScannedPixels = 20 * MostPixels;

/// How many scans the bytes of a JPEG could hold at the most: inside the data of a scan, FF is always followed by 00.
qint64 scansOf(const QByteArray& bytes)
{
    constexpr QByteArrayView StartOfScan("\xFF\xDA");
    qint64 scans = 0;
    for (qsizetype at = bytes.indexOf(StartOfScan); at >= 0; at = bytes.indexOf(StartOfScan, at + 2))
        ++scans;
    return scans;
}

bool isReasonable(QSize size, const QByteArray& format, const QByteArray& bytes)
{
    const qint64 pixels = qint64{size.width()} * size.height();
    if (size.isEmpty() || pixels > MostPixels)
        return false;
    return format != "jpeg" || pixels * scansOf(bytes) <= MostScannedPixels;
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
