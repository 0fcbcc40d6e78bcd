#include "shell/Timer3.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/IniFiles.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "platform/FileDirPath.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void Timer3_Tick(Root& root)
{
    constexpr int TicksToStart = 90;
    const int ticks = root.Timer3.Tag.toInt() + 1;
    root.Timer3.Tag = QString::number(ticks);
    if (ticks < TicksToStart)
        return;
    root.Timer3.Enabled = false;
    const QString setup = FileDirPath::join(programFile(root, u"Updates"_s), u"Setup.exe");
    if (!Dateiexistenz::FileExists(root, setup))
        return;
    Command command(root);
    if (!command.pause(3.0) || !command.yield())
        return;
    root.services.launcher.start({.kind = LaunchKind::Program, .command = setup, .target = setup, .arguments = {}});
    IniFiles::WriteValue(root, databaseFile(root), u"Options"_s, u"Update"_s,
                         dateText(root.services.events.now().date()));
}

} // namespace orvantine
