#include "shell/Shutdown.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/PlayButtons.h"
#include "app/Root.h"
#include "app/TooltipRegister.h"
#include "metadata/frmID3.h"
#include "shell/SaveOptions.h"

#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void unloadTagForms(Root& root)
{
    root.services.forms.unload(*root.tagForm);
    root.services.forms.unload(*root.otherTagForm);
}

} // namespace

void Form_QueryUnload(Root& root)
{
    stopIfRunning(root);
    // A hidden start that is not at its end has no window yet that could be brought back.
    if (root.loaded && root.State.value() == WindowState::Minimized) {
        root.State = WindowState::Normal;
        root.Visible = true;
        if (!Command(root).yield())
            return;
    }
    if (root.Visible.value())
        SaveOptions(root);
    root.services.tray.remove();
    TooltipRegister(root, 0);
    root.Timer3.Enabled = false;
    unloadTagForms(root);
    if (root.Tag != u"9"_s)
        mnuBeenden_Click(root);
    else
        root.services.events.endProcess();
}

void endBySession(Root& root)
{
    // Asked again while it ends, it goes on as it was.
    if (root.services.events.ended() || std::exchange(root.ending, true))
        return;
    Form_QueryUnload(root);
}

void mnuBeenden_Click(Root& root)
{
    if (root.Visible.value())
        SaveOptions(root);
    // An event inside has ended the program already.
    if (root.services.events.ended())
        return;

    const QString temporary = namedTemporaryFile(root);
    if (Dateiexistenz::FileExists(root, temporary))
        root.files.remove(temporary);

    MediaPlayer& player = root.services.mediaplayer;
    if (player.playState() == PlayState::Playing)
        player.stop();
    if (player.playState() == PlayState::Ready)
        player.close();

    root.services.tray.remove();
    root.Timer1.Enabled = false;
    root.Timer3.Enabled = false;
    unloadTagForms(root);
    root.Tag = u"9"_s;
    TooltipRegister(root, 0);
    if (Command(root).yield())
        root.services.events.endProcess();
}

} // namespace orvantine
