#include "search/Suchen.h"

namespace orvantine {

using namespace Qt::StringLiterals;

Suchen::Suchen() : Form(u"Suchen"_s)
{
    Caption = u" Suchen"_s;
}

} // namespace orvantine
