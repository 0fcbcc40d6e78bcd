#include "platform/ListView.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace orvantine {

namespace {

/// Of a catalogue entry the name is red, of a track the path, which may be out of sight.
bool isMissing(const ListItem& row)
{
    return row.ForeColor == Color::DarkRed ||
           std::any_of(row.SubItems.begin(), row.SubItems.end(),
                       [](const ListSubItem& sub) { return sub.ForeColor == Color::DarkRed; });
}

} // namespace

ListView::ListView(ControlSet& owner, QStringView listName) : Control(owner, listName) {}

const ListItem& ListView::item(int row) const
{
    static const ListItem none;
    return has(row) ? m_rows[static_cast<std::size_t>(row - 1)] : none;
}

QString ListView::text(int row) const
{
    return item(row).Text;
}

QString ListView::subItem(int row, int sub) const
{
    const auto& subItems = item(row).SubItems;
    return sub >= 1 && sub <= static_cast<int>(subItems.size()) ? subItems[static_cast<std::size_t>(sub - 1)].Text
                                                                : QString();
}

Color ListView::color(int row, int sub) const
{
    const ListItem& shown = item(row);
    if (sub < 1 || sub > static_cast<int>(shown.SubItems.size()))
        return shown.ForeColor;
    return shown.SubItems[static_cast<std::size_t>(sub - 1)].ForeColor;
}

QString ListView::tag(int row) const
{
    const auto& extras = item(row).Extras;
    return extras ? extras->Tag : QString();
}

QString ListView::key(int row) const
{
    const auto& extras = item(row).Extras;
    return extras ? extras->Key : QString();
}

int ListView::number(int row) const
{
    const auto& extras = item(row).Extras;
    return extras ? extras->Number : 0;
}

void ListView::clear()
{
    m_selected = 0;
    beginResetModel();
    m_rows.clear();
    m_published = 0;
    m_firstChanged = 0;
    endResetModel();
}

int ListView::append(ListItem item)
{
    if (batching()) {
        m_rows.push_back(std::move(item));
        return count();
    }
    const int row = m_sorted ? placeFor(item) : count() + 1;
    insert(row, std::move(item));
    return row;
}

void ListView::insert(int row, ListItem item)
{
    if (row < 1 || row > count() + 1)
        return;
    if (row > count())
        publish();
    else
        row = publish(row);
    beginInsertRows({}, row - 1, row - 1);
    m_rows.insert(m_rows.begin() + (row - 1), std::move(item));
    m_published = count();
    endInsertRows();
    if (m_selected.value() >= row)
        m_selected = m_selected.value() + 1;
}

void ListView::remove(int row)
{
    if (!has(row))
        return;
    row = publish(row);
    const int selected = m_selected.value();
    if (selected == row)
        m_selected = 0;
    beginRemoveRows({}, row - 1, row - 1);
    m_rows.erase(m_rows.begin() + (row - 1));
    m_published = count();
    endRemoveRows();
    if (selected > row)
        m_selected = selected - 1;
}

void ListView::setText(int row, const QString& text)
{
    if (!has(row))
        return;
    m_rows[static_cast<std::size_t>(row - 1)].Text = text;
    changed(row, 1);
}

void ListView::setSubItem(int row, int sub, const QString& text)
{
    if (!has(row) || sub < 1)
        return;
    auto& subItems = m_rows[static_cast<std::size_t>(row - 1)].SubItems;
    if (static_cast<int>(subItems.size()) < sub)
        subItems.resize(static_cast<std::size_t>(sub));
    subItems[static_cast<std::size_t>(sub - 1)].Text = text;
    changed(row, sub + 1);
}

void ListView::setColor(int row, int sub, Color color)
{
    if (!has(row))
        return;
    auto& subItems = m_rows[static_cast<std::size_t>(row - 1)].SubItems;
    if (sub < 1 || sub > static_cast<int>(subItems.size()))
        return;
    subItems[static_cast<std::size_t>(sub - 1)].ForeColor = color;
    changed(row, sub + 1);
}

void ListView::setIcons(int row, const QString& icon)
{
    if (!has(row))
        return;
    ListItem& shown = m_rows[static_cast<std::size_t>(row - 1)];
    shown.SmallIcon = icon;
    changed(row, 1);
    if (shown.SubItems.empty())
        return;
    shown.SubItems.front().ReportIcon = icon;
    changed(row, 2);
}

void ListView::setPlaying(int sub, const QString& text, bool paused)
{
    if (sub == m_playingSub && text == m_playing && paused == m_playingPaused)
        return;
    std::vector<int> rows;
    const auto note = [this, &rows] {
        for (int row = 1; row <= m_published && !m_playing.isEmpty(); ++row)
            if (playingAt(item(row)) != NotPlaying)
                rows.push_back(row);
    };
    note();
    m_playingSub = sub;
    m_playing = text;
    m_playingPaused = paused;
    note();
    for (const int row : rows)
        for (int column = 1; column <= columns(); ++column)
            changed(row, column);
}

