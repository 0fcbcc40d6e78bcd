#pragma once

#include "platform/Clipboard.h"
#include "platform/Fonts.h"
#include "platform/Screen.h"

#include <QSet>

namespace orvantine {

class QtClipboard final : public Clipboard
{
public:
    [[nodiscard]] QString text() const override;
    [[nodiscard]] QStringList files() const override;
    void setText(const QString& text) override;
};

class QtScreen final : public Screen
{
public:
    [[nodiscard]] std::vector<DesktopScreen> screens() const override;
};

/// What fontconfig knows, and what was registered in this run.
class QtFonts final : public Fonts
{
public:
    [[nodiscard]] bool known(const QString& family) const override;
    bool registerFont(const QString& path) override;
    bool provide(const QString& family, const QString& path) override;

private:
    QSet<QString> m_provided;
};

} // namespace orvantine
