#include "search/IndexFiles.h"

#include "app/DataFolder.h"
#include "app/Root.h"
#include "app/TextLimits.h"

namespace orvantine {

using namespace Qt::StringLiterals;

bool indexIsOfToday(const Root& root)
{
    const std::optional<QDateTime> changed = root.files.modified(indexFile(root));
    return changed && dateText(changed->date()) == dateText(root.services.events.now().date());
}

void SetIndexFile(Root&) {}

} // namespace orvantine