void ListView::setTag(int row, const QString& tag)
{
    changeExtras(row, [&tag](ListExtras& extras) { extras.Tag = tag; });
}

void ListView::setNumber(int row, int number)
{
    changeExtras(row, [number](ListExtras& extras) { extras.Number = number; });
}

void ListView::changeExtras(int row, const std::function<void(ListExtras&)>& change)
{
    if (!has(row))
        return;
    ListItem& item = m_rows[static_cast<std::size_t>(row - 1)];
    ListExtras extras = item.Extras ? *item.Extras : ListExtras();
    change(extras);
    item.Extras = std::make_shared<const ListExtras>(std::move(extras));
}

bool ListView::select(int row)
{
    if (!has(row))
        return false;
    m_selected = row > m_published ? publish(row) : row;
    return true;
}

void ListView::clearSelection()
{
    m_selected = 0;
}

QString ListView::columnText(int column) const
{
    return column >= 1 && column <= columns() ? m_columns[static_cast<std::size_t>(column - 1)].Text : QString();
}

Twips ListView::columnWidth(int column) const
{
    return column >= 1 && column <= columns() ? m_columns[static_cast<std::size_t>(column - 1)].Width : 0;
}

void ListView::clearColumns()
{
    publish();
    beginResetModel();
    m_columns.clear();
    endResetModel();
}

void ListView::addColumn(const QString& text, Twips width)
{
    publish();
    beginInsertColumns({}, columns(), columns());
    m_columns.push_back({text, width});
    endInsertColumns();
    WidthChanged(columns(), width);
}

void ListView::setColumnText(int column, const QString& text)
{
    if (column < 1 || column > columns())
        return;
    m_columns[static_cast<std::size_t>(column - 1)].Text = text;
    Q_EMIT headerDataChanged(Qt::Horizontal, column - 1, column - 1);
}

void ListView::setColumnWidth(int column, Twips width)
{
    if (column < 1 || column > columns())
        return;
    m_columns[static_cast<std::size_t>(column - 1)].Width = width;
    WidthChanged(column, width);
}

void ListView::noteColumnWidth(int column, Twips width)
{
    if (column >= 1 && column <= columns())
        m_columns[static_cast<std::size_t>(column - 1)].Width = width;
}

void ListView::setSorted(bool sorted)
{
    if (sorted == m_sorted)
        return;
    publish();
    m_sorted = sorted;
}

void ListView::sortBy(int column)
{
    publish();
    m_sorted = true;
    m_sortColumn = column;
    std::vector<std::size_t> order(m_rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::vector<QString> keys;
    keys.reserve(m_rows.size());
    for (const ListItem& row : m_rows)
        keys.push_back(keyOf(row));
    std::stable_sort(order.begin(), order.end(), [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    reorder(order);
}

std::vector<int> ListView::reorder(const std::vector<std::size_t>& order)
{
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    std::vector<ListItem> rows;
    rows.reserve(m_rows.size());
    std::vector<int> newRow(m_rows.size());
    for (std::size_t place = 0; place < order.size(); ++place) {
        newRow[order[place]] = static_cast<int>(place);
        rows.push_back(std::move(m_rows[order[place]]));
    }
    m_rows = std::move(rows);
    const QModelIndexList before = persistentIndexList();
    for (const QModelIndex& old : before)
        changePersistentIndex(old, index(newRow[static_cast<std::size_t>(old.row())], old.column()));
    if (m_selected.value() > 0)
        m_selected = newRow[static_cast<std::size_t>(m_selected.value() - 1)] + 1;
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
    return newRow;
}

void ListView::showNow()
{
    if (m_batches == 0)
        return;
    publish();
    BatchEnded();
}

ListView::Batch::~Batch()
{
    m_list.publish();
    if (--m_list.m_batches == 0)
        m_list.BatchEnded();
}

int ListView::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_published;
}

int ListView::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : columns();
}

ListView::Playing ListView::playingAt(const ListItem& item) const
{
    if (m_playing.isEmpty() || textAt(item, m_playingSub + 1) != m_playing)
        return NotPlaying;
    return m_playingPaused ? IsPaused : IsPlaying;
}

/// What icon, colour and mark show, in words.
QString ListView::stateOf(const ListItem& item) const
{
    QString state;
    if (isMissing(item))
        state += QStringLiteral(", fehlt");
    if (item.SmallIcon == QStringLiteral("Icon_6"))
        state += QStringLiteral(", Favorit");
    const Playing playing = playingAt(item);
    if (item.SmallIcon == QStringLiteral("Icon_C") || playing == IsPlaying)
        state += QStringLiteral(", wird wiedergegeben");
    if (playing == IsPaused)
        state += QStringLiteral(", angehalten");
    return state;
}

QVariant ListView::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const ListItem& shown = m_rows[static_cast<std::size_t>(index.row())];
    const int column = index.column() + 1;
    const ListSubItem* sub = column >= 2 && column - 1 <= static_cast<int>(shown.SubItems.size())
                                 ? &shown.SubItems[static_cast<std::size_t>(column - 2)]
                                 : nullptr;
    switch (role) {
    case Qt::DisplayRole:
        return textAt(shown, column);
    case Qt::ToolTipRole: {
        if (sub != nullptr && sub->Extras && !sub->Extras->ToolTipText.isEmpty())
            return sub->Extras->ToolTipText;
        return isMissing(shown) ? textAt(shown, column) + QStringLiteral("\n(Datei fehlt)") : textAt(shown, column);
    }
    case Qt::AccessibleTextRole:
        return textAt(shown, column) + stateOf(shown) + QStringLiteral(", ") + QString::number(index.row() + 1) +
               QStringLiteral(" von ") + QString::number(m_published);
    case MissingRole:
        return isMissing(shown);
    case PlayingRole:
        return static_cast<int>(playingAt(shown));
    case IconNameRole:
        return column == 1 ? shown.SmallIcon : sub != nullptr ? sub->ReportIcon : QString();
    case ColorRole:
        return static_cast<quint32>(sub != nullptr ? sub->ForeColor : shown.ForeColor);
    default:
        return {};
    }
}

