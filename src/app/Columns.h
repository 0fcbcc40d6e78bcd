#pragma once

#include "platform/Twips.h"

#include <QStringView>

#include <array>

namespace orvantine {

/// Sub-items of a row of the catalogue, and their columns one further right.
namespace CatalogueItem {
inline constexpr int Name = 1;
inline constexpr int Path = 2;
inline constexpr int Tracks = 3;
} // namespace CatalogueItem

/// Sub-items of a row of the track list, and their columns one further right.
namespace TrackItem {
inline constexpr int Number = 1;
inline constexpr int Name = 2;
/// The full path of the track's file, also the key of its name in section `TagInfo`.
inline constexpr int Path = 3;
inline constexpr int File = 4;
} // namespace TrackItem

/// The column that shows a sub-item.
[[nodiscard]] constexpr int columnOf(int item)
{
    return item + 1;
}

struct ColumnRule
{
    QStringView title;
    /// As it is created; 0 for one that is only storage.
    Twips width = 0;
    /// The value of the settings key that keeps the width; empty for none.
    QStringView setting;
};

inline constexpr std::array<ColumnRule, 4> CatalogueColumns{{
    {u"ID", 0, {}},
    {u"Name", 2800, u"LV_1"},
    {u"Path", 0, {}},
    {u"Tracks", 900, u"LV_2"},
}};

/// Of path and file name only one is in sight, as mnuOrvmenu says.
inline constexpr std::array<ColumnRule, 5> TrackColumns{{
    {u"ID", 0, {}},
    {u"Track", 800, u"LV_4"},
    {u"Name", 3600, u"LV_5"},
    {u"Path", 2900, u"LV_6"},
    {u"Datei", 2200, u"LV_7"},
}};

/// A stored width below this one counts for nothing, and a visible column is never left narrower.
inline constexpr Twips NarrowestColumn = 500;

} // namespace orvantine
