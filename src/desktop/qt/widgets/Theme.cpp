#include "desktop/qt/widgets/Theme.h"

#include "desktop/qt/widgets/DrawnIcons.h"

#include <QGuiApplication>
#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QStandardPaths>

#include <utility>

namespace orvantine::Theme {

using namespace Qt::StringLiterals;

namespace {

/// How much is left of an icon of what cannot be used.
constexpr double DisabledStrength = 0.35;

/// Looks its picture up each time it is drawn: palette and icon set may be others by then.
class LazyIcon final : public QIconEngine
{
public:
    explicit LazyIcon(QString name) : m_name(std::move(name)) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override
    {
        const double scale = painter->device() != nullptr ? painter->device()->devicePixelRatioF() : 1.0;
        painter->drawPixmap(rect, drawn(rect.size(), scale, mode));
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override { return drawn(size, 1.0, mode); }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State, qreal scale) override
    {
        return drawn((QSizeF(size) / scale).toSize(), scale, mode);
    }
    [[nodiscard]] QIconEngine* clone() const override { return new LazyIcon(m_name); }
    QString iconName() override { return m_name; }
    bool isNull() override { return QIcon::fromTheme(m_name).isNull() && drawnIcon(m_name).isEmpty(); }

private:
    [[nodiscard]] QPixmap drawn(const QSize& size, double scale, QIcon::Mode mode) const
    {
        QPixmap picture((QSizeF(size) * scale).toSize());
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRect area(QPoint(), size);
        if (mode == QIcon::Disabled)
            painter.setOpacity(DisabledStrength);
        drawPlain(painter, area);
        if (mode == QIcon::Active || mode == QIcon::Selected) {
            // The icons of the set are made for the ground of a window, not for that of a highlighted row.
            painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
            painter.fillRect(area, QGuiApplication::palette().color(QPalette::Active, QPalette::HighlightedText));
        }
        return picture;
    }
    void drawPlain(QPainter& painter, const QRect& area) const
    {
        const QIcon installed = QIcon::fromTheme(m_name);
        if (!installed.isNull()) {
            installed.paint(&painter, area);
            return;
        }
        painter.save();
        painter.scale(area.width() / 16.0, area.height() / 16.0);
        painter.fillPath(drawnIcon(m_name), QGuiApplication::palette().color(QPalette::Active, QPalette::WindowText));
        painter.restore();
    }

    QString m_name;
};

} // namespace

bool isDark(const QPalette& palette)
{
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

void setUpIcons()
{
    // Desktops name the folders of their icon sets; on a bare one nobody does.
    QStringList folders = QIcon::themeSearchPaths();
    const QStringList installed =
        QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, u"icons"_s, QStandardPaths::LocateDirectory);
    for (const QString& folder : installed)
        if (!folders.contains(folder))
            folders.append(folder);
    QIcon::setThemeSearchPaths(folders);

    const QString variant = isDark(QGuiApplication::palette()) ? u"breeze-dark"_s : u"breeze"_s;
    QIcon::setFallbackThemeName(variant);
    if (QIcon::themeName() != variant)
        QIcon::setThemeName(variant);
}

QIcon icon(const QString& name)
{
    return QIcon(new LazyIcon(name));
}

QIcon listIcon(const QString& pictureName)
{
    static const QHash<QString, QString> names{{u"Icon_1"_s, u"view-media-playlist"_s},
                                               {u"Icon_2"_s, u"view-media-track"_s},
                                               {u"Icon_6"_s, u"emblem-favorite"_s},
                                               {u"Icon_C"_s, u"media-playback-start"_s}};
    const auto found = names.constFind(pictureName);
    return found == names.cend() ? QIcon() : icon(*found);
}

QColor textColor(Color color, const QPalette& palette)
{
    if (color == Color::ButtonText)
        return palette.color(QPalette::Text);
    const auto bgr = static_cast<quint32>(color);
    const QColor told(static_cast<int>(bgr & 0xFF), static_cast<int>(bgr >> 8 & 0xFF),
                      static_cast<int>(bgr >> 16 & 0xFF));
    if (!isDark(palette))
        return told;
    return QColor::fromHslF(told.hslHueF(), 1.0F, 0.74F);
}

QColor mix(const QColor& from, const QColor& to, double amount)
{
    const auto part = [amount](int a, int b) { return qRound(a + (b - a) * amount); };
    return {part(from.red(), to.red()), part(from.green(), to.green()), part(from.blue(), to.blue())};
}

QColor lineColor(const QPalette& palette)
{
    return mix(palette.color(QPalette::Base), palette.color(QPalette::Text), isDark(palette) ? 0.16 : 0.12);
}

QColor dimText(const QPalette& palette)
{
    return mix(palette.color(QPalette::WindowText), palette.color(QPalette::Window), 0.35);
}

} // namespace orvantine::Theme
