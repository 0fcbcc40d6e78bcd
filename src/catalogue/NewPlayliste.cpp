#include "catalogue/NewPlayliste.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/DisabledButtons.h"
#include "app/PlaylistFile.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/PlaylistTexts.h"
#include "platform/FileDirPath.h"

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
        if (indexValue(root, database, number, EntryKey::Name).toLower() == name.toLower())
            return true;
    return false;
}

/// False if the user does not want a second list of the name.
bool mayAdd(Root& root, Command& command, const QString& name)
{
    if (!readSetting(root, u"CheckEntrys"_s).isOrAbsent(1) || !root.Visible.value() || !isKnownName(root, name))
        return true;
    return command.ask({.text = u"Diese Wiedergabeliste ist schon im Datenbestand vorhanden.\n"
                                u"Überprüfen Sie bitte, ob es sich nur um den gleichen Namen handelt.   \n \n"
                                u"Möchten Sie diese Playliste trotzdem erneut hinzufügen ?"_s,
                        .title = u" Playliste hinzufügen"_s,
                        .icon = MessageIcon::Exclamation,
                        .buttons = MessageButtons::YesNo}) == Answer::Yes;
}

/// Under the filter the entry's number is looked for in the database.
bool findsPlace(const Root& root)
{
    const int failedReads = root.services.profiles.failedReads();
    (void)wholeCount(root);
    return root.services.profiles.failedReads() == failedReads;
}

void appendRow(Root& root, const QString& name, const QString& path)
{
    ListView& list = root.LListView1;
    const int place = list.count() + 1;
    const int failedReads = root.services.profiles.failedReads();
    const int number = wholeCount(root) + 1;
    const bool favourite = isFavourite(root, number);
    const bool read = root.services.profiles.failedReads() == failedReads;
    const QString icon = favouriteIcon(favourite);
    root.nAnzeige.Caption = u"(%1)"_s.arg(place);
    root.trackList.clearLines();

    ListItem row;
    row.Text = padded(place - 1, 3);
    row.Icon = icon;
    row.SmallIcon = icon;
    row.Extras = std::make_shared<const ListExtras>(ListExtras{.Key = newRowKey(root), .Tag = {}, .ToolTipText = {}});
    row.SubItems = {{.Text = name, .ReportIcon = icon}, {.Text = path}, {.Text = u"0"_s}};
    list.append(std::move(row));
    if (isFiltered(root)) {
        // No save comes behind it: the entry would be gone with the filter.
        list.setNumber(place, number);
        // An entry that could not be read looks like room for this one.
        if (!read)
            return showQuietly(root, u"Nicht gespeichert: Die Datenbank konnte nicht gelesen werden."_s);
        const WholeChange together(root.files);
        writeEntry(root, databaseFile(root), number,
                   {.id = padded(number - 1, 3),
                    .name = name,
                    .path = path,
                    .tracks = u"0"_s,
                    .favourite = favourite ? u"1"_s : QString()});
    }
}

} // namespace

bool NewPlayliste(Root& root, QString& path, QString name)
{
    Command command(root);
    if (command.ended())
        return false;
    if (!path.isEmpty())
        ensurePlaylistFolder(root);

    if (!mayAddRow(root, command))
        return leave(root);

    if (name.isEmpty()) {
        const std::optional<QString> entered =
            command.enter(u"Geben Sie einen Namen für die neue Playliste ein:"_s, u" Neue Playliste"_s);
        name = entered.value_or(QString());
        // The database gives such a name back as empty, and an entry without a name is none.
        if (readsAsEmpty(withoutControls(name)))
            return leave(root);
    }
    name = withoutControls(name);

    ensurePlaylistFolder(root);
    const bool formed = path.isEmpty() || path == unnamedPlaylist(root);
    // A name that would leave the folder never forms a path: the row stands, its file does not.
    const std::optional<QString> own = playlistFile(root, name);
    if (formed)
        path = own.value_or(FileDirPath::join(playlistFolder(root), name + u".m3u"_s));
    const bool usable = !formed || own;

    if (!mayAdd(root, command, name))
        return leave(root);

    if (!findsPlace(root)) {
        showQuietly(root, u"Nicht gespeichert: Die Datenbank konnte nicht gelesen werden."_s);
        return leave(root);
    }

    root.LListView2.clearColumns();
    root.trackList.close();
    if (root.mnuCoverShow.Checked.value())
        root.mnuCoverShow.Click();
    root.pCovers.Picture = QString();

    if (usable && Dateiexistenz::FileExists(root, path))
        root.files.clearAttributes(path);
    if (!command.yield())
        return false;
    // A disk that does not answer is no proof that there is none.
    const bool stands =
        usable && (Dateiexistenz::FileExists(root, path) || root.files.readBytes(path).outcome != ReadOutcome::Missing);
    if (root.Visible.value() && usable && !stands)
        writePlaylist(root, path, u"\r\n"_s);

    appendRow(root, name, path);
    // The sequence may have opened another list meanwhile: its tracks are not those of the new one. Those of a file
    // that stands have not been read: a save before they are would empty it.
    root.trackList.begin(path, stands ? TrackList::Content::Stale : TrackList::Content::Own);
    showHintForDescription(root);

    root.tPlaylisteinträge.Caption = name;
    root.tDatum.Caption = dateText(root.services.events.now().date());
    root.sAnzeige[1].Caption = QString();
    root.sAnzeige[2].Caption = QString();
    if (!command.yield())
        return false;

    selectLastRow(root);
    root.LListView1.EnsureVisible(root.LListView1.selectedRow());
    root.Pointer = MousePointer::Default;
    return command.yield();
}

bool tellLimit(Command& command)
{
    return command
        .ask({.text = u"Die maximale Anzahl von Wiedergabelisten wurde erreicht. \n"
                      u"Bitte löschen Sie eine der 160 Playlisten aus der Liste."_s,
              .title = u" Wiedergabelisten verwalten"_s,
              .icon = MessageIcon::Critical})
        .has_value();
}

bool mayAddRow(const Root& root, Command& command)
{
    if (wholeCount(root) < MostPlaylists)
        return true;
    // Whoever may not add goes no further, whether the program has ended or not.
    (void)tellLimit(command);
    return false;
}

} // namespace orvantine
