#include "app/FormResize.h"

#include "app/Root.h"

#include <algorithm>

namespace orvantine {

namespace {

ScreenArea areaOf(const Root& root)
{
    return root.services.screen.at(root.Left.value(), root.Top.value()).available;
}

/// No area: no screen is known, and nothing is held back.
Twips atMost(Twips length, Twips area, Twips frame)
{
    return area <= 0 ? length : std::min(length, std::max(area - frame, Twips{1}));
}

/// What lies in the area stays as it is, to the twip.
void keepInside(QProperty<Twips>& place, QProperty<Twips>& length, Twips begin, Twips area, Twips frame)
{
    const Twips most = atMost(length.value(), area, frame);
    if (most < length.value()) {
        length = most;
        place = begin;
    } else if (place.value() < begin) {
        place = begin;
    } else if (place.value() + most > begin + area) {
        place = begin + area - most - frame;
    }
}

} // namespace

WindowSize leastSize(const Root& root)
{
    const ScreenArea area = areaOf(root);
    return {atMost(LeastWidth, area.width, FrameRoom.width), atMost(LeastHeight, area.height, FrameRoom.height)};
}

void keepOnScreen(Root& root)
{
    const ScreenArea area = areaOf(root);
    if (area.width <= 0 || area.height <= 0)
        return;
    keepInside(root.Left, root.Width, area.left, area.width, FrameRoom.width);
    keepInside(root.Top, root.Height, area.top, area.height, FrameRoom.height);
}

void Form_Resize(Root& root)
{
    if (root.State.value() == WindowState::Minimized) {
        if (root.services.tray.stands())
            root.Visible = false;
        return;
    }
    if (root.State.value() == WindowState::Maximized)
        return;
    const WindowSize least = leastSize(root);
    root.Width = std::max(root.Width.value(), least.width);
    root.Height = std::max(root.Height.value(), least.height);
}

} // namespace orvantine
