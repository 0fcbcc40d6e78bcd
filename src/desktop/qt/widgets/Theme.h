#pragma once

#include "platform/Controls.h"

#include <QColor>
#include <QIcon>
#include <QPalette>

namespace orvantine::Theme {

/// Distances between things, in device-independent pixels.
inline constexpr int Gap = 6;
inline constexpr int Margin = 10;
inline constexpr int CornerRadius = 6;

[[nodiscard]] bool isDark(const QPalette& palette);

/// Chooses the light or the dark variant of the icon set by the application's palette. Run before the first icon is
/// asked for, and again when the palette changes.
void setUpIcons();

/// An icon of the one icon set, in the variant of the palette that is on when it is drawn; without the set, a shape of
/// our own for the few that the window needs, and null for the others.
[[nodiscard]] QIcon icon(const QString& name);

/// The icon that a list's picture name stands for: "Icon_1" a playlist, "Icon_2" a track, "Icon_6" a favourite,
/// "Icon_C" the playing playlist.
[[nodiscard]] QIcon listIcon(const QString& pictureName);

/// A colour of the logic as it is drawn on this palette: the red of missing files stays readable on dark ground.
[[nodiscard]] QColor textColor(Color color, const QPalette& palette);

/// `amount` 0 gives the first colour, 1 the second.
[[nodiscard]] QColor mix(const QColor& from, const QColor& to, double amount);

/// Thin lines between areas and rows.
[[nodiscard]] QColor lineColor(const QPalette& palette);

/// Text of lesser weight.
[[nodiscard]] QColor dimText(const QPalette& palette);

} // namespace orvantine::Theme
