#pragma once

#include "platform/TrayIcon.h"

#include <QSystemTrayIcon>
#include <QTimer>

#include <memory>
#include <optional>

class QDBusServiceWatcher;

namespace orvantine {

/// What the tray calls back with for a click; nothing for any button but the left and the right one.
[[nodiscard]] std::optional<int> trayCode(QSystemTrayIcon::ActivationReason reason);

/// Any click of the left or right button calls back; the item has no menu. It follows the desktop's tray as that comes
/// and goes, whichever of the two kinds it is of.
class QtTray final : public TrayIcon
{
public:
    QtTray();
    ~QtTray() override;

    bool add(const QString& tip) override;
    void remove() override;
    [[nodiscard]] bool stands() const override { return m_icon != nullptr; }

private:
    /// A tray of the bus is asked for first: the toolkit looks for it once only, when the first item is made.
    enum class Area { None, Bus, Display };

    [[nodiscard]] static Area area();
    void follow();
    void make();
    void showTip();

    bool m_wanted = false;
    QString m_tip;
    Area m_area = Area::None;
    std::unique_ptr<QSystemTrayIcon> m_icon;
    std::unique_ptr<QDBusServiceWatcher> m_watcher;
    /// The display tells nobody of its tray.
    QTimer m_look;
};

} // namespace orvantine
