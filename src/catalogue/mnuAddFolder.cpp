#include "catalogue/mnuAddFolder.h"

#include "app/Command.h"
#include "app/FeatureTips.h"
#include "app/Root.h"
#include "search/FindAudio.h"
#include "search/IndexFiles.h"

namespace orvantine {

void mnuAddFolder_Click(Root& root)
{
    ShowFeatureTip(root, 113);
    if (!indexIsOfToday(root))
        SetIndexFile(root);
    root.services.forms.unload(*root.findAudio);
    Command command(root);
    (void)command.showModal(*root.findAudio);
}

} // namespace orvantine
