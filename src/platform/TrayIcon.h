#pragma once

#include <QString>

#include <functional>

namespace orvantine {

/// The program's item in the notification area.
class TrayIcon
{
public:
    virtual ~TrayIcon() = default;

    /// False where the desktop has no tray; an item that stands already stays.
    virtual bool add(const QString& tip) = 0;
    virtual void remove() = 0;
    [[nodiscard]] virtual bool available() const = 0;
    /// X of the callback in twips: 7695 for the left button, 7740 for the right one.
    std::function<void(int)> Callback = [](int) {};
};

} // namespace orvantine
