#include "shell/TooltipsClass.h"

#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void TooltipsClass::add(Control& control, const QString& toolTipText)
{
    control.ToolTipText = toolTipText;
    m_controls.push_back(&control);
}

void TooltipsClass::removeAll()
{
    for (Control* control : m_controls)
        control->ToolTipText = QString();
    m_controls.clear();
}

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
