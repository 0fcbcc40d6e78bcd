#pragma once

namespace orvantine {

struct Root;

/// Plays the selected track alone; what is playing is stopped first.
void playSingleTrack(Root& root);

/// Checks the given repeat mode and unchecks the two others.
void mnuWiederholung_Click(Root& root, int index);
void mnuAllesWiedergeben_Click(Root& root);

/// End-of-playlist detection and what comes next.
void Timer1_Tick(Root& root);
/// The housekeeping pass that keeps the window in step with the data.
void Timer2_Tick(Root& root);
/// Counts to the delayed start of an update.
void Timer3_Tick(Root& root);

} // namespace orvantine
