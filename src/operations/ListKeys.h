#pragma once

namespace orvantine {

struct Root;

/// A key in one of the lists: its shift word as bits (1 shift, 2 control, 4 alt) and its code. True if the key means
/// something there. Every action whose shift word and code fit runs, in the order of the table.
bool LListView1_KeyDown(Root& root, int shift, int keyCode);
bool LListView2_KeyDown(Root& root, int shift, int keyCode);

} // namespace orvantine
