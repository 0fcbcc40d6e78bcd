#include "transfer/BrowseFolders2k.h"

#include "app/Command.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

QString BrowseFolders(Root& root, FolderRoot from)
{
    return Command(root).folder(
        {.prompt = u"Wählen Sie den entsprechenden Zielordner oder Laufwerk ..."_s, .root = from, .folder = {}});
}

} // namespace orvantine
