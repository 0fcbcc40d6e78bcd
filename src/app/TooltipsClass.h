#pragma once

#include "platform/Controls.h"

#include <chrono>
#include <optional>
#include <vector>

namespace orvantine {

/// Tool tips over controls: one balloon a control, whose text may have several lines. What is told here holds for all
/// of them; times of 0 are those of the desktop.
class TooltipsClass
{
public:
    enum class TipIcon { None = 0, Info = 1, Warning = 2, Error = 3 };
    enum class TipAlignment { Left, Centre, Right };
    enum class TipShowMode { Always, Never };

    /// The text of the tip that was added last.
    QString ToolTipText;
    /// A line in bold above the text.
    QString Title;
    TipIcon Icon = TipIcon::None;
    /// Nothing: the colours of the desktop's tips.
    std::optional<Color> ForeColor;
    std::optional<Color> BackColor;
    /// Below the control, not at the mouse.
    bool Baloon = true;
    /// Around the text, in pixels.
    int Margin = 0;
    /// Below the middle of the control.
    bool CenteredTooltip = false;
    /// The mouse reaches what lies below.
    bool Transparent = true;
    TipAlignment Alignment = TipAlignment::Left;
    /// Pixels; lines are broken there. 0: as wide as the text.
    int Width = 0;
    /// The rest of the mouse after which a tip comes; after which it goes; and after which the next one comes.
    std::chrono::milliseconds Show{0};
    std::chrono::milliseconds AutoHide{0};
    std::chrono::milliseconds ReShow{0};
    TipShowMode ShowMode = TipShowMode::Always;

    /// Gives the control its tip; a later one takes the place of the earlier.
    void add(Control& control, const QString& toolTipText);
    /// Takes all tips away.
    void removeAll();
    [[nodiscard]] bool empty() const { return m_controls.empty(); }

private:
    std::vector<Control*> m_controls;
};

} // namespace orvantine
