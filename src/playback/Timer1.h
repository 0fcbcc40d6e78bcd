#pragma once

namespace orvantine {

struct Root;

/// Checks the given repeat mode and unchecks the two others.
void mnuWiederholung_Click(Root& root, int index);
void mnuAllesWiedergeben_Click(Root& root);

/// The list that plays is over, and the next tick of Timer1 goes on to the one after it.
[[nodiscard]] bool nextListFollows(const Root& root);

/// End-of-playlist detection and what comes next.
void Timer1_Tick(Root& root);

} // namespace orvantine
