#include "catalogue/mnuAddFolder.h"

#include "app/Command.h"
#include "app/Root.h"
#include "search/FindAudio.h"
#include "search/IndexFiles.h"

namespace orvantine {

void mnuAddFolder_Click(Root& root)
{
    // What the finder finds would be passed over in front of a command that waits.
    if (!isAdmitted(root, Changes::Both))
        return;
    Command command(root);
    if (!indexIsOfToday(root))
        runCommand(root, Changes::Both, [&root] { SetIndexFile(root); });
    if (command.ended())
        return;
    root.services.forms.unload(*root.findAudio);
    (void)command.showModal(*root.findAudio);
}

} // namespace orvantine
