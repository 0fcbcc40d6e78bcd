#include "app/TooltipsClass.h"

namespace orvantine {

void TooltipsClass::add(Control& control, const QString& toolTipText)
{
    ToolTipText = toolTipText;
    control.ToolTipText = toolTipText;
    m_controls.push_back(&control);
}

void TooltipsClass::removeAll()
{
    for (Control* control : m_controls)
        control->ToolTipText = QString();
    m_controls.clear();
}

} // namespace orvantine
