#pragma once

#include "platform/ListView.h"

#include <variant>

/// Moves rows of any list: a row is copied to a record, taken out and put in again with everything that it carries.
namespace orvantine::LisviewMoveEntrys {

/// A row by nothing (then it is the selected one), by its number or by its key.
using RowChoice = std::variant<std::monostate, int, QString>;

struct ListSubRowCopy
{
    /// "True" or "False".
    QString Bold;
    Color ForeColor = Color::ButtonText;
    QString Key;
    QString ReportIcon;
    QString Tag;
    QString Text;
    QString ToolTipText;
};

struct ListRowCopy
{
    bool Bold = false;
    bool Checked = false;
    Color ForeColor = Color::ButtonText;
    bool Ghosted = false;
    QString Icon;
    QString Key;
    /// Absent for a row without sub-items.
    std::optional<std::vector<ListSubRowCopy>> SubItems;
    bool Selected = false;
    QString SmallIcon;
    QString Tag;
    QString Text;
    QString ToolTipText;
};

/// Moves the row `count` places towards the top, at most to row 1. The first row and no row stay.
void MoveUp(ListView& list, const RowChoice& item, int count, bool lockUpdate);
/// Moves the row `count` places towards the end, at most to the last row. The last row and no row stay.
void MoveDown(ListView& list, const RowChoice& item, int count, bool lockUpdate);

/// The row's record; with `remove` the row leaves the list. A row that does not exist gives an empty record.
ListRowCopy CopyRow(ListView& list, const RowChoice& item, bool remove, bool lockUpdate);

/// Number of the row; 0 where there is none.
[[nodiscard]] int ResolveItem(const ListView& list, const RowChoice& item);

/// Adds a row from its record and selects it if it was selected and `keepSelection` does not forbid it. `before` and
/// `after` mean the selected row, and count only if there is one; otherwise the place is `index`, otherwise `offset`
/// + 1. Without a place, or with one above the count, the row comes last; place 0 does nothing. A sorted list puts the
/// row where its sort key belongs.
void InsertRow(ListView& list, const ListRowCopy& rowCopy, std::optional<bool> before, std::optional<bool> after,
               std::optional<int> index, std::optional<int> offset, bool keepSelection = false);

} // namespace orvantine::LisviewMoveEntrys
