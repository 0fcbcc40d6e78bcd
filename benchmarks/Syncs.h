#pragma once

#include <QString>

#include <functional>

namespace orvantine::bench {

/// How often the work brings something to the disk. Each time costs what the disk takes for it, whoever asks.
[[nodiscard]] int syncsOf(const std::function<void()>& work);

/// Milliseconds of a bare program that makes as many syncs beside `file`: the first one behind a copy of it, as the
/// recovery folder gets one, each other one behind a line of its own.
[[nodiscard]] double savingFloor(const QString& file, int syncs);

/// A line at the end of a file, brought to the disk.
void syncLine(const QString& path);

/// ", 12 syncs", for the name of a row whose floor makes them too.
[[nodiscard]] QString told(int syncs);

} // namespace orvantine::bench
