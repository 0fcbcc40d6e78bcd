#pragma once

#include <QString>

#include <functional>

namespace orvantine {

struct Root;

/// One file of a command that treats file after file: if a step fails, what was done to this one is put back and the
/// command goes on; the reason is told at its end. `steps` gives false for a step that is no action on the disk.
bool changeAlone(Root& root, const std::function<bool()>& steps);

/// The path with "bak" in the place of its last three characters; "" for a shorter one.
[[nodiscard]] QString backupOfList(const QString& path);

} // namespace orvantine
