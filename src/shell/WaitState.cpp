#include "shell/WaitState.h"

#include "app/Root.h"
#include "shell/MainWindow.h"

namespace orvantine {

void enterWait(Root& root)
{
    root.Pointer = MousePointer::Hourglass;
    root.LListView1.Enabled = false;
    root.LListView2.Enabled = false;
    DisabledButtons(root, 1);
}

void leaveWait(Root& root)
{
    root.Pointer = MousePointer::Default;
    root.LListView1.Enabled = true;
    root.LListView2.Enabled = true;
    DisabledButtons(root, 0);
}

} // namespace orvantine
