#include "app/FormResize.h"

#include "app/Root.h"

#include <algorithm>

namespace orvantine {

void Form_Resize(Root& root)
{
    if (root.State.value() == WindowState::Minimized) {
        if (root.services.tray.available())
            root.Visible = false;
        return;
    }
    if (root.State.value() == WindowState::Maximized)
        return;
    root.Width = std::max(root.Width.value(), LeastWidth);
    root.Height = std::max(root.Height.value(), LeastHeight);
}

} // namespace orvantine
