#include "shell/Tastatur.h"

#include "app/Command.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QStringList toldKeys()
{
    return {u"Strg + Bild auf\tPlayliste o. Sound nach oben verschieben"_s,
            u"Strg + Bild ab\tPlayliste o. Sound nach unten verschieben"_s, u"Alt + Bild ab\tNächsten Song abspielen"_s,
            u"Alt + Bild auf\tVorherigen Song abspielen"_s, u"Alt + Leertaste\tPause / Weiterspielen"_s,
            u"Alt + Ende\tWiedergabe stoppen"_s, u"Alt + Pos 1\tWiedergabe starten"_s,
            u"Alt + Enter\tEigenschaften anzeigen"_s, u"Alt + Unten\tNächsten Song abspielen"_s,
            u"Alt + Oben\tVorherigen Song abspielen"_s,
            // Required: the texts of these two are exchanged.
            u"Alt + Rechts\tSong schnell zurückspulen"_s, u"Alt + Links\tSong schnell vorspulen"_s};
}

QStringList moreKeys()
{
    return {u"Enter\tPlayliste o. Sound abspielen"_s,
            u"Alt + 0 (Ziffernblock)\tPause / Weiterspielen"_s,
            u"Umschalt + <\tSound nach oben verschieben"_s,
            u"Strg + N\tListe hinzufügen"_s,
            u"Strg + L\tNeue Playliste"_s,
            u"Strg + O\tOrdner durchsuchen"_s,
            u"Strg + P\tWiedergabe starten"_s,
            u"Strg + I\tPlayliste favoritisieren"_s,
            u"Strg + S\tDatenbank speichern"_s,
            u"Strg + C, Strg + V\tKopieren, Einfügen"_s,
            u"Strg + F\tSuchen"_s,
            u"F1\tHilfethemen"_s,
            u"F2\tPlayliste umbenennen"_s,
            u"F10\tMenüleiste"_s,
            u"Menütaste\tMenü der Playliste o. des Titels"_s,
            u"Entf (auf dem Cover)\tCD-Cover löschen"_s,
            u"Alt + Q\tProgramm beenden"_s};
}

} // namespace

Tastatur::Tastatur() : Form(u"Tastatur"_s)
{
    Caption = u" Tastaturbefehle"_s;
    LHeading.Caption = u"In der Wiedergabe- und Orvante:"_s;
    LMoreHeading.Caption = u"Außerdem auf diesem Desktop:"_s;
    LKeys.List = toldKeys();
    LMoreKeys.List = moreKeys();
    bAbbrechen.Caption = u"&Schließen"_s;
}

void mnuTastenbefehle_Click(Root& root)
{
    (void)Command(root).showModal(*root.tastatur);
}

void setUpTastatur(Root& root)
{
    Tastatur& form = *root.tastatur;
    form.bAbbrechen.Click = [&root, &form] { root.services.forms.unload(form); };
}

} // namespace orvantine
