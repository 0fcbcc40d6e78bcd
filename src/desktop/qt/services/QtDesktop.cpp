#include "desktop/qt/services/QtDesktop.h"

#include "desktop/qt/widgets/FileUris.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QMimeData>
#include <QScreen>

namespace orvantine {

QString QtClipboard::text() const
{
    return QGuiApplication::clipboard()->text();
}

QStringList QtClipboard::files() const
{
    const QMimeData* const content = QGuiApplication::clipboard()->mimeData();
    return content == nullptr ? QStringList() : copiedPaths(*content);
}

void QtClipboard::setText(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
}

std::vector<DesktopScreen> QtScreen::screens() const
{
    const auto areaOf = [](const QRect& pixels) {
        return ScreenArea{twipsOf(pixels.x()), twipsOf(pixels.y()), twipsOf(pixels.width()), twipsOf(pixels.height())};
    };
    std::vector<DesktopScreen> all;
    const QList<QScreen*> screens = QGuiApplication::screens();
    for (const QScreen* screen : screens)
        all.push_back({areaOf(screen->geometry()), areaOf(screen->availableGeometry())});
    return all;
}

bool QtFonts::known(const QString& family) const
{
    return m_provided.contains(family.toCaseFolded()) || QFontDatabase::hasFamily(family);
}

bool QtFonts::registerFont(const QString& path)
{
    return QFontDatabase::addApplicationFont(path) >= 0;
}

bool QtFonts::provide(const QString& family, const QString& path)
{
    const QStringList families = QFontDatabase::applicationFontFamilies(QFontDatabase::addApplicationFont(path));
    if (families.isEmpty())
        return false;
    QFont::insertSubstitution(family, families.constFirst());
    m_provided.insert(family.toCaseFolded());
    return true;
}

} // namespace orvantine
