#include "shell/mnuSendtoInstall.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Quiet.h"
#include "app/Root.h"
#include "app/Siblings.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void mnuSendtoInstall_Click(Root& root)
{
    const QString sibling = u"Versandhilfe.dll"_s;
    if (startSibling(root, sibling))
        return;
    if (Dateiexistenz::FileExists(root, programFile(root, sibling)))
        return showQuietly(root, u"Die Komponente „Versandhilfe.dll“ konnte nicht gestartet werden."_s);
    Command(root).tell({.text = u"Die Komponente ''Versandhilfe.dll'' ist nicht vorhanden.    \n"
                                u"Um diese Funktion hinzuzufügen führen Sie bitte Setup aus."_s,
                        .title = u" Funktion ''Senden an''"_s});
}

} // namespace orvantine
