#include "catalogue/mnuNeu.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Root.h"
#include "catalogue/NewPlayliste.h"

namespace orvantine {

void mnuNeu_Click(Root& root)
{
    Command command(root);
    if (!mayAddRow(root, command))
        return;
    QString path = unnamedPlaylist(root);
    if (!NewPlayliste(root, path, {}))
        return;
    root.mnuSpeichern.Click();
    if (!command.ended())
        root.LListView1.Click();
}

} // namespace orvantine
