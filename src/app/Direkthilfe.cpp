#include "app/Direkthilfe.h"

#include "app/Command.h"
#include "app/Registry.h"
#include "app/Root.h"

#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr Twips AroundText = 1000;

void flip(CheckBox& box)
{
    box.Value = !box.Value.value();
}

void load(Direkthilfe& form)
{
    // Flipped when the form comes up: the first one is seen marked, the second one is not.
    form.BHelpShow.Value = false;
    form.BHelpDisabled.Value = true;
    flip(form.BHelpShow);
    flip(form.BHelpDisabled);
    form.Height = form.RText.Height.value() + AroundText;
    form.pressed = false;
}

void BReady_Click(Root& root, Direkthilfe& form)
{
    // A second press in the wait below would write the opposite.
    if (std::exchange(form.pressed, true))
        return;
    flip(form.BHelpShow);
    flip(form.BHelpDisabled);
    // Required: another key than the one that the gate reads, so the choice has no effect on this program.
    const QString key = u"Software\\Verdanis\\Quelltextwart"_s;
    if (!Registry::KeyExists(root, Hive::CurrentUser, key))
        Registry::CreateKey(root, Hive::CurrentUser, key);
    const auto write = [&root, &key](const QString& name, const CheckBox& box) {
        Registry::WriteValue(root, Hive::CurrentUser, key, name, static_cast<qint16>(box.Value.value() ? 1 : 0));
    };
    write(form.RHelpID.Caption, form.BHelpShow);
    write(u"HelpDirekt"_s, form.BHelpDisabled);
    if (Command(root).yield())
        root.services.forms.unload(form);
}

} // namespace

Direkthilfe::Direkthilfe() : Form(u"Direkthilfe"_s)
{
    Caption = u" Verdanis Quelltipps"_s;
    RProblem.Caption = u"Das folgende Problem wurde entdeckt:"_s;
    BHelpShow.Caption = u"&Diesen Dialog beim nächsten Start wieder anzeigen "_s;
    BHelpDisabled.Caption = u"&Nachrichten zu allen Themen nicht wieder anzeigen "_s;
    BReady.Caption = u"&Weiter"_s;
}

void setUpDirekthilfe(Root& root)
{
    Direkthilfe& form = *root.direkthilfe;
    form.Load = [&form] { load(form); };
    form.BReady.Click = [&root, &form] { BReady_Click(root, form); };
}

} // namespace orvantine
