#include "app/TooltipRegister.h"

#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void TooltipRegister(Root& root, int on)
{
    root.TT.removeAll();
    if (on == 0)
        return;
    root.TT.add(root.pSymbole, u"Klicken Sie hier um die gesamte Playlisten wiederzugeben."_s);
    root.TT.add(root.pPausePlayer, u"Klicken Sie hier um die \nWiedergabe zu starten."_s);
    root.TT.add(root.pSoundPlayer, u"Die Wiedergabe starten oder \nPause für die Wiedergabe."_s);
    root.TT.add(root.pPlayBack, u"Vorherigen Titel \nwiedergeben."_s);
    root.TT.add(root.pPlayForward, u"Nächsten Titel \nwiedergeben."_s);
    root.TT.add(root.bMoveDown, u"Eintrag in Datenbank nach \nunten verschieben."_s);
    root.TT.add(root.bMoveUp, u"Eintrag in Datenbank nach \noben verschieben."_s);
    root.TT.add(root.bEntryDown, u"Eintrag in Playliste nach \nunten verschieben."_s);
    root.TT.add(root.bEntryUp, u"Eintrag in Playliste nach \noben verschieben."_s);
}

} // namespace orvantine
