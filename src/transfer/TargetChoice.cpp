#include "transfer/TargetChoice.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/IniFiles.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "platform/FileDirPath.h"
#include "transfer/BrowseFolders2k.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString Section = u"Options"_s;
const QString Stick = u"CopyStick"_s;
const QString Date = u"CopyDate"_s;

QString today(const Root& root)
{
    return dateText(root.services.events.now().date());
}

/// That of the day; "" on any other.
QString keptTarget(const Root& root)
{
    const QString database = databaseFile(root);
    return IniFiles::ReadValue(root, database, Section, Date) == today(root)
               ? IniFiles::ReadValue(root, database, Section, Stick)
               : QString();
}

bool isSeparator(QChar character)
{
    return character == u'/' || character == u'\\';
}

std::optional<QString> browse(Root& root, Command& command)
{
    const QString chosen = BrowseFolders(root, FolderRoot::Computer);
    if (chosen.isEmpty() || command.ended())
        return {};
    QString target = withSeparator(chosen);
    keepTarget(root, target);
    return target;
}

} // namespace

QString withSeparator(const QString& folder)
{
    return FileDirPath::join(folder, {});
}

QString normalisedTarget(const QString& folder)
{
    QString target = withSeparator(folder);
    const qsizetype size = target.size();
    if (size > 2 && isSeparator(target[size - 1]) && isSeparator(target[size - 2]))
        target.chop(1);
    return target;
}

void keepTarget(Root& root, const QString& folder)
{
    IniFiles::WriteValue(root, databaseFile(root), Section, Stick, folder);
}

void keepTargetDate(Root& root)
{
    IniFiles::WriteValue(root, databaseFile(root), Section, Date, today(root));
}

std::optional<QString> chooseTarget(Root& root, Command& command, TransferOf what)
{
    const QString kept = keptTarget(root);
    if (!kept.isEmpty()) {
        const std::optional<Answer> answer =
            command.ask({.text = u"Bitte stecken Sie den austauschbaren Datenträger in den USB-Anschluss. \n"
                                 u"Die Dateien werden jetzt in den zuletzt verwendeten Ordner kopiert.\n\n"
                                 u"Klicken Sie bitte ''Abbrechen'' um den Zielordner anzupassen."_s,
                         .title = TransferTitle.toString(),
                         .icon = MessageIcon::Information,
                         .buttons = MessageButtons::RetryCancel});
        if (answer == Answer::Retry)
            return kept;
        if (!answer)
            return {};
        if (what == TransferOf::Track)
            IniFiles::DeleteKey(root, databaseFile(root), Section, Stick);
        return browse(root, command);
    }
    const std::optional<Answer> answer =
        command.ask({.text = u"Bitte stecken Sie den austauschbaren Datenträger in den USB-Anschluss. \n"
                             u"Wählen Sie das Laufwerk, welches dem USB-Stick zugeordnet wurde."_s,
                     .title = TransferTitle.toString(),
                     .icon = MessageIcon::Information,
                     .buttons = MessageButtons::OkCancel});
    if (answer != Answer::Ok)
        return {};
    std::optional<QString> target = browse(root, command);
    if (target && what == TransferOf::Track) {
        *target = normalisedTarget(*target);
        keepTarget(root, *target);
    }
    return target;
}

} // namespace orvantine
