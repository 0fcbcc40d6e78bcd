#include "app/Help.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void showHelp(Root& root, const char16_t* topic)
{
    const QString help = FileDirPath::join(root.services.folders.program, u"Orvantine.chm");
    if (!Dateiexistenz::FileExists(root, help))
        return;
    const QString name = QString::fromUtf16(topic);
    root.services.launcher.start({.kind = LaunchKind::Help,
                                  .command = u"hh.exe "_s + help + u"::"_s + name,
                                  .target = help,
                                  .arguments = {name}});
}

} // namespace orvantine
