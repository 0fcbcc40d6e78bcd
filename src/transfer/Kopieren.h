#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// The progress dialog of a long command, which sees by Root.Tag "2" that it is to stop. What tells of single files is
/// out of sight until a command shows it (see CarryProgress).
struct Kopieren : Form
{
    Kopieren();

    Label Label2{controls, u"Label2"};
    /// The file that is on its way.
    Label LDatei{controls, u"LDatei"};
    ProgressBar pFortschritt{controls, u"pFortschritt"};
    /// Bytes done of all.
    Label LMenge{controls, u"LMenge"};
    /// Speed, and the time that is left.
    Label LTempo{controls, u"LTempo"};
    Label bEscTaste{controls, u"bEscTaste"};
    Button bAbbrechen{controls, u"bAbbrechen"};
    Animation pAnimations{controls, u"pAnimations"};

    /// A stop was asked for since the dialog came up. The player writes to Root.Tag too, and may undo the mark there.
    bool stopped = false;
};

void setUpKopieren(Root& root);

/// Shows the dialog beside the main window under this title and text, and goes on.
void showKopieren(Root& root, const QString& caption, const QString& text);

/// The same with the texts of a transfer.
void showTransfer(Root& root);

/// What tells of single files goes out of sight.
void hideProgress(Kopieren& form);

/// From now on the work runs to its end: neither Esc nor the button stops it.
void forbidStop(Root& root);

/// The user has asked for a stop.
[[nodiscard]] bool stopAsked(const Root& root);

} // namespace orvantine
