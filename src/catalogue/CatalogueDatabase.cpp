#include "catalogue/CatalogueDatabase.h"

#include "app/Dateiexistenz.h"
#include "app/IniFiles.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueView.h"
#include "catalogue/NewPlaylist.h"
#include "metadata/TagNaming.h"
#include "playlists/ReadPlaylists.h"
#include "playlists/SavePlaylists.h"
#include "shell/MainWindow.h"

#include <array>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString indexKey(int row, char letter)
{
    return QString::number(row) + QLatin1Char(letter);
}

/// Puts the stored texts into a row; one that was refused has no place and is passed over.
void fillRow(Root& root, int row, const std::array<QString, 4>& texts)
{
    root.LListView1.setText(row, texts[0]);
    for (int sub = 1; sub <= 3; ++sub)
        root.LListView1.setSubItem(row, sub, texts[static_cast<std::size_t>(sub)]);
    const bool missing = !Dateiexistenz::FileExists(root, texts[2]);
    markMissing(root, row, missing);
    if (missing)
        ++root.missingPlaylists;
}

void loadRows(Root& root)
{
    const QString database = databaseFile(root);
    int rows = 0;
    for (int number = 1; number <= MostPlaylists; ++number) {
        const std::array texts{indexValue(root, database, number, 'a'), indexValue(root, database, number, 'b'),
                               indexValue(root, database, number, 'c'), indexValue(root, database, number, 'd')};
        if (texts[1].isEmpty())
            continue;
        QString path = texts[2];
        NewPlayliste(root, path, texts[1]);
        ++rows;
        root.services.events.yield();
        fillRow(root, rows, texts);
        root.services.events.yield();
    }
}

void backUpOnceADay(Root& root)
{
    const QString database = databaseFile(root);
    if (!Dateiexistenz::FileExists(root, database))
        return;
    const std::optional<QDateTime> changed = root.files.modified(database);
    const QString today = dateText(root.services.events.now().date());
    const WholeChange together(root.files);
    if (!changed || dateText(changed->date()) != today)
        root.files.copy(database, backupFile(root));
    if (!Dateiexistenz::FileExists(root, backupFile(root)))
        root.files.copy(database, backupFile(root));
}

void writeRows(Root& root)
{
    const QString database = databaseFile(root);
    const QString backup = backupFile(root);
    ListView& list = root.LListView1;
    const WholeChange together(root.files);
    IniFiles::DeleteSection(root, database, u"Index"_s);
    for (int row = 1; row <= list.count(); ++row) {
        list.setText(row, padded(row - 1, 3));
        list.Tag = QString::number(row);
        // Required: the extras stay with the position, as the copy of the old order has them.
        const std::array extras{indexValue(root, backup, row, 'e'), indexValue(root, backup, row, 'f'),
                                indexValue(root, backup, row, 'g')};
        writeIndexValue(root, database, row, 'a', list.text(row));
        writeIndexValue(root, database, row, 'b', list.subItem(row, 1));
        writeIndexValue(root, database, row, 'c', list.subItem(row, 2));
        writeIndexValue(root, database, row, 'd', list.subItem(row, 3));
        writeIndexValue(root, database, row, 'e', extras[0]);
        writeIndexValue(root, database, row, 'f', extras[1]);
        writeIndexValue(root, database, row, 'g', extras[2]);
    }
}

} // namespace

QString indexValue(const Root& root, const QString& file, int row, char letter)
{
    return IniFiles::ReadValue(root, file, u"Index"_s, indexKey(row, letter));
}

void writeIndexValue(Root& root, const QString& file, int row, char letter, const QString& value)
{
    IniFiles::WriteValue(root, file, u"Index"_s, indexKey(row, letter), value);
}

void deleteIndexValue(Root& root, const QString& file, int row, char letter)
{
    IniFiles::DeleteKey(root, file, u"Index"_s, indexKey(row, letter));
}

QString backupFile(const Root& root)
{
    return root.tDatenbank.Text.value() + root.services.start.stem + u".bak"_s;
}

bool isWholeCatalogue(const Root& root)
{
    return root.LListView1.count() > 0 && root.mnuFavoritenShow.Tag != u"1"_s && !root.loadingCatalogue;
}

void mnuLaden_Click(Root& root)
{
    Services& services = root.services;
    ListView& list = root.LListView1;

    if (root.loadingCatalogue)
        return;
    root.loadingCatalogue = true;
    root.Pointer = MousePointer::ArrowHourglass;
    list.clear();
    root.nAnzeige.Caption = u"(0)"_s;
    root.missingPlaylists = 0;
    DisabledButtons(root, 1);
    services.events.yield();

    loadRows(root);
    root.loadingCatalogue = false;

    if (list.count() > 0) {
        Pause(root, 1.0);
        list.select(list.count());
        list.Tag = QString::number(list.count());
        QString path = list.subItem(list.count(), 2);
        GetPlayEntrys(root, path);
    }

    services.events.yield();
    root.Pointer = MousePointer::Default;
    DisabledButtons(root, 0);
    Form_Resize(root);
    services.events.yield();

    if (root.missingPlaylists != 0 && readSetting(root, u"Error"_s).isOrAbsent(1))
        services.messages.show(u"Es wurden "_s + QString::number(root.missingPlaylists) +
                                   u" nicht vorhandene Playlisten in der Datenbank gefunden.    \n"_s +
                                   u"Überprüfen Sie bitte die Datenbankeinträge oder die Quelldateien."_s,
                               u" Wiedergabelisten überprüfen"_s, MessageIcon::Exclamation, MessageButtons::Ok);
}

void GetLoadListe(Root& root)
{
    mnuLaden_Click(root);
}

void mnuSpeichern_Click(Root& root)
{
    ListView& list = root.LListView1;
    if (!isWholeCatalogue(root))
        return;

    DisabledButtons(root, 1);
    root.Pointer = MousePointer::Hourglass;
    root.services.events.yield();

    backUpOnceADay(root);

    if (root.LListView2.count() > 0) {
        if (readSetting(root, u"AutoTag"_s).is(1)) {
            root.mnuSpeichern.Tag = u"1"_s;
            mnuSetTagName_Click(root);
            root.mnuSpeichern.Tag = QString();
        }
        root.services.events.yield();
    }

    if (list.count() >= MostPlaylists) {
        // Required: told at each save of a full catalogue; the save goes on.
        tellLimit(root);
        root.Pointer = MousePointer::Default;
        DisabledButtons(root, 0);
    }

    // A filter or a load may have come in while events were served.
    if (isWholeCatalogue(root))
        writeRows(root);

    root.tSoundzahl.Caption = u"(%1)"_s.arg(root.LListView2.count());
    if (root.mnuPositionen.Checked.value())
        root.tSoundzahl.Visible = true;
    root.sAnzeige[0].Width = root.xpFrame1.Width.value();

    list.Tag = u"0"_s;
    root.Pointer = MousePointer::Default;
    DisabledButtons(root, 0);
    root.services.events.yield();

    if (root.mnuLokalePlayliste.Checked.value())
        SavePlayEntrys(root);
    root.services.events.yield();
}

void SaveDatabase(Root& root)
{
    mnuSpeichern_Click(root);
}

} // namespace orvantine
