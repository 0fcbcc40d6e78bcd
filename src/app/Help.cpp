#include "app/Help.h"

#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void showHelp(Root& root, const char16_t* topic)
{
    const QString help = programFile(root, u"Orvantine.chm"_s);
    if (!Dateiexistenz::FileExists(root, help))
        return;
    const QString name = QString::fromUtf16(topic);
    root.services.launcher.start({.kind = LaunchKind::Help,
                                  .command = u"hh.exe "_s + help + u"::"_s + name,
                                  .target = help,
                                  .arguments = {name}});
}

} // namespace orvantine
