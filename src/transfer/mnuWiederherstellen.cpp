#include "transfer/mnuWiederherstellen.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Quiet.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "transfer/DataTransfer.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

std::optional<Answer> askForCopy(const Root& root, Command& command)
{
    const std::optional<QDateTime> changed = root.files.modified(namedBackupFile(root));
    const QString date = changed ? dateText(changed->date()) : QString();
    const QString question = date == dateText(root.services.events.now().date())
                                 ? u"Möchten Sie die heutige Datenbanksicherung wiederherstellen ?   "_s
                                 : u"Möchten Sie die Datenbanksicherung vom "_s + date + u" wiederherstellen ?   "_s;
    return command.ask({.text = question + u"\nDie Wiedergabelisten werden hiermit nicht zurückgesichert.\n"
                                           u"\n"
                                           u"Verwenden Sie dafür die Option ''Wiederherstellungen''."_s,
                        .title = u" Sicherungsdatenbank"_s,
                        .icon = MessageIcon::Exclamation,
                        .buttons = MessageButtons::YesNo});
}

/// False, and the database is the one it was, unless it is the copy now.
bool putCopyInPlace(Root& root)
{
    const QString database = namedDatabaseFile(root);
    WholeChange together(root.files);
    if (Dateiexistenz::FileExists(root, database)) {
        // Nothing there to copy is no fault: a copy that has gone meanwhile must not cost the database.
        if (!backUp(root, database, root.tDatenbank.Text.value() + u"Orvantine.restore"_s))
            together.fail();
        root.files.remove(database);
    }
    if (!root.files.copy(namedBackupFile(root), database))
        together.fail();
    return together.end();
}

void tellFailure(Root& root)
{
    const QString reason = Dateiexistenz::FileExists(root, namedBackupFile(root))
                               ? reasonOf(root.files.takeFault().value_or(WriteFault::Disk))
                               : u"Die Datenbank-Sicherung ist nicht mehr da."_s;
    (void)root.files.takeFault();
    showQuietly(root, u"Nichts wiederhergestellt: "_s + reason);
}

} // namespace

void mnuWiederherstellen_Click(Root& root)
{
    Command command(root);
    if (!Dateiexistenz::FileExists(root, namedBackupFile(root)))
        return command.tell({.text = u"Es konnte keine Datenbank-Sicherung gefunden werden. "_s,
                             .title = root.Caption.value() + u' ',
                             .icon = MessageIcon::Critical});
    command.wait(Wait::All, MousePointer::ArrowHourglass);
    if (askForCopy(root, command) != Answer::Yes)
        return;
    (void)root.files.takeFault();
    if (!putCopyInPlace(root))
        tellFailure(root);
    if (!command.yield() || !reloadDatabase(root, command) || !command.yield())
        return;
    command.endWait();
    command.lastYield();
}

} // namespace orvantine
