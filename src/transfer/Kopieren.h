#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// The progress dialog of a long command, which sees by Root.Tag "2" that it is to stop.
struct Kopieren : Form
{
    Kopieren();

    Label Label2{controls, u"Label2"};
    Label bEscTaste{controls, u"bEscTaste"};
    Button bAbbrechen{controls, u"bAbbrechen"};
    Animation pAnimations{controls, u"pAnimations"};
};

void setUpKopieren(Root& root);

} // namespace orvantine
