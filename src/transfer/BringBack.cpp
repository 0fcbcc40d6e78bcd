#include "transfer/BringBack.h"

#include "app/Command.h"
#include "app/Dateiexistenz.h"
#include "app/Others.h"
#include "app/PlaylistFile.h"
#include "app/Quiet.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/CoverFiles.h"
#include "catalogue/NewPlayliste.h"
#include "catalogue/PlaylistTexts.h"
#include "catalogue/mnuDurchsuchen.h"
#include "platform/FileDirPath.h"
#include "playback/CoverPane.h"
#include "playlists/GetPlayEntrys.h"
#include "transfer/DataTransfer.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

Message message(const QString& text, MessageIcon icon, MessageButtons buttons = MessageButtons::Ok)
{
    return {.text = text, .title = u" Frühere Fassungen"_s, .icon = icon, .buttons = buttons};
}

QString questionFor(const Root& root, const ChosenVersion& chosen)
{
    const QString what = chosen.kind == VersionKind::Database ? u"die Datenbank"_s
                         : chosen.kind == VersionKind::Cover  ? u"das CD-Cover „%1“"_s.arg(chosen.name)
                                                              : u"die Playliste „%1“"_s.arg(chosen.name);
    const QString now = root.files.exists(chosen.path)
                            ? u"Der jetzige Stand wird vorher aufbewahrt und kann ebenso zurückgeholt werden."_s
                            : u"Die Datei ist zurzeit nicht da und wird wieder angelegt."_s;
    return u"Möchten Sie %1 mit dem Stand bis %2 zurückholen ?\n\n"_s.arg(what, timeText(chosen.version.when)) + now;
}

/// The list may be in sight, or stand in the catalogue as a missing one.
void showList(Root& root, const QString& path)
{
    const int row = rowWithFile(root, path);
    if (row > 0)
        markMissing(root, row, false);
    if (!isOneFile(root, root.trackList.path(), path))
        return;
    // Nothing of what is in sight goes over what was brought back.
    root.trackList.doubt();
    const int inSight = rowInSight(root);
    if (inSight == 0)
        return;
    openRow(root, inSight);
    if (!root.services.events.ended() && rowInSight(root) == inSight)
        setTrackCount(root, inSight);
}

void offerToCatalogue(Root& root, Command& command, const ChosenVersion& chosen)
{
    if (rowWithFile(root, chosen.path) > 0 || isUsedByAnother(root, 0, chosen.path))
        return;
    const std::optional<Answer> answer =
        command.ask(message(u"Die Playliste „%1“ ist zurückgeholt, steht aber nicht im Katalog.\n\n"
                            u"Möchten Sie die Playliste hinzufügen ?"_s.arg(chosen.name),
                            MessageIcon::Question, MessageButtons::YesNo));
    if (answer == Answer::Yes && Dateiexistenz::FileExists(root, chosen.path) && mayAddRow(root, command))
        addChosenPlaylist(root, command, chosen.path, 0);
}

/// What is in sight follows what stands on the disk now.
void showBroughtBack(Root& root, Command& command, const ChosenVersion& chosen)
{
    switch (chosen.kind) {
    case VersionKind::List:
        showList(root, chosen.path);
        if (!command.ended())
            offerToCatalogue(root, command, chosen);
        return;
    case VersionKind::Cover:
        if (isOneFile(root, coverFile(root, root.tPlaylisteinträge.Caption), chosen.path))
            showCover(root);
        return;
    case VersionKind::Database:
        (void)reloadDatabase(root, command);
        return;
    }
}

bool write(Root& root, const QString& path, const QByteArray& bytes)
{
    (void)root.files.takeFault();
    WholeChange together(root.files);
    root.files.writeBytes(path, bytes);
    return together.end();
}

void tellFailure(Root& root, Command& command, const QString& what)
{
    const WriteFault fault = root.files.takeFault().value_or(WriteFault::Disk);
    command.tell(message(what + u": "_s + reasonOf(fault), MessageIcon::Critical));
}

