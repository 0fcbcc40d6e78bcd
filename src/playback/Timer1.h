#pragma once

namespace orvantine {

struct Root;

/// Checks the given repeat mode and unchecks the two others.
void mnuWiederholung_Click(Root& root, int index);
/// Turns going on at the end of a list on or off: Timer1 runs while it is on and something plays.
void mnuAllesWiedergeben_Click(Root& root);

/// The list that plays is over, and the next tick of Timer1 goes on to the one after it.
[[nodiscard]] bool nextListFollows(const Root& root);

/// Looks whether the playing list has ended, and repeats the track or the list or goes on to the next one, as the
/// repeat mode says. Gives way to a wish of the user in each wait.
void Timer1_Tick(Root& root);

} // namespace orvantine
