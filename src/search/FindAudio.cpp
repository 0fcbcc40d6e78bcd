#include "search/FindAudio.h"

namespace orvantine {

using namespace Qt::StringLiterals;

FindAudio::FindAudio() : Form(u"FindAudio"_s)
{
    Caption = u" Ordner durchsuchen"_s;
}

} // namespace orvantine
