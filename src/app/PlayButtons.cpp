#include "app/PlayButtons.h"

#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void showRunning(Root& root, bool running)
{
    root.pSoundPlayer.Enabled = !running;
    root.pPausePlayer.Enabled = running;
    root.mnuWiedergabe.Caption = running ? u"Wiedergabe stoppen "_s : u"Wiedergabe starten "_s;
}

void stopIfRunning(Root& root)
{
    if (root.pPausePlayer.Enabled.value())
        root.pStopPlayer.Click();
}

} // namespace orvantine
