#pragma once

#include <QString>

#include <functional>

namespace orvantine {

/// The program's item in the notification area.
class TrayIcon
{
public:
    virtual ~TrayIcon() = default;

    /// False where the desktop has no tray at present: the item then comes with the tray. One that stands stays.
    virtual bool add(const QString& tip) = 0;
    virtual void remove() = 0;
    /// There is an item that a user can click.
    [[nodiscard]] virtual bool stands() const = 0;
    /// The item has come or gone with the desktop's tray.
    std::function<void()> Changed = [] {};
    /// X of the callback in twips: 7695 for the left button, 7740 for the right one.
    std::function<void(int)> Callback = [](int) {};
};

} // namespace orvantine
