#pragma once

namespace orvantine {

struct Root;

/// Opens the selected playlist, unless its tracks are loaded already.
void LListView1_Click(Root& root);
/// Plays the selected playlist from the top.
void LListView1_DblClick(Root& root);
/// Marks the selected playlist and shows the selected track.
void LListView2_Click(Root& root);
void LListView2_DblClick(Root& root);

/// Stores the column widths.
void LListView1_ColumnClick(Root& root, int column);
/// Sorts by the clicked header's text: a text that two columns share sorts twice, the later column last.
void LListView2_ColumnClick(Root& root, int column);

/// Shows the cover of a catalogue row in its pane, or neither.
void showRowCover(Root& root, int row);

/// Notes which list had the focus last: 1 the catalogue, 2 the tracks.
void noteFocus(Root& root, int list);

} // namespace orvantine
