#pragma once

#include "platform/Controls.h"

#include <vector>

namespace orvantine {

/// Tool tips over controls: one balloon a control, whose text may have several lines.
class TooltipsClass
{
public:
    QString Title;
    bool Baloon = true;

    /// Gives the control its tip; a later one takes the place of the earlier.
    void add(Control& control, const QString& toolTipText);
    /// Takes all tips away.
    void removeAll();
    [[nodiscard]] bool empty() const { return m_controls.empty(); }

private:
    std::vector<Control*> m_controls;
};

} // namespace orvantine
