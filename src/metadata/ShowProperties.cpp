#include "metadata/ShowProperties.h"

#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

void ShowProperties(Root& root, const QString& path)
{
    root.services.launcher.start(
        {.kind = LaunchKind::Properties, .command = u"properties "_s + path, .target = path, .arguments = {}});
}

} // namespace orvantine
