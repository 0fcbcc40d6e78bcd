#include "playback/Tray.h"

#include "app/Command.h"
#include "app/Root.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void hideWindow(Root& root)
{
    root.State = WindowState::Minimized;
    root.Visible = false;
}

/// A window last closed on a larger screen must not come back out of sight.
void bringBack(Root& root)
{
    constexpr Twips SafeTop = 500;
    constexpr Twips SafeLeft = 300;
    root.services.forms.toFront(root);
    if (!Command(root).yield())
        return;
    const std::vector<DesktopScreen> screens = root.services.screen.screens();
    const auto any = [&screens](const auto& holds) { return std::any_of(screens.begin(), screens.end(), holds); };
    const Twips top = root.Top.value();
    const Twips left = root.Left.value();
    if (!any([top](const DesktopScreen& screen) { return top < screen.geometry.top + screen.geometry.height; }))
        root.Top = SafeTop;
    if (!any([left](const DesktopScreen& screen) { return left < screen.geometry.left + screen.geometry.width; }))
        root.Left = SafeLeft;
    root.State = WindowState::Normal;
    root.Visible = true;
}

} // namespace

void pTrayicons_MouseMove(Root& root, int x)
{
    const QString message = QString::number(x, 16).toUpper();
    // Required: the two constants are literal, so pixels of another width leave the icon dead.
    if ((message != u"1E3C"_s && message != u"1E0F"_s) || !root.loaded)
        return;
    if (root.Visible.value())
        hideWindow(root);
    else
        bringBack(root);
}

void pTrayicon_Click(Root& root)
{
    if (root.tDateiname.Enabled.value())
        root.mnuBeschriftung.press();
}

void tPlaylisteinträge_DblClick(Root& root)
{
    if (root.tDateiname.Enabled.value())
        root.mnuUmbenennen.press();
}

void pMpeg_DblClick(Root& root)
{
    if (root.LListView1.count() > 0)
        root.pCovers.Click();
}

} // namespace orvantine
