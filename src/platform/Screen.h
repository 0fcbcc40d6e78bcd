#pragma once

#include "platform/Twips.h"

#include <algorithm>
#include <vector>

namespace orvantine {

/// A part of the desktop.
struct ScreenArea
{
    Twips left = 0;
    Twips top = 0;
    Twips width = 0;
    Twips height = 0;

    [[nodiscard]] bool contains(Twips x, Twips y) const
    {
        return x >= left && x < left + width && y >= top && y < top + height;
    }
};

struct DesktopScreen
{
    ScreenArea geometry;
    /// Without the panels of the desktop.
    ScreenArea available;
};

class Screen
{
public:
    virtual ~Screen() = default;

    /// The primary one first; empty on a desktop without any.
    [[nodiscard]] virtual std::vector<DesktopScreen> screens() const = 0;

    /// The screen that holds the point, else the primary one.
    [[nodiscard]] DesktopScreen at(Twips x, Twips y) const
    {
        const std::vector<DesktopScreen> all = screens();
        const auto holds = [x, y](const DesktopScreen& screen) { return screen.geometry.contains(x, y); };
        const auto found = std::find_if(all.begin(), all.end(), holds);
        if (found != all.end())
            return *found;
        return all.empty() ? DesktopScreen() : all.front();
    }
    [[nodiscard]] bool holds(Twips x, Twips y) const
    {
        const std::vector<DesktopScreen> all = screens();
        return std::any_of(all.begin(), all.end(),
                           [x, y](const DesktopScreen& screen) { return screen.geometry.contains(x, y); });
    }
};

} // namespace orvantine
