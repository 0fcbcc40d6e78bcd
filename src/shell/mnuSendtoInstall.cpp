#include "shell/mnuSendtoInstall.h"

#include "app/Command.h"
#include "app/Root.h"
#include "app/Siblings.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void mnuSendtoInstall_Click(Root& root)
{
    if (startSibling(root, u"Versandhilfe.dll"_s))
        return;
    Command(root).tell({.text = u"Die Komponente ''Versandhilfe.dll'' ist nicht vorhanden.    \n"
                                u"Um diese Funktion hinzuzufügen führen Sie bitte Setup aus."_s,
                        .title = u" Funktion ''Senden an''"_s});
}

} // namespace orvantine
