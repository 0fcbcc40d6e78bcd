#pragma once

#include <QString>

#include <optional>

namespace orvantine {

class Command;
struct Root;

/// Title of the boxes of a transfer.
inline constexpr QStringView TransferTitle = u" Sounddateien übertragen";

/// What a cancelled or a first choice does besides, by the command.
enum class TransferOf { Playlist, Track };

/// The folder that tracks are carried to, with its trailing separator: the one of the day, or one that the user
/// chooses, which is kept. Nothing if he cancels or the program ends.
[[nodiscard]] std::optional<QString> chooseTarget(Root& root, Command& command, TransferOf what);

/// With one separator at its end.
[[nodiscard]] QString withSeparator(const QString& folder);
/// The same, and two of them at its end become one.
[[nodiscard]] QString normalisedTarget(const QString& folder);

/// Keeps the target in section `Options`.
void keepTarget(Root& root, const QString& folder);
/// From now on it is the target of this day.
void keepTargetDate(Root& root);

} // namespace orvantine