/// A name that says which version it is.
QString nameFor(const ChosenVersion& chosen)
{
    const QString file = FileDirPath::FileNameOf(chosen.path);
    const qsizetype dot = file.lastIndexOf(u'.');
    return file.left(dot) + u' ' + chosen.version.when.toString(u"yyyy-MM-dd HH-mm-ss"_s) + file.sliced(dot);
}

QString filterFor(VersionKind kind)
{
    switch (kind) {
    case VersionKind::List:
        return playlistFilter();
    case VersionKind::Cover:
        return CoverFilter.toString();
    case VersionKind::Database:
        break;
    }
    return u"Datenbanken|*.dat|Alle Dateitypen|*.*"_s;
}

} // namespace

QString timeText(const QDateTime& time)
{
    return time.toString(u"dd.MM.yyyy HH:mm:ss"_s);
}

std::optional<QByteArray> readVersion(Root& root, Command& command, const EarlierVersion& version)
{
    const ReadBytes read = root.services.earlierVersions.bytes(version.handle);
    if (read.done())
        return read.bytes;
    command.tell(message(read.outcome == ReadOutcome::Missing ? u"Diese Fassung ist nicht mehr da."_s
                                                              : u"Diese Fassung ist beschädigt oder nicht lesbar."_s,
                         MessageIcon::Critical));
    return {};
}

QString bringBack(Root& root, Command& command, const ChosenVersion& chosen)
{
    const QString folder = FileDirPath::FolderOf(chosen.path);
    if (!root.files.folderExists(folder)) {
        command.tell(message(u"Der Ordner „%1“ ist zurzeit nicht da.\n\n"
                             u"Schließen Sie den Datenträger an, oder verwenden Sie „Speichern unter“."_s.arg(folder),
                             MessageIcon::Exclamation));
        return {};
    }
    if (command.ask(message(questionFor(root, chosen), MessageIcon::Question, MessageButtons::YesNo)) != Answer::Yes)
        return {};
    const std::optional<QByteArray> bytes = readVersion(root, command, chosen.version);
    if (!bytes || command.ended())
        return {};
    if (chosen.kind == VersionKind::List && !mayHoldPlaylist(root, chosen.path)) {
        command.tell(message(u"Nichts zurückgeholt: An der Stelle der Playliste steht jetzt etwas anderes."_s,
                             MessageIcon::Critical));
        return {};
    }
    if (!write(root, chosen.path, *bytes)) {
        tellFailure(root, command, u"Nichts zurückgeholt"_s);
        return {};
    }
    showBroughtBack(root, command, chosen);
    if (command.ended())
        return {};
    return u"„%1“ ist zurückgeholt: Stand bis %2."_s.arg(chosen.name, timeText(chosen.version.when));
}

QString saveElsewhere(Root& root, Command& command, const ChosenVersion& chosen)
{
    const std::optional<ChosenFile> target = command.saveFile({.title = u" Frühere Fassung speichern"_s,
                                                               .folder = chooserFolder(root),
                                                               .fileName = nameFor(chosen),
                                                               .filter = filterFor(chosen.kind),
                                                               .defaultExtension = chosen.path.section(u'.', -1)});
    if (!target || target->fileName.isEmpty())
        return {};
    const QString path = FileDirPath::join(target->folder, target->fileName);
    const std::optional<QByteArray> bytes = readVersion(root, command, chosen.version);
    if (!bytes || command.ended())
        return {};
    if (isOwnFile(root, path) || (chosen.kind == VersionKind::List && !mayHoldPlaylist(root, path))) {
        command.tell(message(u"Dort steht eine Datei, die nicht überschrieben wird. Wählen Sie bitte einen anderen "
                             u"Namen."_s,
                             MessageIcon::Exclamation));
        return {};
    }
    if (!write(root, path, *bytes)) {
        tellFailure(root, command, u"Nicht gespeichert"_s);
        return {};
    }
    if (chosen.kind == VersionKind::List)
        showList(root, path);
    if (command.ended())
        return {};
    return u"Gespeichert als „%1“."_s.arg(target->fileName);
}

} // namespace orvantine
