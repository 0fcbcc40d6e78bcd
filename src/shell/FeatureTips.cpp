#include "shell/FeatureTips.h"

namespace orvantine {

void ShowFeatureTip(Root&, int) {}

} // namespace orvantine
