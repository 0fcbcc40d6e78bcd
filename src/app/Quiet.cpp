#include "app/Quiet.h"

#include "app/Root.h"

namespace orvantine {

void showQuietly(Root& root, const QString& text)
{
    root.quietLine.Caption = text;
    root.quietLine.Visible = !text.isEmpty();
    // A line that follows another one gets its whole time.
    root.quietTimer.Enabled = false;
    root.quietTimer.Enabled = !text.isEmpty();
}

void quietTimer_Tick(Root& root)
{
    showQuietly(root, {});
}

} // namespace orvantine
