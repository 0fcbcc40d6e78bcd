#include "metadata/TagNaming.h"

namespace orvantine {

void mnuSetTagName_Click(Root&) {}

} // namespace orvantine
