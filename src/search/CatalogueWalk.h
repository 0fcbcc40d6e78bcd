#pragma once

#include <functional>

namespace orvantine {

class Command;
struct Root;

// A command that opens one list of the catalogue after the other

/// While one lives, an end of the program stores the row that was selected when it came up, and what is told of missing
/// files.
class WalkedFrom
{
public:
    explicit WalkedFrom(Root& root);
    ~WalkedFrom();
    WalkedFrom(const WalkedFrom&) = delete;
    WalkedFrom& operator=(const WalkedFrom&) = delete;

private:
    Root& m_root;
};

/// Opens the row's list and yields; where an event inside opens another one, the row's once more. `behindReading` puts
/// back what a reading has changed. False after the end of the program.
[[nodiscard]] bool openWalkedRow(Root& root, Command& command, int row, const std::function<void()>& behindReading);

/// The tracks in sight are the row's. A list that is too short leaves those of the one before in sight.
[[nodiscard]] bool showsTracksOf(const Root& root, int row);

} // namespace orvantine
