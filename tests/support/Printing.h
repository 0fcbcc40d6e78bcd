#pragma once

#include "platform/ListView.h"
#include "support/ScriptedMessages.h"

#include <QStringList>

namespace orvantine::fake {

/// One line a row: `1 "text" "sub-item" …`, ">" in front of the selected one, then in brackets what is not plain:
/// icons, colours, bold, tag.
[[nodiscard]] QStringList rowLines(const ListView& list);

/// `1 "Name" 2800` for each column.
[[nodiscard]] QStringList columnLines(const ListView& list);

/// Title, text, icon, buttons and answer of each box.
[[nodiscard]] QStringList messageLines(const std::vector<ShownMessage>& messages);

[[nodiscard]] QString nameOf(Color color);

} // namespace orvantine::fake
