#include "transfer/mnuDeleteDatabase.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/mnuL_schen.h"
#include "platform/FileDirPath.h"
#include "transfer/DataTransfer.h"
#include "transfer/mnuDbSicherungen.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString sibling(const Root& root)
{
    return programFile(root, u"Laubfeger.dll"_s);
}

bool isSure(Command& command)
{
    return command.ask({.text = u"Diese Funktion löscht alle Einträge in der Datenbank und verschiebt die vorhandenen "
                                u"lokalen Wiedergabelisten in den Papierkorb. \n"
                                u"Eine Sicherungskopie sollte vorher erstellt werden.\n"
                                u"Möchten Sie die Datenbank zurücksetzen ?"_s,
                        .title = u" Datenbank zurücksetzen"_s,
                        .icon = MessageIcon::Exclamation,
                        .buttons = MessageButtons::OkCancel}) == Answer::Ok;
}

std::optional<Answer> wantsBackup(const Root& root, Command& command)
{
    const QString last = readSetting(root, u"Backup"_s).text();
    return command.ask({.text = u"Möchten Sie eine Sicherungskopie der Datenbank und Playlisten erstellen ?   \n"
                                u"Letzte Sicherung wurde durchgeführt am: "_s +
                                (last.isEmpty() ? u"Unbekannt"_s : last),
                        .title = u" Datenbank zurücksetzen"_s,
                        .icon = MessageIcon::Question,
                        .buttons = MessageButtons::YesNo});
}

/// The sibling is told nothing: it looks for the folder where the next start does.
bool isFolderOfNextStart(const Root& root)
{
    return FileDirPath::isSameFile(readSetting(root, u"Database"_s).text(), root.tDatenbank.Text.value());
}

/// What becomes another one by the reset, as the last thing. An empty database stays as it is.
QString changedByReset(const Root& root)
{
    return root.files.size(databaseFile(root)).value_or(0) > 0 ? databaseFile(root) : playlistFolder(root);
}

/// False: nobody changed it, or the program has ended.
bool waitForChange(const Root& root, Command& command, const QString& path, const std::optional<FileStamp>& before)
{
    constexpr int MostLooks = 50;
    for (int look = 0; look < MostLooks; ++look) {
        if (!command.pause(0.2))
            return false;
        if (root.files.stamp(path) != before)
            return true;
    }
    return false;
}

void reset(Root& root, Command& command)
{
    const QString watched = changedByReset(root);
    const std::optional<FileStamp> before = root.files.stamp(watched);
    const bool started = root.services.launcher.start(
        {.kind = LaunchKind::Program, .command = sibling(root), .target = sibling(root), .arguments = {}});
    command.wait();
    const bool isReset = started && waitForChange(root, command, watched, before);
    if (command.ended())
        return;
    if (!isReset)
        return showQuietly(root, u"Die Datenbank wurde nicht zurückgesetzt."_s);
    root.trackList.close();
    clearPanels(root);
    root.LListView1.Tag = u"0"_s;
    if (reloadDatabase(root, command))
        command.lastYield();
}

} // namespace

void mnuDeleteDatabase_Click(Root& root)
{
    Command command(root);
    if (!Dateiexistenz::FileExists(root, sibling(root)))
        return command.tell({.text = u"Die Systemkomponente ''Laubfeger.dll'' konnte nicht im Installationsordner "
                                     u"gefunden werden."_s,
                             .title = root.Caption.value() + u' ',
                             .icon = MessageIcon::Critical});
    if (!isSure(command))
        return;
    const std::optional<Answer> backup = wantsBackup(root, command);
    if (!backup || (backup == Answer::Yes && !backUpData(root)))
        return;
    if (!isFolderOfNextStart(root))
        return showQuietly(root, u"Der Datenbank-Ordner wurde geändert: Bitte erst die Anwendung neu starten."_s);
    if (Dateiexistenz::FileExists(root, databaseFile(root)) && !backUp(root, databaseFile(root), backupFile(root)))
        return;
    reset(root, command);
}

} // namespace orvantine
