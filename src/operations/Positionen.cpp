#include "operations/Positionen.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Help.h"
#include "app/IniFiles.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/GetPlayListe.h"
#include "catalogue/mnuLaden.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void load(const Root& root, Positionen& form)
{
    form.Caption = u" Einträge positionieren"_s;
    form.sHilfe.Caption = u"Markieren Sie den Eintrag und halten Sie die Maustaste gedrückt während Sie den Eintrag "
                          u"nach oben oder unten ziehen."_s;
    for (Control* control : std::initializer_list<Control*>{&form.BReady, &form.bAbbrechen, &form.LSortView})
        control->Enabled = true;

    const ListView& list = root.LListView1;
    QStringList lines;
    for (int row = 1; row <= list.count(); ++row)
        lines += withoutControls(playlistName(root, row)) + u'\t' + withoutControls(playlistPath(root, row)) + u'\t' +
                 QString::number(row);
    form.LSortView.ListIndex = -1;
    form.LSortView.List = lines;
    form.sPlaylisten.Caption = QString::number(list.count()) + u" Playlisten in der Datenbank"_s;
}

/// The row `number` of the backup becomes the row `place + 1` of the database.
void writeRow(Root& root, int place, int number)
{
    CatalogueEntry entry = readEntry(root, backupFile(root), number);
    entry.id = padded(place, 3);
    if (entry.favourite.isEmpty())
        entry.favourite = u"0"_s;
    writeFilledValues(root, databaseFile(root), place + 1, entry);
}

enum class Rewritten { Yes, No, Ended };

/// Rewrites the section in the order of the lines.
Rewritten rewriteIndex(Root& root, Command& command, const QStringList& lines)
{
    const QString database = databaseFile(root);
    WholeChange together(root.files, WholeChange::Events::Served);

    if (Dateiexistenz::FileExists(root, backupFile(root)))
        root.files.remove(backupFile(root));

    backUpDatabase(root);

    // Required: deleted before the copy is read, whether there is one or not.
    IniFiles::DeleteSection(root, database, u"Index"_s);
    bool goesOn = command.yield();
    for (int place = 0; place < lines.size(); ++place) {
        writeRow(root, place, sortLineOf(lines[place]).number);
        // The catalogue is written to its end, whatever comes in between.
        goesOn = command.yield() && goesOn;
    }
    const bool stands = together.end();
    if (!goesOn)
        return Rewritten::Ended;
    return stands ? Rewritten::Yes : Rewritten::No;
}

void BReady_Click(Root& root, Positionen& form)
{
    Command command(root);
    // The lines are the rows from before a database that has come back: who opened the dialog joins the two.
    if (IniFiles::isForeign(root)) {
        root.services.forms.unload(form);
        return;
    }

    for (Control* control : std::initializer_list<Control*>{&form.BReady, &form.bAbbrechen, &form.LSortView})
        control->Enabled = false;
    form.Caption = u" Datensortierung"_s;
    form.sHilfe.Caption = u"Bitte warten Sie, bis die Reorganisation der Wiedergabelisten abgeschlossen ist."_s;

    const Rewritten rewritten = rewriteIndex(root, command, form.LSortView.List);
    if (rewritten == Rewritten::Ended)
        return;
    // Required: the name in the message is not that of the file.
    if (rewritten == Rewritten::Yes &&
        !command.ask({.text = u"Es wurde eine Datensicherungsdatei unter ''Orvanten.bak'' erstellt.   "_s,
                      .title = u" Orvanten Manager"_s,
                      .icon = MessageIcon::Information}))
        return;

    root.LListView1.Tag = u"0"_s;

    GetPlayListe(root, QString());
    GetLoadListe(root);
    if (command.yield())
        root.services.forms.unload(form);
}

} // namespace

Positionen::Positionen() : Form(u"Positionen"_s)
{
    Caption = u" Einträge positionieren"_s;
    BReady.Caption = u"&OK"_s;
    bAbbrechen.Caption = u"&Abbrechen"_s;
    bHilfe.Caption = u"&Hilfe"_s;
}

void setUpPositionen(Root& root)
{
    Positionen& form = *root.positionen;
    form.Load = [&root, &form] { load(root, form); };
    form.BReady.Click = [&root, &form] { BReady_Click(root, form); };
    form.bAbbrechen.Click = [&root, &form] { root.services.forms.unload(form); };
    form.bHilfe.Click = [&root] { showHelp(root, u"/3.4 Orvanten positionieren.htm"); };
    form.LSortView.DblClick = [&root, &form] {
        const QString line = form.LSortView.List.value().value(form.LSortView.ListIndex);
        Command(root).tell({.text = line, .title = u"Orvanten Manager"_s});
    };
}

SortLine sortLineOf(const QString& line)
{
    const qsizetype first = line.indexOf(u'\t');
    const qsizetype second = line.indexOf(u'\t', first + 1);
    if (first < 0 || second < 0)
        return {.name = line.left(std::max<qsizetype>(first, 0)), .path = {}, .number = 1};
    bool numeric = false;
    const int number = line.mid(second + 1).toInt(&numeric);
    return {.name = line.left(first), .path = line.mid(first + 1, second - first - 1), .number = numeric ? number : 1};
}

} // namespace orvantine
