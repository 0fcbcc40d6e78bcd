#include "app/Siblings.h"

#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Root.h"

namespace orvantine {

bool startSibling(Root& root, const QString& name, const QString& arguments)
{
    const QString program = programFile(root, name);
    if (!Dateiexistenz::FileExists(root, program))
        return false;
    return root.services.launcher.start({.kind = LaunchKind::Program,
                                         .command = arguments.isEmpty() ? program : program + u' ' + arguments,
                                         .target = program,
                                         .arguments = arguments.split(u' ', Qt::SkipEmptyParts)});
}

} // namespace orvantine
