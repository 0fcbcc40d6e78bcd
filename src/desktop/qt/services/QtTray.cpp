#include "desktop/qt/services/QtTray.h"

#include "desktop/qt/widgets/Emblem.h"
#include "desktop/qt/widgets/PlainTips.h"
#include "platform/Twips.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QGuiApplication>

#include <chrono>
#include <cstdint>
#include <cstdlib>

#include <xcb/xcb.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int LeftButtonDown = 0x201 * TwipsPerPixel;
constexpr int RightButtonDown = 0x204 * TwipsPerPixel;
constexpr std::chrono::seconds LookEvery{3};
/// Milliseconds: a tray that hangs holds up the window no longer.
constexpr int LongestAnswer = 500;

QString watcherName()
{
    return u"org.kde.StatusNotifierWatcher"_s;
}

/// A tray of the bus that shows its items somewhere.
bool busHasTray()
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected() || !bus.interface()->isServiceRegistered(watcherName()))
        return false;
    QDBusMessage ask = QDBusMessage::createMethodCall(watcherName(), u"/StatusNotifierWatcher"_s,
                                                      u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    ask << watcherName() << u"IsStatusNotifierHostRegistered"_s;
    const QDBusReply<QDBusVariant> shown = bus.call(ask, QDBus::Block, LongestAnswer);
    return shown.isValid() && shown.value().variant().toBool();
}

/// The toolkit would be quick to tell, but then never asks for a tray of the bus again.
bool displayHasTray()
{
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (x11 == nullptr)
        return false;
    xcb_connection_t* const display = x11->connection();
    char* host = nullptr;
    int number = 0;
    int screen = 0;
    const bool named = xcb_parse_display(nullptr, &host, &number, &screen) != 0;
    std::free(host);
    if (!named)
        return false;
    const QByteArray name = "_NET_SYSTEM_TRAY_S" + QByteArray::number(screen);
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(
            display, xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.constData()), nullptr),
        &std::free);
    if (!atom)
        return false;
    const std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> owner(
        xcb_get_selection_owner_reply(display, xcb_get_selection_owner(display, atom->atom), nullptr), &std::free);
    return owner && owner->owner != XCB_NONE;
}

} // namespace

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

QtTray::QtTray()
{
    m_look.setInterval(LookEvery);
    m_look.setTimerType(Qt::VeryCoarseTimer);
    QObject::connect(&m_look, &QTimer::timeout, &m_look, [this] { follow(); });
}

QtTray::~QtTray() = default;

bool QtTray::add(const QString& tip)
{
    m_tip = tip;
    if (!m_wanted) {
        m_wanted = true;
        m_watcher = std::make_unique<QDBusServiceWatcher>(watcherName(), QDBusConnection::sessionBus(),
                                                          QDBusServiceWatcher::WatchForOwnerChange);
        QObject::connect(m_watcher.get(), &QDBusServiceWatcher::serviceOwnerChanged, m_watcher.get(),
                         [this] { follow(); });
        m_look.start();
        m_area = area();
        make();
    } else if (m_icon) {
        showTip();
    }
    return stands();
}

void QtTray::remove()
{
    m_wanted = false;
    m_look.stop();
    m_watcher.reset();
    m_icon.reset();
    m_area = Area::None;
}

QtTray::Area QtTray::area()
{
    if (busHasTray())
        return Area::Bus;
    return displayHasTray() ? Area::Display : Area::None;
}

void QtTray::follow()
{
    if (!m_wanted)
        return;
    const bool stood = stands();
    const Area present = area();
    if (present != m_area) {
        m_area = present;
        make();
    }
    if (stands() != stood)
        Changed();
}

/// A tray of the display shows the tip as a widget would; one on the bus takes it as it stands.
void QtTray::showTip()
{
    m_icon->setToolTip(m_area == Area::Display ? plainTip(m_tip) : m_tip);
}

/// An item is of the kind of the tray that it was made for.
void QtTray::make()
{
    m_icon.reset();
    if (m_area == Area::None || !QSystemTrayIcon::isSystemTrayAvailable())
        return;
    m_icon = std::make_unique<QSystemTrayIcon>(emblemIcon());
    QObject::connect(m_icon.get(), &QSystemTrayIcon::activated, m_icon.get(),
                     [this](QSystemTrayIcon::ActivationReason reason) {
                         if (const std::optional<int> code = trayCode(reason))
                             Callback(*code);
                     });
    showTip();
    m_icon->show();
}

} // namespace orvantine
