#include "app/PlayButtons.h"

#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void showRunning(Root& root, bool running)
{
    // The one that comes takes over the focus of the one that goes.
    Control& on = running ? root.pPausePlayer : root.pSoundPlayer;
    Control& off = running ? root.pSoundPlayer : root.pPausePlayer;
    on.Enabled = true;
    off.Enabled = false;
    root.mnuWiedergabe.Caption = running ? u"Wiedergabe stoppen "_s : u"Wiedergabe starten "_s;
}

void stopIfRunning(Root& root)
{
    if (root.pPausePlayer.Enabled.value())
        root.pStopPlayer.Click();
}

} // namespace orvantine
