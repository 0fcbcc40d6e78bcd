#include "shell/mnuAddCDs.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/IniFiles.h"
#include "app/Quiet.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"
#include "playback/RipperFolder.h"
#include "transfer/BrowseFolders2k.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString musicFolder(const Root& root)
{
    SettingVariant value;
    const QString key = u"Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders"_s;
    if (!Registry::ReadValue(root, Hive::CurrentUser, key, u"My Music"_s, value))
        return {};
    return Setting{.present = true, .value = value}.text();
}

/// Where the ripper puts its files; "" if the user does not say.
QString outputFolder(Root& root, Command& command)
{
    for (const QString& folder :
         {readSetting(root, u"Soundfiles"_s).text(),
          IniFiles::ReadValue(root, databaseFile(root), u"Options"_s, u"Soundfiles"_s), musicFolder(root)})
        if (!folder.isEmpty())
            return folder;
    if (!command.ask({.text = u"Bitte wählen Sie das Verzeichnis für die encodierten Sounddateien. "_s,
                      .title = u" CD-Ripper"_s}))
        return {};
    QString chosen = BrowseFolders(root, FolderRoot::Computer);
    if (chosen.isEmpty() || command.ended())
        return {};
    writeSetting(root, u"Soundfiles"_s, chosen);
    IniFiles::WriteValue(root, databaseFile(root), u"Options"_s, u"Soundfiles"_s, chosen);
    return chosen;
}

/// A text of another encoding than the program writes would be spoilt by a line of ours.
bool isPlainText(const QByteArray& bytes)
{
    return !bytes.contains('\0') && !bytes.startsWith("\xFF\xFE") && !bytes.startsWith("\xFE\xFF");
}

void setIniFolder(Root& root, const QString& ripper, const QString& folder)
{
    const QString place = FileDirPath::FolderOf(ripper);
    if (place.isEmpty())
        return;
    const QString ini = place + u"CdRipper.ini"_s;
    const ReadBytes read = root.files.readBytes(ini);
    if (read.outcome == ReadOutcome::Failed || !isPlainText(read.bytes))
        return;
    // Without a copy of what stands there it stays, and without the new line so does the older copy.
    const WholeChange whole(root.files);
    if (read.done() && !backUp(root, ini, place + u"CdRipper.bak"_s))
        return;
    IniFiles::WriteValue(root, ini, u"General"_s, u"MP3OutputDir"_s, folder);
}

void setStoredFolder(Root& root, const QString& folder)
{
    const QString key = u"Software\\MGShareware\\FreeRip3"_s;
    if (!Registry::KeyExists(root, Hive::CurrentUser, key))
        Registry::CreateKey(root, Hive::CurrentUser, key);
    Registry::WriteValue(root, Hive::CurrentUser, key, u"OutputPath"_s, folder);
    Registry::WriteValue(root, Hive::CurrentUser, key, u"Mp3Enc_WriteID3"_s, u"3"_s);
    Registry::WriteValue(root, Hive::CurrentUser, key, u"Mp3Enc_Mode"_s, u"1"_s);
}

void setOutputFolder(Root& root, const QString& ripper, const QString& folder)
{
    switch (ripperKind(ripper)) {
    case RipperKind::CDRIPPER:
        return setIniFolder(root, ripper, folder);
    case RipperKind::FREERIP3:
        return setStoredFolder(root, folder);
    case RipperKind::FREERIPPER:
    case RipperKind::Other:
        // Keeps its own settings.
        return;
    }
}

} // namespace

RipperKind ripperKind(const QString& program)
{
    const QString name = FileDirPath::FileNameOf(program).toLower();
    if (name == u"cdripper.exe"_s)
        return RipperKind::CDRIPPER;
    if (name == u"freecdripper.exe"_s)
        return RipperKind::FREERIPPER;
    return name == u"freerip3.exe"_s ? RipperKind::FREERIP3 : RipperKind::Other;
}

void mnuAddCDs_Click(Root& root)
{
    Command command(root);
    const QString folder = outputFolder(root, command);
    if (folder.isEmpty())
        return;
    QString ripper = readSetting(root, u"Ripper"_s).text();
    if (ripper.isEmpty())
        ripper = programFile(root, u"CDRipper.exe"_s);
    setOutputFolder(root, ripper, folder);
    writeSetting(root, u"OutputDir"_s, folder);
    if (root.services.launcher.start(
            {.kind = LaunchKind::Program, .command = ripper, .target = ripper, .arguments = {}}))
        beginRipperWatch(root, folder);
    else
        showQuietly(root, u"Der CD-Ripper konnte nicht gestartet werden."_s);
}

} // namespace orvantine
