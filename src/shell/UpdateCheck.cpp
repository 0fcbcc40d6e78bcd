#include "shell/UpdateCheck.h"

namespace orvantine {

void UpdateCheck(Root&) {}

} // namespace orvantine
