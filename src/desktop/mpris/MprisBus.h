#pragma once

#include "playback/RemoteControl.h"

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QTimer>
#include <QVariantMap>

#include <map>

namespace orvantine {

/// The player on the session bus, by the desktop's protocol for media players (MPRIS 2.2: root, Player and Playlists).
/// Without a bus it is silent. Calls are answered at once and carried out from the event loop; changes are announced
/// together when the handlers that made them have returned.
class MprisBus final : public QDBusVirtualObject
{
public:
    MprisBus(RemoteControl& face, QString identity, QString desktopEntry);
    ~MprisBus() override;

    /// Takes its place on the bus of the session. Does not wait for the bus.
    void start();
    /// The same on this bus.
    void start(const QDBusConnection& bus);
    /// The name on the bus; "" before it was given one.
    [[nodiscard]] const QString& name() const { return m_name; }

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    [[nodiscard]] QVariantMap rootProperties() const;
    [[nodiscard]] QVariantMap playerProperties() const;
    [[nodiscard]] QVariantMap playlistsProperties() const;
    [[nodiscard]] QVariantMap propertiesOf(const QString& interface) const;
    [[nodiscard]] QVariantMap metadata() const;
    [[nodiscard]] QString trackPath() const;

    /// The answer to a call; an error for one that does not exist.
    QDBusMessage answer(const QDBusMessage& message);
    QDBusMessage answerProperties(const QDBusMessage& message);
    QDBusMessage set(const QDBusMessage& message);
    [[nodiscard]] QDBusMessage playlists(const QDBusMessage& message) const;
    /// Carries out a wish once the call has been answered.
    void later(std::function<void()> wish);

    void takeName(const QString& name, bool mayBeTaken);
    void announce();
    void announceNames();
    void send(const QString& interface, const QString& member, const QVariantList& arguments);

    RemoteControl& m_face;
    const QString m_identity;
    const QString m_desktopEntry;
    QDBusConnection m_bus{QString()};
    bool m_started = false;
    QString m_name;
    /// Collects what changes within one handler.
    QTimer m_soon;
    /// What was announced last, by interface.
    std::map<QString, QVariantMap> m_told;
    QList<KnownPlaylist> m_toldNames;
};

} // namespace orvantine
