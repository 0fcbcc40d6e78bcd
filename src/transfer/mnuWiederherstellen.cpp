#include "transfer/mnuWiederherstellen.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
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

void putCopyInPlace(Root& root)
{
    const QString database = namedDatabaseFile(root);
    const WholeChange together(root.files);
    if (Dateiexistenz::FileExists(root, database)) {
        backUp(root, database, root.tDatenbank.Text.value() + u"Orvantine.restore"_s);
        root.files.remove(database);
    }
    root.files.copy(namedBackupFile(root), database);
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
    putCopyInPlace(root);
    if (!command.yield() || !reloadDatabase(root, command) || !command.yield())
        return;
    command.endWait();
    command.lastYield();
}

} // namespace orvantine
