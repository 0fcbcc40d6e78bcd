#include "transfer/mnuDeleteDatabase.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
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

bool tellUnlessFolderOfNextStart(Root& root)
{
    if (isFolderOfNextStart(root))
        return true;
    showQuietly(root, u"Der Datenbank-Ordner wurde geändert: Bitte erst die Anwendung neu starten."_s);
    return false;
}

/// However long it takes. Nothing where the program has ended.
std::optional<int> waitForEnd(Command& command, RunningProgram& program)
{
    for (;;) {
        if (const std::optional<int> code = program.exitCode())
            return code;
        if (!command.pause(0.2))
            return {};
    }
}

/// Others may have written to the database meanwhile: what counts is that no entry is left.
bool hasNoEntry(const Root& root)
{
    const int failedReads = root.services.profiles.failedReads();
    for (int number = 1; number <= MostPlaylists; ++number)
        if (!readEntry(root, databaseFile(root), number).name.isEmpty())
            return false;
    return root.services.profiles.failedReads() == failedReads;
}

void reset(Root& root, Command& command)
{
    const std::optional<FileStamp> before = root.files.stamp(databaseFile(root));
    const std::unique_ptr<RunningProgram> program = root.services.launcher.run(
        {.kind = LaunchKind::Program, .command = sibling(root), .target = sibling(root), .arguments = {}});
    command.wait();
    const std::optional<int> code = program ? waitForEnd(command, *program) : std::optional(-1);
    if (!code)
        return;
    // One that was killed behind its last step has done it all the same.
    const bool changed = root.files.stamp(databaseFile(root)) != before;
    if ((*code != 0 && !changed) || !hasNoEntry(root))
        return showQuietly(root, u"Die Datenbank wurde nicht zurückgesetzt."_s);
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
    if (!isSure(command) || !tellUnlessFolderOfNextStart(root))
        return;
    const std::optional<Answer> backup = wantsBackup(root, command);
    if (!backup || (backup == Answer::Yes && !backUpData(root)))
        return;
    // Somebody may have changed it meanwhile.
    if (!tellUnlessFolderOfNextStart(root))
        return;
    if (Dateiexistenz::FileExists(root, databaseFile(root)) && !backUp(root, databaseFile(root), backupFile(root)))
        return;
    reset(root, command);
}

} // namespace orvantine
