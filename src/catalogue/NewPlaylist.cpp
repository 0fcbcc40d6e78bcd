#include "catalogue/NewPlaylist.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueDatabase.h"
#include "catalogue/CatalogueView.h"
#include "playlists/ReadPlaylists.h"
#include "shell/MainWindow.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool leave(Root& root)
{
    root.Pointer = MousePointer::Default;
    DisabledButtons(root, 0);
    return false;
}

bool isKnownName(const Root& root, const QString& name)
{
    const QString database = databaseFile(root);
    for (int number = 1; number <= MostPlaylists; ++number)
        if (indexValue(root, database, number, 'b').toLower() == name.toLower())
            return true;
    return false;
}

/// False if the user does not want a second list of the name.
bool mayAdd(Root& root, const QString& name)
{
    if (!readSetting(root, u"CheckEntrys"_s).isOrAbsent(1) || !root.Visible.value() || !isKnownName(root, name))
        return true;
    return root.services.messages.show(u"Diese Wiedergabeliste ist schon im Datenbestand vorhanden.\n"
                                       u"Überprüfen Sie bitte, ob es sich nur um den gleichen Namen handelt.   \n \n"
                                       u"Möchten Sie diese Playliste trotzdem erneut hinzufügen ?"_s,
                                       u" Playliste hinzufügen"_s, MessageIcon::Exclamation,
                                       MessageButtons::YesNo) != Answer::No;
}

void appendRow(Root& root, const QString& name, const QString& path)
{
    ListView& list = root.LListView1;
    const int number = list.count() + 1;
    const QString icon = isFavourite(root, number) ? u"Icon_6"_s : u"Icon_1"_s;
    root.nAnzeige.Caption = u"(%1)"_s.arg(number);
    root.tPlayliste.Text = QString();
    root.playlistInField = QString();

    ListItem row;
    row.Text = padded(number - 1, 3);
    row.Icon = icon;
    row.SmallIcon = icon;
    row.SubItems = {{.Text = name, .ReportIcon = icon}, {.Text = path}, {.Text = u"0"_s}};
    list.append(std::move(row));
}

} // namespace

bool NewPlayliste(Root& root, QString& path, QString name)
{
    Services& services = root.services;
    ListView& list = root.LListView1;

    if (!path.isEmpty())
        ensureDataFolder(root, u"Playlisten"_s);

    if (list.count() >= MostPlaylists) {
        tellLimit(root);
        return leave(root);
    }

    if (name.isEmpty()) {
        name = services.messages.input(u"Geben Sie einen Namen für die neue Playliste ein:"_s, u" Neue Playliste"_s);
        if (name.isEmpty())
            return leave(root);
    }

    ensureDataFolder(root, u"Playlisten"_s);
    const QString unnamed = root.tDatenbank.Text.value() + services.start.stem + u".tmp"_s;
    const bool formed = path.isEmpty() || path == unnamed;
    if (formed)
        path = FileDirPath::join(root.tDatenbank.Text.value() + u"Playlisten"_s, name + u".m3u"_s);

    if (!mayAdd(root, name))
        return leave(root);

    root.LListView2.clearColumns();
    root.LListView2.clear();
    if (root.mnuCoverShow.Checked.value())
        root.mnuCoverShow.Click();
    root.pCovers.Picture = QString();

    // A name that would leave the folder never forms a path: the row stands, its file does not.
    const bool usable = !formed || (!FileDirPath::hasSeparator(name) && !name.contains(QChar(u'\0')));
    if (usable && Dateiexistenz::FileExists(root, path))
        root.files.clearAttributes(path);
    services.events.yield();
    const bool stands = usable && Dateiexistenz::FileExists(root, path);
    if (root.Visible.value() && usable && !stands)
        root.files.writeText(path, u"\r\n"_s);

    appendRow(root, name, path);
    // The sequence may have opened another list meanwhile: its tracks are not those of the new one.
    root.LListView2.clear();
    // The tracks of a file that stands have not been read: a save before they are would empty it.
    takeTrackList(root, stands ? QString() : path);

    root.tPlaylisteinträge.Caption = name;
    root.tDatum.Caption = dateText(services.events.now().date());
    root.sAnzeige[1].Caption = QString();
    root.sAnzeige[2].Caption = QString();
    services.events.yield();

    list.select(list.count());
    list.Tag = QString::number(list.count());
    list.EnsureVisible(list.selectedRow());
    root.Pointer = MousePointer::Default;
    services.events.yield();
    return true;
}

void tellLimit(Root& root)
{
    root.services.messages.show(u"Die maximale Anzahl von Wiedergabelisten wurde erreicht. \n"
                                u"Bitte löschen Sie eine der 160 Playlisten aus der Liste."_s,
                                u" Wiedergabelisten verwalten"_s, MessageIcon::Critical, MessageButtons::Ok);
}

} // namespace orvantine
