#include "desktop/qt/widgets/Theme.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QPalette paletteOf(const QColor& ground, const QColor& text)
{
    QPalette palette(ground, ground);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, text);
    palette.setColor(QPalette::HighlightedText, QColor(0x12, 0x34, 0x56));
    return palette;
}

QPalette light()
{
    return paletteOf(QColor(0xEF, 0xF0, 0xF1), QColor(0x23, 0x26, 0x29));
}

QPalette dark()
{
    return paletteOf(QColor(0x2A, 0x2E, 0x32), QColor(0xFC, 0xFC, 0xFC));
}

/// What an icon leaves on a ground of nothing: how much, and in what colour on the average.
struct Ink
{
    double amount = 0;
    QColor color;
};

Ink inkOf(const QIcon& icon, QIcon::Mode mode = QIcon::Normal)
{
    QImage picture(64, 64, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    icon.paint(&painter, picture.rect(), Qt::AlignCenter, mode);
    painter.end();
    double amount = 0;
    double parts[3] = {};
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x) {
            const QColor pixel = picture.pixelColor(x, y);
            amount += pixel.alphaF();
            parts[0] += pixel.redF() * pixel.alphaF();
            parts[1] += pixel.greenF() * pixel.alphaF();
            parts[2] += pixel.blueF() * pixel.alphaF();
        }
    if (amount <= 0)
        return {};
    return {amount, QColor::fromRgbF(static_cast<float>(parts[0] / amount), static_cast<float>(parts[1] / amount),
                                     static_cast<float>(parts[2] / amount))};
}

/// The icon set is the one that is installed, or none at all.
class Icons : public testing::TestWithParam<bool>
{
protected:
    Icons()
    {
        if (!GetParam())
            return;
        QIcon::setThemeSearchPaths({});
        QIcon::setFallbackSearchPaths({});
        QIcon::setThemeName(u"none"_s);
        QIcon::setFallbackThemeName(u"none"_s);
    }
    ~Icons() override
    {
        QApplication::setPalette(m_palette);
        QIcon::setThemeSearchPaths(m_paths);
        Theme::setUpIcons();
    }

    void use(const QPalette& palette)
    {
        QApplication::setPalette(palette);
        if (!GetParam())
            Theme::setUpIcons();
    }

    const QStringList names{u"media-playback-start"_s,
                            u"media-playback-pause"_s,
                            u"media-playback-stop"_s,
                            u"media-skip-forward"_s,
                            u"media-skip-backward"_s,
                            u"document-edit"_s,
                            u"view-media-playlist"_s,
                            u"view-media-track"_s,
                            u"go-up"_s,
                            u"go-down"_s};

private:
    const QPalette m_palette = QApplication::palette();
    const QStringList m_paths = QIcon::themeSearchPaths();
};

TEST_P(Icons, AreSeenOnEachGroundAlsoWhenItChangesBehindThem)
{
    use(light());
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const QIcon icon = Theme::icon(name);
        use(light());
        const Ink first = inkOf(icon);
        EXPECT_GT(first.amount, 40);
        EXPECT_LT(first.color.lightness(), 200);
        use(dark());
        EXPECT_GT(inkOf(icon).color.lightness(), first.color.lightness());
        use(light());
        EXPECT_EQ(inkOf(icon).color, first.color);
    }
}

TEST_P(Icons, OfWhatCannotBeUsedAreFaint)
{
    use(light());
    for (const QString& name : names) {
        SCOPED_TRACE(name.toStdString());
        const QIcon icon = Theme::icon(name);
        EXPECT_NEAR(inkOf(icon, QIcon::Disabled).amount / inkOf(icon).amount, 0.35, 0.03);
    }
}

TEST_P(Icons, OnAHighlightedRowHaveTheColourOfItsText)
{
    use(light());
    for (const QIcon::Mode mode : {QIcon::Active, QIcon::Selected}) {
        const Ink ink = inkOf(Theme::icon(u"media-playback-start"_s), mode);
        EXPECT_NEAR(ink.color.red(), 0x12, 3);
        EXPECT_NEAR(ink.color.green(), 0x34, 3);
        EXPECT_NEAR(ink.color.blue(), 0x56, 3);
    }
}

std::string nameOf(const testing::TestParamInfo<bool>& set)
{
    return set.param ? "WithoutASet" : "Installed";
}

INSTANTIATE_TEST_SUITE_P(Sets, Icons, testing::Values(false, true), nameOf);

TEST(IconsOfNoUse, AreNullWhereNoSetHasThem)
{
    EXPECT_TRUE(Theme::icon(u"no-such-icon-anywhere"_s).isNull());
    EXPECT_TRUE(Theme::icon(QString()).isNull());
}

} // namespace

} // namespace orvantine
