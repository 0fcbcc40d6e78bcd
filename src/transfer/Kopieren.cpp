#include "transfer/Kopieren.h"

#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// What stands there until a command says otherwise.
void takeOwnTexts(Kopieren& form)
{
    form.Caption = u" Datenübertragung"_s;
    form.Label2.Caption = u"Bitte warten Sie, bis der Datenübertragung vollständig abgeschlossen wurde."_s;
    hideProgress(form);
}

/// The two pictures, of a transfer and of any other work, lie in the program's file or in one beside it.
void loadAnimation(Root& root)
{
    constexpr int Transfer = 103;
    constexpr int Other = 104;
    Animation& animation = root.kopieren->pAnimations;
    const QString program = programFile(root, root.services.start.stem + u".exe"_s);
    animation.File = Dateiexistenz::FileExists(root, program) ? program : programFile(root, u"ResourceXpStyles.res"_s);
    animation.Resource = root.Tag == u"1"_s ? Transfer : Other;
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
    form.Load = [&root, &form] {
        form.bEscTaste.Visible = true;
        form.bAbbrechen.Enabled = true;
        form.stopped = false;
        loadAnimation(root);
        form.pAnimations.play();
    };
    form.Unload = [&form] {
        form.pAnimations.stop();
        form.stopped = false;
        takeOwnTexts(form);
    };
    const auto stop = [&root, &form] {
        if (!form.bAbbrechen.Enabled.value())
            return;
        root.Tag = u"2"_s;
        form.stopped = true;
    };
    form.bAbbrechen.Click = stop;
    form.KeyDown = [stop](int code) {
        if (code == Escape)
            stop();
    };
}

void showKopieren(Root& root, const QString& caption, const QString& text)
{
    root.kopieren->Caption = caption;
    root.kopieren->Label2.Caption = text;
    root.services.forms.show(*root.kopieren);
}

void showTransfer(Root& root)
{
    showKopieren(root, u" Datenübertragung"_s,
                 u"Bitte warten Sie, bis die Datenübertragung vollständig abgeschlossen wurde."_s);
}

void hideProgress(Kopieren& form)
{
    for (Label* const label : {&form.LDatei, &form.LMenge, &form.LTempo}) {
        label->Caption = QString();
        label->Visible = false;
    }
    form.pFortschritt.Visible = false;
    form.pFortschritt.Value = 0;
}

void forbidStop(Root& root)
{
    root.kopieren->bAbbrechen.Enabled = false;
    root.kopieren->bEscTaste.Visible = false;
}

bool stopAsked(const Root& root)
{
    return root.Tag == u"2"_s || root.kopieren->stopped;
}

} // namespace orvantine
