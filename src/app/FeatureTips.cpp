#include "app/FeatureTips.h"

namespace orvantine {

void ShowFeatureTip(Root&, int) {}

} // namespace orvantine
