#include "desktop/qt/window/CoverView.h"

#include "desktop/qt/widgets/CoverPicture.h"
#include "support/FakeDesktop.h"

#include <QApplication>
#include <QBuffer>
#include <QImageWriter>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int Side = 104;

QImage plain(QSize size, Qt::GlobalColor color)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QByteArray encoded(const QImage& image, const char* format)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    EXPECT_TRUE(image.save(&buffer, format)) << format;
    return bytes;
}

/// A GIF of one-coloured frames: two bits a pixel, four colours (black, red, green, blue).
QByteArray gif(QSize size, const QList<int>& frames)
{
    const auto word = [](int value) {
        return QByteArray(1, static_cast<char>(value & 0xFF)) + static_cast<char>(value >> 8);
    };
    QByteArray bytes("GIF89a");
    bytes += word(size.width()) + word(size.height()) + QByteArray("\x91\x00\x00", 3);
    bytes += QByteArray("\x00\x00\x00\xFF\x00\x00\x00\xFF\x00\x00\x00\xFF", 12);
    bytes += QByteArray("\x21\xFF\x0BNETSCAPE2.0\x03\x01\x00\x00\x00", 19);
    for (const int color : frames) {
        bytes += QByteArray("\x21\xF9\x04\x04\x0A\x00\x00\x00", 8);
        bytes += ',' + word(0) + word(0) + word(size.width()) + word(size.height()) + QByteArray(1, '\0');
        // Each pixel as a code of its own of three bits, the table cleared before it can grow.
        QByteArray data;
        int bits = 0;
        int filled = 0;
        const auto put = [&](int code) {
            bits |= code << filled;
            for (filled += 3; filled >= 8; filled -= 8) {
                data += static_cast<char>(bits & 0xFF);
                bits >>= 8;
            }
        };
        constexpr int Clear = 4;
        constexpr int End = 5;
        for (int pixel = 0; pixel < size.width() * size.height(); ++pixel) {
            if (pixel % 2 == 0)
                put(Clear);
            put(color);
        }
        put(End);
        data += static_cast<char>(bits);
        bytes += '\x02';
        for (qsizetype at = 0; at < data.size(); at += 255)
            bytes += static_cast<char>(std::min<qsizetype>(255, data.size() - at)) + data.mid(at, 255);
        bytes += '\0';
    }
    return bytes + ';';
}

/// The head of a BMP that claims a size.
QByteArray bmpOfSize(int width, int height)
{
    QByteArray bytes = encoded(plain({2, 2}, Qt::red), "bmp");
    for (int i = 0; i < 4; ++i) {
        bytes[18 + i] = static_cast<char>(width >> (8 * i));
        bytes[22 + i] = static_cast<char>(height >> (8 * i));
    }
    return bytes;
}

/// A JPEG whose head claims a size.
QByteArray jpegOfSize(int width, int height)
{
    QByteArray bytes = encoded(plain({16, 16}, Qt::red), "jpg");
    const qsizetype head = bytes.indexOf("\xFF\xC0");
    EXPECT_GT(head, 0);
    bytes[head + 5] = static_cast<char>(height >> 8);
    bytes[head + 6] = static_cast<char>(height);
    bytes[head + 7] = static_cast<char>(width >> 8);
    bytes[head + 8] = static_cast<char>(width);
    return bytes;
}

/// The told kinds of pictures, and what no picture is.
TEST(CoverPicture, KnowsJpegGifAndBmpByTheirContent)
{
    for (const char* format : {"jpg", "bmp", "png"})
        EXPECT_EQ(QSize(40, 20), coverPicture(encoded(plain({40, 20}, Qt::blue), format)).size()) << format;
    EXPECT_EQ(QSize(40, 20), coverPicture(gif({40, 20}, {1})).size());
}

TEST(CoverPicture, AMovingPictureGivesItsFirstFrame)
{
    const QImage picture = coverPicture(gif({8, 6}, {2, 1, 3}));
    ASSERT_EQ(QSize(8, 6), picture.size());
    EXPECT_EQ(QColor(0, 255, 0), picture.pixelColor(3, 3));
}

TEST(CoverPicture, IsNullForWhatIsNoPictureOrABrokenOne)
{
    const QByteArray jpeg = encoded(plain({40, 20}, Qt::blue), "jpg");
    for (const QByteArray& bytes :
         {QByteArray(), QByteArray("kein Bild"), QByteArray("\xFF\xD8\xFF"), QByteArray("GIF89a"), QByteArray("BM"),
          QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>"),
          QByteArray("/* XPM */ static char*x[]={\"1 1 1 1\",\"a c red\",\"a\"};"), jpeg.left(30)})
        EXPECT_TRUE(coverPicture(bytes).isNull()) << bytes.left(20).toStdString();
}

