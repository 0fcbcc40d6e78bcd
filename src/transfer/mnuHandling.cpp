#include "transfer/mnuHandling.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/Dateiexistenz.h"
#include "app/FreeSpace.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "metadata/SelectedTrack.h"
#include "platform/FileDirPath.h"
#include "transfer/Carrier.h"
#include "transfer/FolderDialogs.h"
#include "transfer/Kopieren.h"
#include "transfer/PlaylistTransfer.h"
#include "transfer/TargetChoice.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString SubfolderSetting = u"CreateFolder"_s;

void tellUnavailable(Root& root, const QString& title)
{
    Command(root).tell({.text = u"Diese erweiterte Funktion können Sie derzeit leider noch nicht verwenden. "_s,
                        .title = title,
                        .icon = MessageIcon::Exclamation});
}

/// True to go on. Required: 3000 kilobytes here, and nothing at all counts as 0.
bool askRoom(Root& root, Command& command, const QString& target)
{
    constexpr quint64 Kilobyte = 1024;
    constexpr quint64 Least = 3000 * Kilobyte;
    const quint64 free = FreeSpace::FreeBytes(root, root.services.volumes.rootOf(target)).toULongLong();
    return free > Least || command.ask({.text = tooLittleRoomText(),
                                        .title = TransferTitle.toString(),
                                        .icon = MessageIcon::Exclamation,
                                        .buttons = MessageButtons::RetryCancel}) == Answer::Retry;
}

/// The dialog comes up only if that takes long enough to be seen.
Carrier::Outcome carryTrack(Root& root, Command& command, const QString& track, const QString& place,
                            const QStringList& spared)
{
    root.Tag = u"1"_s;
    Carrier carrier(root, command, root.files.size(track).value_or(0), Carrier::Dialog::Late);
    carrier.spare(spared);
    const Carrier::Outcome outcome = carrier.carry(track, place);
    if (outcome == Carrier::Outcome::Carried) {
        carrier.settle(FileDirPath::FolderOf(place));
        carrier.progress().complete();
    }
    if (!command.ended())
        root.services.forms.unload(*root.kopieren);
    return outcome;
}

void transferTrack(Root& root)
{
    Command command(root);
    // What was selected when the user asked for it: behind the boxes another list may be in sight.
    const QString track = selectedTrackPath(root);
    QStringList inSight;
    for (int row = 1; row <= root.LListView2.count(); ++row)
        inSight += trackPath(root, row);
    const std::optional<QString> target = chooseTarget(root, command, TransferOf::Track);
    if (!target || !askRoom(root, command, *target))
        return;
    const QString name = FileDirPath::FileNameOf(track);
    const QString place = *target + name;
    const Carrier::Outcome outcome = carryTrack(root, command, track, place, inSight);
    if (command.ended())
        return;
    // An older file that stands there because the copy failed is not told of as copied.
    const bool told = outcome == Carrier::Outcome::Carried || outcome == Carrier::Outcome::Missing;
    if (told && Dateiexistenz::FileExists(root, place))
        command.tell({.text = u"Die markierte Sounddatei wurde erfolgreich in den Ordner kopiert. \n\n"
                              u"Ordner: ''%1''\nDateiname: ''%2''"_s.arg(*target, name),
                      .title = u" Sounddatei übertragen"_s,
                      .icon = MessageIcon::Information});
    if (!command.ended())
        root.Tag = u"0"_s;
}

void switchSubfolder(Root& root)
{
    MenuItem& item = root.mnuHandling[6];
    item.Checked = !item.Checked.value();
    writeSetting(root, SubfolderSetting, qint16{item.Checked.value() ? qint16{1} : qint16{0}});
}

void chooseFolder(Root& root)
{
    Command command(root);
    if (!command.showModal(*root.filesCopy))
        return;
    root.Tag = u"0"_s;
    if (!command.yield())
        return;
    if (root.tBrowseFolder.Tag == u"0"_s || !root.filesCopy->stored)
        return;
    command.tell({.text = u"Das Verzeichnis wurde als standardmäßiger Zielordner ausgewählt und gespeichert. \n"
                          u"Wählen Sie nun ''Vollständige Playliste kopieren'' oder ''Sounddatei kopieren'' um \n"
                          u"den Kopiervorgang der markierten Datei oder Wiedergabeliste zu starten."_s,
                  .title = u" Ordnerauswahl"_s,
                  .icon = MessageIcon::Information});
}

} // namespace

void mnuHandling(Root& root, int index)
{
    switch (index) {
    case 1:
        return transferPlaylist(root);
    case 2:
        return tellUnavailable(root, u" AudioCD erstellen"_s);
    case 3:
        return tellUnavailable(root, u" Bluetooth übertragen"_s);
    case 4:
        return transferTrack(root);
    case 6:
        return switchSubfolder(root);
    case 7:
        return chooseFolder(root);
    default:
        return;
    }
}

} // namespace orvantine
