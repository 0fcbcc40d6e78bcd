#include "app/LisviewMoveEntrys.h"

#include <algorithm>

namespace orvantine::LisviewMoveEntrys {

using namespace Qt::StringLiterals;

namespace {

/// Keeps the view from drawing while a row is out of its list.
class UpdateLock
{
public:
    UpdateLock(ListView& list, bool locked) : m_list(list), m_locked(locked)
    {
        if (m_locked)
            m_list.LockUpdate(true);
    }
    ~UpdateLock()
    {
        if (m_locked)
            m_list.LockUpdate(false);
    }
    UpdateLock(const UpdateLock&) = delete;
    UpdateLock& operator=(const UpdateLock&) = delete;

private:
    ListView& m_list;
    bool m_locked;
};

ListExtras extrasOf(const std::shared_ptr<const ListExtras>& extras)
{
    return extras ? *extras : ListExtras();
}

std::shared_ptr<const ListExtras> sharedExtras(const QString& key, const QString& tag, const QString& toolTip)
{
    if (key.isEmpty() && tag.isEmpty() && toolTip.isEmpty())
        return nullptr;
    return std::make_shared<const ListExtras>(ListExtras{.Key = key, .Tag = tag, .ToolTipText = toolTip});
}

ListSubRowCopy copyOf(const ListSubItem& sub)
{
    const ListExtras extras = extrasOf(sub.Extras);
    return {.Bold = sub.Bold ? u"True"_s : u"False"_s,
            .ForeColor = sub.ForeColor,
            .Key = extras.Key,
            .ReportIcon = sub.ReportIcon,
            .Tag = extras.Tag,
            .Text = sub.Text,
            .ToolTipText = extras.ToolTipText};
}

ListItem itemOf(const ListRowCopy& copy)
{
    ListItem item;
    item.Text = copy.Text;
    item.Icon = copy.Icon;
    item.SmallIcon = copy.SmallIcon;
    item.Bold = copy.Bold;
    item.Checked = copy.Checked;
    item.ForeColor = copy.ForeColor;
    item.Ghosted = copy.Ghosted;
    item.Extras = sharedExtras(copy.Key, copy.Tag, copy.ToolTipText);
    for (const ListSubRowCopy& sub : copy.SubItems.value_or(std::vector<ListSubRowCopy>()))
        item.SubItems.push_back({.Text = sub.Text,
                                 .ReportIcon = sub.ReportIcon,
                                 .ForeColor = sub.ForeColor,
                                 .Bold = sub.Bold == u"True"_s,
                                 .Extras = sharedExtras(sub.Key, sub.Tag, sub.ToolTipText)});
    return item;
}

/// Nothing for the end of the list.
std::optional<int> placeOf(const ListView& list, std::optional<bool> before, std::optional<bool> after,
                           std::optional<int> index, std::optional<int> offset)
{
    const int selected = list.selectedRow();
    if (selected > 0 && before.value_or(false))
        return selected;
    if (selected > 0 && after.value_or(false))
        return selected + 1;
    if (index)
        return index;
    if (offset)
        return *offset + 1;
    return std::nullopt;
}

} // namespace

void MoveUp(ListView& list, const RowChoice& item, int count, bool lockUpdate)
{
    const int row = ResolveItem(list, item);
    if (row <= 1)
        return;
    const UpdateLock lock(list, lockUpdate);
    const int target = std::max(row - count, 1);
    InsertRow(list, CopyRow(list, row, true, false), {}, {}, target, {});
}

void MoveDown(ListView& list, const RowChoice& item, int count, bool lockUpdate)
{
    const int row = ResolveItem(list, item);
    if (row == 0 || row >= list.count())
        return;
    const UpdateLock lock(list, lockUpdate);
    const int target = row + count;
    const ListRowCopy copy = CopyRow(list, row, true, false);
    InsertRow(list, copy, {}, {}, target <= list.count() ? std::optional(target) : std::nullopt, {});
}

ListRowCopy CopyRow(ListView& list, const RowChoice& item, bool remove, bool lockUpdate)
{
    const int row = ResolveItem(list, item);
    if (row == 0)
        return {};
    const UpdateLock lock(list, lockUpdate);
    const ListItem& from = list.item(row);
    const ListExtras extras = extrasOf(from.Extras);
    ListRowCopy copy{.Bold = from.Bold,
                     .Checked = from.Checked,
                     .ForeColor = from.ForeColor,
                     .Ghosted = from.Ghosted,
                     .Icon = from.Icon,
                     .Key = extras.Key,
                     .SubItems = {},
                     .Selected = list.selectedRow() == row,
                     .SmallIcon = from.SmallIcon,
                     .Tag = extras.Tag,
                     .Text = from.Text,
                     .ToolTipText = extras.ToolTipText};
    if (!from.SubItems.empty()) {
        copy.SubItems.emplace();
        std::transform(from.SubItems.begin(), from.SubItems.end(), std::back_inserter(*copy.SubItems), copyOf);
    }
    if (remove)
        list.remove(row);
    return copy;
}

int ResolveItem(const ListView& list, const RowChoice& item)
{
    if (std::holds_alternative<std::monostate>(item))
        return list.selectedRow();
    if (const int* row = std::get_if<int>(&item))
        return list.has(*row) ? *row : 0;
    const QString& key = std::get<QString>(item);
    for (int row = 1; row <= list.count() && !key.isEmpty(); ++row)
        if (extrasOf(list.item(row).Extras).Key.compare(key, Qt::CaseInsensitive) == 0)
            return row;
    return 0;
}

void InsertRow(ListView& list, const ListRowCopy& rowCopy, std::optional<bool> before, std::optional<bool> after,
               std::optional<int> index, std::optional<int> offset, bool keepSelection)
{
    const std::optional<int> place = placeOf(list, before, after, index, offset);
    if (place && *place <= 0)
        return;
    int row = std::min(place.value_or(list.count() + 1), list.count() + 1);
    if (list.sorted())
        row = list.append(itemOf(rowCopy));
    else
        list.insert(row, itemOf(rowCopy));
    if (rowCopy.Selected && !keepSelection)
        list.select(row);
}

} // namespace orvantine::LisviewMoveEntrys
