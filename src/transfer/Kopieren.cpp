#include "transfer/Kopieren.h"

#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// What stands there until a command says otherwise.
void takeOwnTexts(Kopieren& form)
{
    form.Caption = u" Datenübertragung"_s;
    form.Label2.Caption = u"Bitte warten Sie, bis der Datenübertragung vollständig abgeschlossen wurde."_s;
}

} // namespace

Kopieren::Kopieren() : Form(u"Kopieren"_s)
{
    takeOwnTexts(*this);
    bEscTaste.Caption = u"Taste \"ESC\" zum Abbrechen"_s;
    bAbbrechen.Caption = u"&Abbrechen"_s;
}

void setUpKopieren(Root& root)
{
    constexpr int Escape = 27;
    Kopieren& form = *root.kopieren;
    form.Load = [&form] {
        form.bEscTaste.Visible = true;
        form.pAnimations.play();
    };
    form.Unload = [&form] {
        form.pAnimations.stop();
        takeOwnTexts(form);
    };
    const auto stop = [&root] { root.Tag = u"2"_s; };
    form.bAbbrechen.Click = stop;
    form.KeyDown = [stop](int code) {
        if (code == Escape)
            stop();
    };
}

} // namespace orvantine