QVariant ListView::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return columnText(section + 1);
}

int ListView::publish(int row)
{
    if (m_firstChanged > 0) {
        const int first = std::exchange(m_firstChanged, 0);
        Q_EMIT dataChanged(index(first - 1, 0), index(m_lastChanged - 1, columns() - 1));
    }
    if (m_published == count())
        return row;
    const int placed = m_published;
    beginInsertRows({}, m_published, count() - 1);
    m_published = count();
    endInsertRows();
    return m_sorted ? placeFrom(placed, row) : row;
}

int ListView::placeFrom(int placed, int row)
{
    const std::size_t first = static_cast<std::size_t>(placed);
    // The greatest key down to each row: the first row with a greater key than a given one is where these first exceed
    // it, even if texts that changed behind the sort left the rows in no order.
    std::vector<QString> greatest;
    std::vector<QString> keys;
    greatest.reserve(first);
    for (std::size_t i = 0; i < first; ++i) {
        QString key = keyOf(m_rows[i]);
        greatest.push_back(i > 0 && !(greatest.back() < key) ? greatest.back() : std::move(key));
    }
    for (std::size_t i = first; i < m_rows.size(); ++i)
        keys.push_back(keyOf(m_rows[i]));
    std::vector<std::size_t> added(keys.size());
    std::iota(added.begin(), added.end(), std::size_t{0});
    std::stable_sort(added.begin(), added.end(), [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });

    std::vector<std::size_t> order;
    order.reserve(m_rows.size());
    auto next = added.cbegin();
    for (std::size_t i = 0; i < first; ++i) {
        for (; next != added.cend() && keys[*next] < greatest[i]; ++next)
            order.push_back(first + *next);
        order.push_back(i);
    }
    for (; next != added.cend(); ++next)
        order.push_back(first + *next);
    if (std::is_sorted(order.begin(), order.end()))
        return row;
    const std::vector<int> newRow = reorder(order);
    return row > 0 ? newRow[static_cast<std::size_t>(row - 1)] + 1 : row;
}

void ListView::changed(int row, int column)
{
    if (row > m_published || column > columns())
        return;
    if (batching()) {
        m_lastChanged = m_firstChanged > 0 ? std::max(m_lastChanged, row) : row;
        m_firstChanged = m_firstChanged > 0 ? std::min(m_firstChanged, row) : row;
        return;
    }
    const QModelIndex cell = index(row - 1, column - 1);
    Q_EMIT dataChanged(cell, cell);
}

int ListView::placeFor(const ListItem& item) const
{
    const QString key = textAt(item, m_sortColumn).toCaseFolded();
    // Not halved: texts that changed behind the sort leave the rows in no order.
    const auto place = std::find_if(m_rows.begin(), m_rows.end(), [&](const ListItem& row) {
        return key < textAt(row, m_sortColumn).toCaseFolded();
    });
    return static_cast<int>(place - m_rows.begin()) + 1;
}

QString ListView::textAt(const ListItem& item, int column)
{
    if (column == 1)
        return item.Text;
    const auto sub = static_cast<std::size_t>(column - 2);
    return column >= 2 && sub < item.SubItems.size() ? item.SubItems[sub].Text : QString();
}

} // namespace orvantine
