#include "app/FormResize.h"

#include "app/Root.h"

#include <algorithm>

namespace orvantine {

namespace {

/// The frame's title is no lower than this.
constexpr Twips LeastTitle = 300;

ScreenArea areaOf(const Root& root)
{
    return root.services.screen.at(root.Left.value(), root.Top.value()).available;
}

/// No area: no screen is known, and nothing is held back.
Twips atMost(Twips length, Twips area, Twips frame)
{
    return area <= 0 ? length : std::min(length, std::max(area - frame, Twips{1}));
}

/// A length that has room with the least frame there is stays as it is, to the twip.
void shrink(QProperty<Twips>& place, QProperty<Twips>& length, Twips begin, Twips area, Twips leastFrame, Twips frame)
{
    if (length.value() <= area - leastFrame)
        return;
    length = atMost(length.value(), area, frame);
    place = begin;
}

void moveInside(QProperty<Twips>& place, Twips length, Twips begin, Twips area, Twips frame)
{
    if (place.value() < begin)
        place = begin;
    else if (qint64{place.value()} + length > begin + area)
        place = std::max(begin + area - length - frame, begin);
}

/// How much of one length lies in the other.
qint64 common(qint64 begin, qint64 length, qint64 otherBegin, qint64 otherLength)
{
    return std::min(begin + length, otherBegin + otherLength) - std::max(begin, otherBegin);
}

/// Enough of the title is seen to take the window by it.
bool canBeReached(const Root& root)
{
    constexpr WindowSize Grip{600, 150};
    const std::vector<DesktopScreen> screens = root.services.screen.screens();
    return std::any_of(screens.begin(), screens.end(), [&](const DesktopScreen& screen) {
        const ScreenArea& area = screen.available;
        return common(root.Left.value(), root.Width.value(), area.left, area.width) >= Grip.width &&
               common(root.Top.value(), LeastTitle, area.top, area.height) >= Grip.height;
    });
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
    shrink(root.Left, root.Width, area.left, area.width, 0, FrameRoom.width);
    shrink(root.Top, root.Height, area.top, area.height, LeastTitle, FrameRoom.height);
    if (canBeReached(root))
        return;
    moveInside(root.Left, root.Width.value(), area.left, area.width, FrameRoom.width);
    moveInside(root.Top, root.Height.value(), area.top, area.height, FrameRoom.height);
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