TEST(CoverPicture, ALargePictureIsReadSmallerWithItsAspect)
{
    const QImage wide = coverPicture(encoded(plain({3000, 1500}, Qt::blue), "jpg"));
    EXPECT_EQ(QSize(800, 400), wide.size());
    const QImage tall = coverPicture(encoded(plain({1000, 2000}, Qt::blue), "bmp"));
    EXPECT_EQ(QSize(400, 800), tall.size());
}

TEST(CoverPicture, AThinLineKeepsAPixelOfItsWidth)
{
    EXPECT_EQ(QSize(800, 1), coverPicture(encoded(plain({9000, 2}, Qt::blue), "bmp")).size());
}

TEST(CoverPicture, ALargePhotographIsRead)
{
    EXPECT_EQ(QSize(800, 600), coverPicture(encoded(plain({4000, 3000}, Qt::blue), "bmp")).size());
    EXPECT_EQ(QSize(800, 640), coverPicture(encoded(plain({10000, 8000}, Qt::blue), "jpg")).size());
}

TEST(CoverPicture, AProgressivePhotographOfTwentyFourMegapixelsIsRead)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    ASSERT_TRUE(writer.write(plain({6000, 4000}, Qt::blue)));
    ASSERT_GE(bytes.count("\xFF\xDA"), 10);
    const QImage picture = coverPicture(bytes);
    EXPECT_EQ(QSize(800, 533), picture.size());
    EXPECT_GT(picture.pixelColor(400, 200).blue(), 240);
}

TEST(CoverPicture, AClaimedSizeBeyondReasonIsRefusedAtOnce)
{
    EXPECT_TRUE(coverPicture(jpegOfSize(65500, 65500)).isNull());
    EXPECT_TRUE(coverPicture(bmpOfSize(30000, 30000)).isNull());
    EXPECT_TRUE(coverPicture(bmpOfSize(0x7FFFFFFF, 0x7FFFFFFF)).isNull());
    EXPECT_TRUE(coverPicture(bmpOfSize(-5, 3)).isNull());
    QByteArray huge = gif({4, 4}, {1});
    for (int at : {6, 7, 8, 9})
        huge[at] = '\xFF';
    for (const qsizetype at :
         {huge.indexOf(',') + 5, huge.indexOf(',') + 6, huge.indexOf(',') + 7, huge.indexOf(',') + 8})
        huge[at] = '\xFF';
    EXPECT_TRUE(coverPicture(huge).isNull());
}

TEST(CoverPicture, AJpegOfCountlessScansIsRefused)
{
    QByteArray bytes = jpegOfSize(6000, 6000);
    for (int scan = 0; scan < 4000; ++scan)
        bytes += QByteArray("\xFF\xDA\x00\x08\x01\x01\x00\x00\x3F\x00", 10);
    EXPECT_TRUE(coverPicture(bytes).isNull());
}

/// It asks for two bytes for each of its samples, of 178 bytes of its own.
TEST(CoverPicture, AProgressiveJpegThatWantsHundredsOfMegabytesIsRefused)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "jpeg");
    writer.setProgressiveScanWrite(true);
    ASSERT_TRUE(writer.write(plain({40, 20}, Qt::blue)));
    const qsizetype head = bytes.indexOf(QByteArray("\xFF\xC2\x00\x11\x08", 5));
    ASSERT_GT(head, 0);
    bytes.replace(head + 5, 4, QByteArray("\x28\xA0\x28\xA0", 4));
    EXPECT_TRUE(coverPicture(bytes).isNull());
}

TEST(CoverPicture, EveryCutAndEveryFlippedByteOfAPictureIsSurvived)
{
    for (const QByteArray& whole :
         {encoded(plain({24, 16}, Qt::red), "jpg"), encoded(plain({6, 4}, Qt::red), "bmp"), gif({6, 4}, {1, 2})}) {
        for (qsizetype length = 0; length < whole.size(); length += 3)
            (void)coverPicture(whole.left(length));
        for (qsizetype at = 0; at < whole.size(); at += 2) {
            QByteArray flipped = whole;
            flipped[at] = static_cast<char>(flipped[at] ^ 0xFF);
            const QImage picture = coverPicture(flipped);
            EXPECT_LE(picture.width(), 800);
        }
    }
    SUCCEED();
}

/// The panel of the window over a fake desktop.
class CoverPanel : public testing::Test
{
protected:
    CoverPanel() { root.pCoverBack.Visible = true; }

