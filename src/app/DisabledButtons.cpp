#include "app/DisabledButtons.h"

#include "app/Root.h"

namespace orvantine {

void DisabledButtons(Root& root, int off)
{
    const bool on = off == 0;
    for (MenuItem* menu : {&root.mnuBearbeiten, &root.mnuAnsicht, &root.mnuVerwaltung, &root.mnuHelp})
        menu->Enabled = on;
    root.LListView1.Enabled = on;
    root.LListView2.Enabled = on;
    root.pAnimations.Enabled = on;
    root.pSymbole.Enabled = on;
    // While something runs the play button stays off: the two buttons are always opposite.
    root.pSoundPlayer.Enabled = on && !root.pPausePlayer.Enabled.value();
    root.buttonsDisabled = !on;
}

void DisabledButtons(Root& root)
{
    DisabledButtons(root, root.buttonsDisabled ? 0 : 1);
}

} // namespace orvantine
