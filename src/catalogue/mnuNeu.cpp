#include "catalogue/mnuNeu.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Root.h"
#include "catalogue/NewPlayliste.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void mnuNeu_Click(Root& root)
{
    Command command(root);
    if (!mayAddRow(root, command))
        return;
    QString path = unnamedPlaylist(root);
    if (!NewPlayliste(root, path, {}))
        return;
    root.mnuSpeichern.Click();
    if (command.ended())
        return;
    // Under the filter the save was refused, which would have left no row marked as loaded.
    root.LListView1.Tag = u"0"_s;
    root.LListView1.Click();
}

} // namespace orvantine
