#pragma once

namespace orvantine {

struct Root;

/// Sorts the tracks by name (1), by the shown one of path and file name (2) or by number (3), numbers them anew and
/// asks whether to save. The list stays sorted until a row is moved up or the list is read again.
void mnuSortierung_Click(Root& root, int index);

/// A click on a head of the track list sorts by the clicked header's text: a text that two columns share sorts twice,
/// the later column last.
void LListView2_ColumnClick(Root& root, int column);

} // namespace orvantine
