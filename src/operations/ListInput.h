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

} // namespace orvantine
