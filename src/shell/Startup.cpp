#include "shell/Startup.h"

namespace orvantine {

using namespace Qt::StringLiterals;

Startup::Startup() : Form(u"Startup"_s)
{
    RTitle.Caption = u"Orvanten Manager"_s;
    RStatus.Caption = u"Wiedergabelisten werden geladen ..."_s;
}

} // namespace orvantine
