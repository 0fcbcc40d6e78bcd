#include "desktop/mpris/RemoteWish.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QFileInfo>

namespace orvantine {

using namespace Qt::StringLiterals;

bool hasSessionBus()
{
    return !qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + u"/bus"_s);
}

bool askRunning(const QString& step)
{
    constexpr int PatienceMs = 5000;
    if (!hasSessionBus())
        return false;
    QDBusMessage call = QDBusMessage::createMethodCall(
        u"org.mpris.MediaPlayer2.orvantine"_s, u"/org/mpris/MediaPlayer2"_s, u"org.mpris.MediaPlayer2.Player"_s, step);
    call.setAutoStartService(false);
    return QDBusConnection::sessionBus().call(call, QDBus::Block, PatienceMs).type() == QDBusMessage::ReplyMessage;
}

} // namespace orvantine