    void show(const QByteArray& bytes)
    {
        const QString path = u"/bild%1"_s.arg(++number);
        desktop.memory()->put(path, bytes);
        root.pCovers.Picture = path;
    }

    /// What the panel looks like at a scale factor.
    [[nodiscard]] QImage drawn(double ratio = 1)
    {
        QImage image(QSize(Side, Side) * ratio, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::transparent);
        view.render(&image);
        return image;
    }

    fake::FakeDesktop desktop;
    Root& root = desktop.root();
    CoverView view{root, Side, nullptr};
    int number = 0;
};

TEST_F(CoverPanel, ASquarePictureFillsThePanel)
{
    show(encoded(plain({300, 300}, Qt::red), "bmp"));
    const QImage image = drawn();
    for (const QPoint& at : {QPoint(52, 4), QPoint(4, 52), QPoint(52, 52), QPoint(99, 52), QPoint(52, 99)})
        EXPECT_EQ(QColor(Qt::red), image.pixelColor(at)) << at.x() << ' ' << at.y();
}

TEST_F(CoverPanel, AWidePictureKeepsItsAspectAndStandsInTheMiddle)
{
    show(encoded(plain({400, 200}, Qt::red), "bmp"));
    const QImage image = drawn();
    EXPECT_EQ(QColor(Qt::red), image.pixelColor(52, 30));
    EXPECT_EQ(QColor(Qt::red), image.pixelColor(52, 74));
    EXPECT_NE(QColor(Qt::red), image.pixelColor(52, 20));
    EXPECT_NE(QColor(Qt::red), image.pixelColor(52, 84));
}

TEST_F(CoverPanel, AtEveryScaleFactorThePictureIsDrawnFromItsOwnPixels)
{
    // Columns about as wide as half a point of the panel: grey at its plain size, apart where it has more pixels.
    QImage stripes = plain({800, 800}, Qt::white);
    QPainter painter(&stripes);
    for (int x = 0; x < 800; x += 8)
        painter.fillRect(x, 0, 4, 800, Qt::black);
    painter.end();
    show(encoded(stripes, "bmp"));
    const auto contrast = [](const QImage& image) {
        int darkest = 255;
        int lightest = 0;
        for (int x = image.width() / 4; x < image.width() * 3 / 4; ++x) {
            const int grey = qGray(image.pixel(x, image.height() / 2));
            darkest = std::min(darkest, grey);
            lightest = std::max(lightest, grey);
        }
        return lightest - darkest;
    };
    const int single = contrast(drawn(1));
    const int twice = contrast(drawn(2));
    const int fourfold = contrast(drawn(4));
    EXPECT_LT(single, twice);
    EXPECT_LE(twice, fourfold);
    EXPECT_GT(fourfold, 150);
    EXPECT_EQ(single, contrast(drawn(1))) << "back on the other screen";
}

TEST_F(CoverPanel, ABrokenPictureLeavesThePaneEmptyAndShown)
{
    const QImage empty = drawn();
    show(encoded(plain({300, 300}, Qt::red), "bmp"));
    EXPECT_NE(empty, drawn());
    show("kaputt");
    EXPECT_EQ(empty, drawn());
    EXPECT_FALSE(view.isHidden());
    root.pCovers.Picture = u"/fehlt"_s;
    EXPECT_EQ(empty, drawn());
}

TEST_F(CoverPanel, ATooLargeFileIsNotEvenRead)
{
    desktop.memory()->put(u"/gross"_s, QByteArray(LargestCoverFile + 1, 'x'));
    desktop.log.take();
    root.pCovers.Picture = u"/gross"_s;
    EXPECT_TRUE(desktop.log.linesOf({u"files.readBytes"_s}).isEmpty());
}

TEST_F(CoverPanel, TheKeyboardChoosesAndDeletes)
{
    QStringList calls;
    root.pCovers.Click = [&calls] { calls += u"click"_s; };
    root.pCovers.MouseDown = [&calls](MouseButton button) {
        calls += button == MouseButton::Right ? u"right"_s : u"left"_s;
    };
    QTest::keyClick(&view, Qt::Key_Space);
    QTest::keyClick(&view, Qt::Key_Delete);
    EXPECT_EQ("click right", calls.join(u' ').toStdString());
}

TEST_F(CoverPanel, AScreenReaderHearsWhetherThereIsAPicture)
{
    EXPECT_EQ(u"CD-Cover"_s, view.accessibleName());
    EXPECT_EQ(u"Kein Bild"_s, view.accessibleDescription());
    show(encoded(plain({3, 3}, Qt::red), "bmp"));
    EXPECT_EQ(u"Bild der Playliste"_s, view.accessibleDescription());
}

} // namespace

} // namespace orvantine
