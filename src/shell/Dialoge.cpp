#include "shell/Dialoge.h"

#include "app/Command.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int Cancel = 0;
constexpr int Back = 1;
constexpr int Next = 2;

} // namespace

Dialoge::Dialoge() : Form(u"Dialoge"_s)
{
    Caption = u" Herzlich Willkommen"_s;
    bLabel[Cancel].Caption = u"Abbruch"_s;
    bLabel[Back].Caption = u"Zurück"_s;
    bLabel[Next].Caption = u"Weiter"_s;
    for (int i = Cancel; i <= Next; ++i)
        bButton[i].Caption = bLabel[i].Caption.value();
    RCaption.Caption = u"Möglicherweise haben Sie auch schon festgestellt, dass es gar nicht so leicht ist seine "
                       u"Musiklisten übersichtlich in einem Programm zu verwalten. Diese Zeiten sind jedoch vorbei, "
                       u"denn mit der Orvantenverwaltung von Verdanis haben Sie eine übersichtliche und unerhört gute "
                       u"Listenverwaltung."_s;
    RHinweis.Caption = u"Es können automatische Wiedergabelisten erzeugt werden. Geben Sie einen Ordner an, indem Sie "
                       u"die Sounddateien speichern. Unterverzeichnisse werden anschließend als Wiedergabeliste "
                       u"hinzugefügt."_s;
    LOrdner.Caption = u"&Ordner:"_s;
    bOrdner.Caption = u"&Durchsuchen ..."_s;
    bSubDir.Caption = u"Unterordner in neue Playliste hinzufügen "_s;
    bSndfiles.Caption = u"Sounds in seperate Playliste einfügen "_s;
    Label1.Caption = u"Bitte haben Sie einen kleinen Moment Geduld. Die Sounddateien werden im ausgewählten Ordner "
                     u"überprüft und Ihre Wiedergabelisten werden jetzt zusammengestellt."_s;
    Label2.Caption = u"Wenn Sie den Vorgang abbrechen, dann werden die Playlisten unvollständig in den Orvanten "
                     u"Manager hinzugefügt."_s;
}

void setUpDialoge(Root& root)
{
    Dialoge& form = *root.dialoge;
    // Nothing can add the lists of a folder yet: the greeting stands alone, and no button leads on to where none is.
    form.Load = [&form] { form.page = 0; };
    for (const int step : {Back, Next}) {
        form.bButton[step].Visible = false;
        form.bLabel[step].Visible = false;
    }
    form.bButton[Cancel].Click = [&root, &form] { root.services.forms.unload(form); };
    form.bOrdner.Click = [&root, &form] {
        const QString folder = Command(root).folder(
            {.prompt = u"Wählen Sie den entsprechenden Zielordner oder Laufwerk ..."_s, .folder = form.tOrdner.Text});
        if (!folder.isEmpty())
            form.tOrdner.Text = folder;
    };
}

} // namespace orvantine
