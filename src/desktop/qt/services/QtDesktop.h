#pragma once

#include "platform/Clipboard.h"
#include "platform/Fonts.h"
#include "platform/Screen.h"
#include "platform/TrayIcon.h"

#include <QSystemTrayIcon>

#include <memory>
#include <optional>

namespace orvantine {

class QtClipboard final : public Clipboard
{
public:
    [[nodiscard]] QString text() const override;
    [[nodiscard]] QStringList files() const override;
    void setText(const QString& text) override;
};

/// The primary screen.
class QtScreen final : public Screen
{
public:
    [[nodiscard]] ScreenSize size() const override;
};

/// What fontconfig knows, and what was registered in this run.
class QtFonts final : public Fonts
{
public:
    [[nodiscard]] bool known(const QString& family) const override;
    bool registerFont(const QString& path) override;
};

/// What the tray calls back with for a click; nothing for any button but the left and the right one.
[[nodiscard]] std::optional<int> trayCode(QSystemTrayIcon::ActivationReason reason);

/// Any click of the left or right button calls back; the item has no menu.
class QtTray final : public TrayIcon
{
public:
    QtTray();
    ~QtTray() override;

    bool add(const QString& tip) override;
    void remove() override;
    [[nodiscard]] bool available() const override;

private:
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace orvantine
