#pragma once

#include <QDate>
#include <QString>

namespace orvantine {

struct Root;

/// Starts the updater, at most once in 30 days, unless the options forbid it.
void UpdateCheck(Root& root);

/// Starts the updater by hand.
void mnuUpdates_Click(Root& root);

namespace CalendarCalc {
/// Days from one date to another.
[[nodiscard]] qint64 DiffDays(const QDate& from, const QDate& to);
} // namespace CalendarCalc

} // namespace orvantine
