#include "desktop/qt/widgets/LineList.h"

#include <QKeyEvent>

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

LineListModel::LineListModel(ListBox& control) : m_control(control), m_lines(control.List)
{
    m_bindings.watch(control.List, [this] { follow(); });
    m_bindings.watch(control.Checked, [this] {
        if (!m_lines.isEmpty())
            Q_EMIT dataChanged(index(0), index(rowCount() - 1), {Qt::CheckStateRole});
    });
}

int LineListModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

QVariant LineListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_lines.size())
        return {};
    if (role == Qt::DisplayRole)
        return QString(m_lines[index.row()]).replace(u'\t', u"  ›  "_s);
    if (role == Qt::CheckStateRole)
        return m_control.Checked.value().value(index.row(), true) ? Qt::Checked : Qt::Unchecked;
    return {};
}

bool LineListModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    QList<bool> marks = m_control.Checked;
    if (role != Qt::CheckStateRole || !index.isValid() || index.row() >= marks.size())
        return false;
    marks[index.row()] = value.toInt() == Qt::Checked;
    m_control.Checked = marks;
    m_control.ListIndex = index.row();
    if (m_control.Click)
        m_control.Click();
    return true;
}

Qt::ItemFlags LineListModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractListModel::flags(index);
    return index.isValid() ? flags | Qt::ItemIsUserCheckable : flags;
}

void LineListModel::follow()
{
    const QStringList& lines = m_control.List.value();
    const bool grown = lines.size() > m_lines.size() && std::equal(m_lines.cbegin(), m_lines.cend(), lines.cbegin());
    if (grown) {
        beginInsertRows({}, rowCount(), static_cast<int>(lines.size()) - 1);
        m_lines = lines;
        endInsertRows();
    } else if (lines != m_lines) {
        beginResetModel();
        m_lines = lines;
        endResetModel();
    }
}

LineList::LineList(ListBox& control, QWidget* parent) : QListView(parent), m_model(control)
{
    setModel(&m_model);
    setUniformItemSizes(true);
    setSelectionMode(ExtendedSelection);
    setTextElideMode(Qt::ElideMiddle);
    connect(selectionModel(), &QItemSelectionModel::currentChanged, this,
            [&control](const QModelIndex& current) { control.ListIndex = current.row(); });
}

void LineList::keyPressEvent(QKeyEvent* event)
{
    const QModelIndexList chosen = selectionModel()->selectedRows();
    if (event->key() != Qt::Key_Space || chosen.size() < 2 || !currentIndex().isValid())
        return QListView::keyPressEvent(event);
    const bool on = currentIndex().data(Qt::CheckStateRole).toInt() != Qt::Checked;
    for (const QModelIndex& line : chosen)
        m_model.setData(line, on ? Qt::Checked : Qt::Unchecked, Qt::CheckStateRole);
}

} // namespace orvantine
