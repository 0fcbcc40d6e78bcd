#include "shell/Wiring.h"

#include "app/Root.h"
#include "shell/Dialoge.h"
#include "shell/Info.h"

namespace orvantine {

void wire(Root& root)
{
    setUpInfo(root);
    setUpDialoge(root);
}

} // namespace orvantine
