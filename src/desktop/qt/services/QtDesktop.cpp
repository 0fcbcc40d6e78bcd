#include "desktop/qt/services/QtDesktop.h"

#include "desktop/qt/widgets/Emblem.h"
#include "desktop/qt/widgets/FileUris.h"

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QMimeData>
#include <QScreen>
#include <QSystemTrayIcon>

namespace orvantine {

namespace {

constexpr int LeftButtonDown = 0x201 * TwipsPerPixel;
constexpr int RightButtonDown = 0x204 * TwipsPerPixel;

} // namespace

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

ScreenSize QtScreen::size() const
{
    const QScreen* const screen = QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return {};
    return {twipsOf(screen->size().width()), twipsOf(screen->size().height())};
}

bool QtFonts::known(const QString& family) const
{
    return QFontDatabase::hasFamily(family);
}

bool QtFonts::registerFont(const QString& path)
{
    return QFontDatabase::addApplicationFont(path) >= 0;
}

std::optional<int> trayCode(QSystemTrayIcon::ActivationReason reason)
{
    switch (reason) {
    case QSystemTrayIcon::Trigger:
        return LeftButtonDown;
    case QSystemTrayIcon::Context:
        return RightButtonDown;
    case QSystemTrayIcon::DoubleClick: // its first click has called back
    case QSystemTrayIcon::MiddleClick:
    case QSystemTrayIcon::Unknown:
        break;
    }
    return std::nullopt;
}

QtTray::QtTray() = default;

QtTray::~QtTray() = default;

bool QtTray::add(const QString& tip)
{
    if (!available())
        return false;
    if (!m_icon) {
        m_icon = std::make_unique<QSystemTrayIcon>(emblemIcon());
        QObject::connect(m_icon.get(), &QSystemTrayIcon::activated, m_icon.get(),
                         [this](QSystemTrayIcon::ActivationReason reason) {
                             if (const std::optional<int> code = trayCode(reason))
                                 Callback(*code);
                         });
    }
    m_icon->setToolTip(tip);
    m_icon->show();
    return true;
}

void QtTray::remove()
{
    if (m_icon)
        m_icon->hide();
}

bool QtTray::available() const
{
    return QSystemTrayIcon::isSystemTrayAvailable();
}

} // namespace orvantine
