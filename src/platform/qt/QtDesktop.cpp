#include "platform/qt/QtDesktop.h"

#include "platform/qt/Emblem.h"
#include "platform/qt/FileUris.h"

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
    return content == nullptr ? QStringList() : localPaths(*content);
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
                             if (reason == QSystemTrayIcon::Trigger)
                                 Callback(LeftButtonDown);
                             else if (reason == QSystemTrayIcon::Context)
                                 Callback(RightButtonDown);
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
