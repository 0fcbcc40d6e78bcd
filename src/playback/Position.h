#pragma once

#include <QString>

#include <optional>

namespace orvantine {

struct Root;

/// The place in the title that plays or is paused.
struct Position
{
    double seconds = 0;
    /// Of the whole title, more than 0.
    double length = 0;
};

/// Nothing while nothing runs, and as long as the title's length is unknown.
[[nodiscard]] std::optional<Position> positionOf(Root& root);
/// Goes to that second of the title; a place behind its end is its end.
void seekTo(Root& root, double seconds);

/// "3:05", "1:02:03"; whole seconds.
[[nodiscard]] QString positionText(double seconds);

} // namespace orvantine
