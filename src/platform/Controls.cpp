#include "platform/Controls.h"

#include <algorithm>

namespace orvantine {

Control::Control(ControlSet& owner, QStringView controlName, int controlIndex)
    : name(controlName.toString()), index(controlIndex)
{
    owner.m_controls.push_back(this);
}

QString Control::fullName() const
{
    return index == NoIndex ? name : QStringLiteral("%1(%2)").arg(name).arg(index);
}

void DragListBox::move(int from, int to)
{
    QStringList lines = List;
    if (from < 0 || from >= lines.size() || to < 0 || to >= lines.size())
        return;
    lines.move(from, to);
    List = lines;
    ListIndex = to;
}

Control* ControlSet::find(const QString& name, int index) const
{
    const auto found = std::find_if(m_controls.begin(), m_controls.end(), [&](const Control* control) {
        return control->index == index && control->name == name;
    });
    return found == m_controls.end() ? nullptr : *found;
}

} // namespace orvantine
