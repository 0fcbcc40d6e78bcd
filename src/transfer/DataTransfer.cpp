#include "transfer/DataTransfer.h"

#include "app/Command.h"
#include "app/Dateiexistenz.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/mnuL_schen.h"
#include "catalogue/mnuLaden.h"
#include "platform/FileDirPath.h"
#include "transfer/Kopieren.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The catalogue knows no list any more, so none stays in sight.
void closeList(Root& root)
{
    root.trackList.close();
    clearPanels(root);
    root.LListView1.Tag = u"0"_s;
    root.nAnzeige.Caption = u"(0)"_s;
}

} // namespace

DataTransfer::DataTransfer(Root& root, Command& command) : m_root(root), m_command(command) {}

DataTransfer::~DataTransfer()
{
    if (m_frozen && m_command.ended())
        m_root.services.forms.unload(*m_root.kopieren);
    else if (m_frozen)
        release();
}

void DataTransfer::release()
{
    m_frozen = false;
    m_root.Timer2.Enabled = true;
    m_root.services.forms.unload(*m_root.kopieren);
    m_root.Tag = u"0"_s;
}

bool DataTransfer::freeze()
{
    m_frozen = true;
    m_command.wait(Wait::Lists);
    m_root.Timer2.Enabled = false;
    m_root.Tag = u"1"_s;
    Kopieren& form = *m_root.kopieren;
    form.Caption = u" Datenübertragung"_s;
    form.Label2.Caption = u"Bitte warten Sie, bis die Datenübertragung vollständig abgeschlossen wurde."_s;
    m_root.services.forms.show(form);
    return m_command.yield() && m_command.pause(1.0);
}

bool DataTransfer::unfreeze()
{
    m_root.Pointer = MousePointer::Default;
    m_root.LListView1.Enabled = true;
    m_root.LListView1.Click();
    if (m_command.ended())
        return false;
    m_command.endWait();
    release();
    return m_command.yield();
}

std::optional<BackupFile> chooseBackupFile(Root& root, Command& command, BackupChoice choice)
{
    constexpr qsizetype ShortestPath = 5;
    FileRequest request{.title = u"Datei speichern"_s,
                        .folder = SpecialFolder(root, Csidl::Documents),
                        .fileName = u"Orvantenbackup.zip"_s,
                        .filter = u"Zip-Dateien|*.zip; *.dat|Alle Dateitypen|*.*"_s,
                        .defaultExtension = u"zip"_s};
    const Setting last = readSetting(root, u"ZipFolder"_s);
    if (last.present && Dateiexistenz::FolderExists(root, last.text()))
        request.folder = last.text();
    if (choice == BackupChoice::ToRead)
        request.title = u"Datei öffnen"_s;
    const std::optional<ChosenFile> chosen =
        choice == BackupChoice::ToRead ? command.openFile(request) : command.saveFile(request);
    if (!chosen || chosen->fileName.isEmpty())
        return {};
    BackupFile file{FileDirPath::join(chosen->folder, u""), chosen->fileName};
    if (file.folder.size() + file.name.size() < ShortestPath)
        return {};
    return file;
}

Compression chosenCompression(const Root& root)
{
    const Setting chosen = readSetting(root, u"ZipCompress"_s);
    if (chosen.isNumber() && chosen.is(0))
        return Compression::Simple;
    if (chosen.isNumber() && chosen.is(1))
        return Compression::Moderate;
    return Compression::Strong;
}

bool reloadDatabase(Root& root, Command& command)
{
    {
        const DoublesUnasked unasked(root);
        root.mnuLaden.Click();
    }
    if (!command.ended() && root.LListView1.count() == 0 && !root.databaseDoubted)
        closeList(root);
    return !command.ended();
}

} // namespace orvantine
