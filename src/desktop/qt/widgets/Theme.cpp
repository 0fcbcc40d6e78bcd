#include "desktop/qt/widgets/Theme.h"

#include <QGuiApplication>
#include <QHash>
#include <QStandardPaths>

namespace orvantine::Theme {

using namespace Qt::StringLiterals;

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
    return QIcon::fromTheme(name);
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
