#include "support/Printing.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

QString nameOf(Color color)
{
    switch (color) {
    case Color::ButtonText:
        return u"text"_s;
    case Color::DarkRed:
        return u"darkred"_s;
    }
    return u"0x"_s + QString::number(static_cast<quint32>(color), 16);
}

QStringList rowLines(const ListView& list)
{
    QStringList lines;
    for (int row = 1; row <= list.count(); ++row) {
        const ListItem& item = list.item(row);
        QString line = list.selectedRow() == row ? u"> "_s : u"  "_s;
        line += QString::number(row) + u' ' + quoted(item.Text);
        QStringList notes;
        if (!item.SmallIcon.isEmpty())
            notes += u"icon "_s + item.SmallIcon;
        if (!item.Icon.isEmpty() && item.Icon != item.SmallIcon)
            notes += u"bigicon "_s + item.Icon;
        if (item.ForeColor != Color::ButtonText)
            notes += u"0 "_s + nameOf(item.ForeColor);
        if (item.Bold)
            notes += u"0 bold"_s;
        int sub = 0;
        for (const ListSubItem& cell : item.SubItems) {
            ++sub;
            line += u' ' + quoted(cell.Text);
            if (!cell.ReportIcon.isEmpty())
                notes += QString::number(sub) + u" icon "_s + cell.ReportIcon;
            if (cell.ForeColor != Color::ButtonText)
                notes += QString::number(sub) + u' ' + nameOf(cell.ForeColor);
            if (cell.Bold)
                notes += QString::number(sub) + u" bold"_s;
        }
        if (item.Checked)
            notes += u"checked"_s;
        if (item.Ghosted)
            notes += u"ghosted"_s;
        if (!list.tag(row).isEmpty())
            notes += u"tag "_s + quoted(list.tag(row));
        lines += notes.isEmpty() ? line : line + u" ["_s + notes.join(u", "_s) + u']';
    }
    return lines;
}

QStringList columnLines(const ListView& list)
{
    QStringList lines;
    for (int column = 1; column <= list.columns(); ++column)
        lines += QString::number(column) + u' ' + quoted(list.columnText(column)) + u' ' +
                 QString::number(list.columnWidth(column));
    return lines;
}

QStringList messageLines(const std::vector<ShownMessage>& messages)
{
    QStringList lines;
    for (const ShownMessage& message : messages)
        lines += message.input ? u"input title %1 text %2 default %3 entered %4"_s.arg(
                                     quoted(message.title), quoted(message.text), quoted(message.defaultText),
                                     quoted(message.entered))
                               : u"box title %1 text %2 icon %3 buttons %4 answer %5"_s.arg(
                                     quoted(message.title), quoted(message.text), nameOf(message.icon),
                                     nameOf(message.buttons), nameOf(message.answer));
    return lines;
}

} // namespace orvantine::fake
