#pragma once

namespace orvantine {

struct Root;

/// The first-use tip at the head of a command. Without the tips' file none is ever shown, nor before the program has
/// started, nor while another one is read. The command goes on behind it in any case, unless the program has ended:
/// then it is false.
[[nodiscard]] bool ShowFeatureTip(Root& root, int id);
/// Required: one command asks the gate of another id than that of the texts that it shows.
[[nodiscard]] bool ShowFeatureTip(Root& root, int gate, int shown);

/// 1 for show, 0 for do not show.
[[nodiscard]] int DirektHilfen(const Root& root, int id);

} // namespace orvantine
