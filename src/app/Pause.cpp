#include "app/Pause.h"

#include "app/Command.h"

namespace orvantine {

void Pause(Root& root, double seconds)
{
    (void)Command(root).pause(seconds);
}

} // namespace orvantine
