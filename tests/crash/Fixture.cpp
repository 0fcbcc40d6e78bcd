#include "app/Registry.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/mnuLaden.h"
#include "catalogue/mnuSpeichern.h"
#include "desktop/tags/TagLibTags.h"
#include "operations/DropOnCatalogue.h"
#include "operations/DropOnTracks.h"
#include "operations/Eigenschaften.h"
#include "operations/Positionen.h"
#include "playback/CoverArt.h"
#include "playlists/SavePlayEntrys.h"
#include "playlists/mnuSpeichernUnter.h"
#include "search/FindAudio.h"
#include "search/FolderCheck.h"
#include "siblings/ResetDatabase.h"
#include "support/DiskDesktop.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <iterator>

using namespace orvantine;
using namespace Qt::StringLiterals;

namespace {

constexpr int Lists = 6;
constexpr int NewTracks = 12;

/// A desktop that answers every box with its first button.
struct Machine : fake::DiskDesktop
{
    explicit Machine(const QString& where)
        : DiskDesktop(where, [](Files& disk) { return std::make_unique<TagLibTags>(disk); })
    {
        settings.createKey(Hive::CurrentUser, settingsKey());
        // Where a call of the disk fails a box may come up that nobody has an answer for: it is refused.
        complaints.Report = [](const QString& text) {
            if (!qEnvironmentVariableIsSet("FIXTURE_LENIENT"))
                qFatal("%s", qPrintable(text));
        };
    }

    [[nodiscard]] QString data() const { return path(u"data/"_s); }
    [[nodiscard]] QString archive() const { return path(u"stick/Sicherung.zip"_s); }

    /// Runs a command on the loaded catalogue, whose last list is open then.
    void run(const std::function<void(Machine&)>& command)
    {
        mnuLaden_Click(root);
        root.Visible = true;
        command(*this);
    }
    void answer(Answer answer) { messages.script({answer, {}, {}, {}, {}}); }
    /// With room for everything.
    void setStick()
    {
        volumes.set(folder, {});
        services.folders.temp = path(u"tmp"_s);
    }
};

void layOut(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the fixture could not be laid out");
}

/// The first list is a new one, which has no file in "Playlisten" yet; another lies elsewhere.
QString listFile(const QString& folder, int row)
{
    constexpr int Foreign = 5;
    if (row == Foreign)
        return folder + u"/fremd/Liste 5.m3u"_s;
    return folder + (row == 1 ? u"/data/Neu.tmp"_s : u"/data/Playlisten/Liste %1.m3u"_s.arg(row));
}

/// Sound files beside the catalogue, with a picture.
QString soundFolder(const QString& folder)
{
    return folder + u"/Neue Musik"_s;
}

/// Two lists that are in no catalogue.
QString foreignFolder(const QString& folder)
{
    return folder + u"/Fremde Listen"_s;
}

QStringList soundFiles(const QString& folder)
{
    QStringList files;
    for (int i = 1; i <= NewTracks; ++i)
        files += soundFolder(folder) + u"/Stück %1.mp3"_s.arg(i);
    return files;
}

/// A track of whole frames with a tag of either kind.
QByteArray soundBytes()
{
    constexpr int Frames = 50;
    constexpr qsizetype FrameLength = 417;
    QByteArray bytes("ID3\x03\x00\x00\x00\x00\x02\x00", 10);
    bytes += QByteArray(256, '\0');
    for (int number = 0; number < Frames; ++number)
        bytes += QByteArray("\xff\xfb\x90\x44", 4) + QByteArray(FrameLength - 4, static_cast<char>(number));
    QByteArray tag("TAGAlter Titel");
    tag.resize(128, '\0');
    return bytes + tag;
}

QByteArray trackLines(const char* name, int count, const char* before = "")
{
    QByteArray list;
    for (int track = 0; track < count; ++track)
        list += before + QByteArray("/musik/") + name + ' ' + QByteArray::number(track) + ".mp3\r\n";
    return list;
}

/// A backup of another day, with other lists, a list that is gone since and another description of each.
void layBackupOut(const QString& folder)
{
    const QString model = folder + u"/vorlage"_s;
    QDir().mkpath(model + u"/Playlisten"_s);
    QDir().mkpath(model + u"/Resource"_s);
    QDir().mkpath(folder + u"/stick"_s);
    for (int row = 2; row <= Lists; ++row) {
        layOut(model + u"/Playlisten/Liste %1.m3u"_s.arg(row), trackLines("Lied", 150 * row) + "\r\n");
        layOut(model + u"/Resource/Liste %1.jpg"_s.arg(row), "Gesichertes Bild " + QByteArray::number(row));
    }
    layOut(model + u"/Playlisten/Gesichert.m3u"_s, trackLines("Lied", 10) + "\r\n");
    QFile database(folder + u"/data/Orvantine.dat"_s);
    if (!database.open(QIODevice::ReadOnly))
        qFatal("no database to back up");
    layOut(model + u"/Playlisten/Orvantine.dat"_s, database.readAll().replace("Beschreibung", "Gesichertes"));
    Machine machine(folder);
    const ArchiveJob job{.archive = machine.archive(),
                         .trees = {{model + u"/Playlisten"_s, true}, {model + u"/Resource"_s, false}},
                         .compression = Compression::Strong,
                         .takes = {}};
    if (!machine.zip.add(job, {}).done)
        qFatal("the backup could not be laid out");
}

bool isCarrying(QByteArrayView command)
{
    return command.startsWith("transfer") || command.startsWith("pack");
}

QString stick(const QString& folder)
{
    return folder + u"/stick"_s;
}

/// Longer than what is written in one go.
QString longSound(const QString& folder)
{
    return soundFolder(folder) + u"/Lang.mp3"_s;
}

/// The tracks that are carried, and what an earlier run has left on the stick.
void prepareCarrying(const QString& folder)
{
    constexpr qsizetype LongLength = 5 << 19;
    layOut(longSound(folder), QByteArray(LongLength, 'l'));
    QDir().mkpath(stick(folder) + u"/Rock"_s);
    QDir().mkpath(folder + u"/tmp"_s);
    layOut(stick(folder) + u"/Liste 6.m3u"_s, "von frueher\r\n");
    layOut(stick(folder) + u"/Rock/Lang.mp3"_s, "von frueher");
    layOut(stick(folder) + u"/fremd.part"_s, "fremd");
    QByteArray list;
    const QStringList tracks = QStringList{longSound(folder)} + soundFiles(folder).first(2);
    for (const QString& track : tracks)
        list += track.toUtf8() + "\r\n";
    for (int row = 1; row <= Lists; ++row)
        layOut(listFile(folder, row), list + "\r\n");
}

/// What some commands find besides.
void prepareFor(const QString& folder, const QByteArray& command)
{
    QDir().mkpath(folder + u"/fremd"_s);
    if (command == "convert" || command == "convert-lf") {
        const QByteArray list = trackLines("Lied", 700, "#EXTINF:1,Lied\r\n");
        layOut(listFile(folder, Lists), command == "convert" ? list : QByteArray(list).replace("\r", ""));
    }
    if (command == "nml") {
        QByteArray list = "<?xml version=\"1.0\"?>\r\n<NML>\r\n";
        for (int track = 0; track < 20; ++track)
            list += "<ENTRY>\r\n<LOCATION FILE=\"Lied " + QByteArray::number(track) +
                    ".mp3\" PATH=\"/musik/\"/>\r\n</ENTRY>\r\n";
        layOut(folder + u"/fremd/Import.nml"_s, list + "</NML>\r\n");
    }
    if (command == "browse" || command == "local-save")
        layOut(folder + u"/fremd/Fremde Liste.m3u"_s, trackLines("Fremd", 400) + "\r\n");
    if (command == "tag" || command == "untag")
        layOut(soundFiles(folder).front(), soundBytes());
    if (isCarrying(command))
        prepareCarrying(folder);
}

/// Lists with tracks, descriptions, a favourite, covers, names of tracks before the catalogue.
void prepare(const QString& folder)
{
    for (const QString& name : {u"data/Playlisten"_s, u"data/Resource"_s, u"data/Burning"_s, u"program"_s, u"fremd"_s})
        QDir().mkpath(folder + u'/' + name);
    QDir().mkpath(soundFolder(folder));
    const QStringList sounds = soundFiles(folder);
    for (const QString& sound : sounds)
        layOut(sound, "Klang");
    layOut(soundFolder(folder) + u"/Bild.jpg"_s, "Bild dazu");
    QDir().mkpath(foreignFolder(folder));
    for (const QString& list : {u"/Eine.m3u"_s, u"/Andere.m3u"_s})
        layOut(foreignFolder(folder) + list, "/musik/Lied 1.mp3\r\n/musik/Lied 2.mp3\r\n\r\n");
    layOut(folder + u"/program/Orvantine.dll"_s, "");
    layOut(folder + u"/data/Playlisten/Lose.m3u"_s, "/musik/Lied 1.mp3\r\n\r\n");
    layOut(folder + u"/data/Playlisten/Alt.bak"_s, "/musik/Lied 2.mp3\r\n\r\n");

    QByteArray text = "[TagInfo]\r\n";
    for (int track = 0; track < 200; ++track)
        text += "/musik/Lied " + QByteArray::number(track) + ".mp3=Eine Band - Lied\r\n";
    text +=
        "[Rename]\r\nListe 6.m3u=Liste 6\r\n[Options]\r\nDaten=1\r\nCopyStick=\r\nCopyDate=01.01.2001\r\nSoundfiles=" +
        soundFolder(folder).toUtf8() + "\r\n[Index]\r\n";
    for (int row = 1; row <= Lists; ++row) {
        const QByteArray number = QByteArray::number(row);
        const QString path = listFile(folder, row);
        QByteArray list;
        for (int track = 150 * row - 1; track >= 0; --track)
            list += "/musik/Lied " + QByteArray::number(track) + ".mp3\r\n";
        layOut(path, list + "\r\n"); // as a list is that was opened before
        layOut(folder + u"/data/Resource/Liste %1.jpg"_s.arg(row), "Bild " + number);
        text += number + "a=00" + QByteArray::number(row - 1) + "\r\n" + number + "b=Liste " + number + "\r\n" +
                number + "c=" + path.toUtf8() + "\r\n" + number + "d=" + QByteArray::number(150 * row) + "\r\n" +
                number + "e=Beschreibung " + number + "\r\n" + number + "f=01.02.2003\r\n" + number +
                (row == 2 ? "g=1\r\n" : "g=0\r\n");
    }
    layOut(folder + u"/data/Orvantine.dat"_s, text);
    // The copy of another day.
    layOut(folder + u"/data/Orvantine.bak"_s,
           QByteArray(text).replace("Beschreibung", "Frueheres").replace("01.02.2003", "31.12.2001"));
    prepareFor(folder, qgetenv("FIXTURE_FOR"));
    if (const QByteArray command = qgetenv("FIXTURE_FOR"); command == "backup" || command == "restore")
        layBackupOut(folder);
}

QByteArray sumOf(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Md5).toHex().left(12);
}

/// A list counts by its entries, wherever the folder stands: lines without text come and go.
QByteArray contentOf(const Machine& machine, const QString& path)
{
    const QByteArray bytes = machine.files.readBytes(path).bytes;
    if (path.endsWith(u"jpg"_s))
        return sumOf(bytes);
    QByteArrayList entries = bytes.split('\n');
    for (QByteArray& entry : entries)
        entry = entry.trimmed().replace(machine.folder.toUtf8(), "FOLDER");
    entries.removeAll(QByteArray());
    return QByteArray::number(entries.size()) + " entries, " + sumOf(entries.join('\n'));
}

void showArchive(Machine& machine)
{
    if (!machine.files.exists(machine.archive()))
        return;
    const std::unique_ptr<OpenedArchive> archive = machine.zip.open(machine.archive(), 1000);
    if (!archive)
        std::printf("the archive is torn\n");
    for (std::size_t i = 0; archive && i < archive->entries().size(); ++i)
        std::printf("packed %s\n", qPrintable(archive->entries()[i].name));
}

/// A sound file on the stick is the old one or the whole new one, whatever a killed run has come to.
void showSound(const Machine& machine, const QString& file)
{
    const QByteArray bytes = machine.files.readBytes(file).bytes;
    const QString name = file.section(u'/', -1);
    const QString source = soundFolder(machine.folder) + u'/' + name;
    if (bytes != "von frueher" && bytes != machine.files.readBytes(source).bytes)
        std::printf("stick: short %s\n", qPrintable(name));
}

/// What is carried last tells whether the command has come to its end. Nothing is short, and no part is left.
void showCarried(Machine& machine)
{
    const QString top = stick(machine.folder);
    QStringList folders = machine.files.folders(top);
    folders.prepend(QString());
    for (const QString& folder : std::as_const(folders)) {
        const QString path = folder.isEmpty() ? top : top + u'/' + folder;
        const QStringList names = machine.files.list(path, u"*"_s);
        for (const QString& name : names) {
            if (name.endsWith(u".mp3"_s))
                showSound(machine, path + u'/' + name);
            else if (name.endsWith(u".part"_s) && name != u"fremd.part"_s)
                std::printf("stick: left %s\n", qPrintable(name));
            else if (name.endsWith(u".m3u"_s) && !folder.isEmpty() &&
                     contentOf(machine, path + u'/' + name).left(10) != "3 entries,")
                std::printf("stick: short %s\n", qPrintable(name));
            else if (name == u"Orvantine.dat"_s && machine.profiles.keys(path + u'/' + name, u"Index"_s).size() != 42)
                std::printf("stick: short %s\n", qPrintable(name));
        }
    }
    for (const QString& last : {u"/Lang.mp3"_s, u"/Liste 6.m3u"_s, u"/Orvantine.log"_s})
        std::printf("stick%s: %s\n", qPrintable(last), contentOf(machine, top + last).constData());
    const auto archive = machine.zip.open(top + u"/Orvanten (Pack and Go).zip"_s, 1000);
    std::printf("stick: %d entries in the archive\n", archive ? static_cast<int>(archive->entries().size()) : 0);
}

/// Everything that a user would miss: the lists and pictures with what they hold, the sections beside the catalogue,
/// and, behind the line "Index", the keys of the catalogue.
void show(Machine& machine)
{
    constexpr auto KeysOfRow = 7;
    const QString database = machine.data() + u"Orvantine.dat"_s;
    const QString backup = machine.data() + u"Orvantine.bak"_s;
    for (const QString& folder : {u""_s, u"Playlisten/"_s, u"Resource/"_s}) {
        const QString copies = folder == u"Playlisten/"_s ? u";*.bak"_s : QString();
        const QStringList found = machine.files.list(machine.data() + folder, u"*.m3u;*.tmp;*.jpg"_s + copies);
        for (const QString& file : found)
            std::printf("%s%s: %s\n", qPrintable(folder), qPrintable(file),
                        contentOf(machine, machine.data() + folder + file).constData());
    }
    const QStringList sounds = soundFiles(machine.folder);
    for (const QString& sound : sounds)
        std::printf("%s: %s\n", qPrintable(sound.section(u'/', -1)),
                    sumOf(machine.files.readBytes(sound).bytes).constData());
    showArchive(machine);
    const QStringList trashed = machine.files.list(machine.path(u"Trash/files"_s), u"*"_s);
    for (const QString& file : trashed)
        std::printf("trash %s: %s\n", qPrintable(file),
                    contentOf(machine, machine.path(u"Trash/files/"_s) + file).constData());
    // A copy may stand before the command it is made for has ended. A torn one would spoil the next save.
    if (const auto keys = machine.profiles.keys(backup, u"Index"_s).size();
        machine.files.exists(backup) && (keys == 0 || keys % KeysOfRow != 0))
        std::printf("Orvantine.bak: torn\n");
    const QString index = machine.data() + u"Orvantine.idx"_s;
    if (machine.files.exists(index) && !machine.files.readBytes(index).bytes.endsWith("\r\n"))
        std::printf("Orvantine.idx: torn\n");
    if (QDir(stick(machine.folder)).exists())
        showCarried(machine);
    for (const QString& section : {u"TagInfo"_s, u"Rename"_s, u"Options"_s})
        std::printf("%s: %d\n", qPrintable(section), static_cast<int>(machine.profiles.keys(database, section).size()));
    std::printf("Index\n");
    for (int row = 1; row <= Lists + 2; ++row)
        for (const char letter : {'a', 'b', 'c', 'd', 'e', 'f', 'g'}) {
            const QString key = QString::number(row) + QLatin1Char(letter);
            std::printf("%s=%s\n", qPrintable(key), qPrintable(machine.profiles.value(database, u"Index"_s, key)));
        }
}

void open(Root& root, int row)
{
    root.LListView1.select(row);
    root.LListView1.Click();
}

void removePlaylist(Machine& machine, int row)
{
    machine.root.LListView1.select(row);
    machine.answer(Answer::Ok);
    machine.root.mnuLöschen.Click();
}

void removeTrack(Machine& machine)
{
    machine.root.LListView2.select(machine.root.LListView2.count() - 5);
    machine.answer(Answer::Ok);
    machine.root.mnuFileKill.Click();
}

void closeNextModal(Machine& machine, const QString& name)
{
    machine.forms.whileModal(name, [&machine](Form& form) { machine.forms.unload(form); });
}

/// The finder takes what it finds; a run of the index comes first.
void find(Machine& machine, const QString& folder, int type)
{
    machine.root.mnuLokalePlayliste.Checked = false;
    machine.forms.whileModal(u"FindAudio"_s, [&machine, folder, type](Form&) {
        FindAudio& form = *machine.root.findAudio;
        form.TDrives.Text = folder;
        form.LFindType.ListIndex = type;
        form.Command1.Click();
        form.BReady.Click();
    });
    machine.root.mnuAddFolder.Click();
}

struct Command
{
    QByteArrayView name;
    void (*run)(Machine&);
};

constexpr Command Commands[] = {
    {"save",
     [](Machine& machine) {
         machine.root.LListView1.setSubItem(3, 1, u"Anderer Name"_s);
         machine.root.mnuSpeichern.Click();
     }},
    {"remove", [](Machine& machine) { removePlaylist(machine, 3); }},
    {"remove-last", [](Machine& machine) { removePlaylist(machine, machine.root.LListView1.count()); }},
    {"move",
     [](Machine& machine) {
         machine.root.LListView1.select(4);
         machine.root.mnuVerschiebung[1].Click();
     }},
    {"positions",
     [](Machine& machine) {
         machine.forms.whileModal(u"Positionen"_s, [&machine](Form&) {
             Positionen& form = *machine.root.positionen;
             QStringList lines = form.LSortView.List;
             std::reverse(lines.begin(), lines.end());
             form.LSortView.List = lines;
             machine.answer(Answer::Ok);
             form.BReady.Click();
         });
         machine.root.mnuVerschiebung[4].Click();
     }},
    {"rename",
     [](Machine& machine) {
         open(machine.root, 3);
         machine.messages.enter(u"Anderer Name"_s);
         machine.root.mnuUmbenennen.Click();
     }},
    {"properties",
     [](Machine& machine) {
         open(machine.root, 4);
         showEigenschaften(machine.root);
         Eigenschaften& form = *machine.root.eigenschaften;
         form.tPlaylistname.Text = u"Anderer Name"_s;
         form.tBeschreibung.Text = u"Andere Beschreibung"_s;
         form.BReady.Click();
     }},
    {"remove-track", removeTrack},
    {"remove-new-track",
     [](Machine& machine) {
         open(machine.root, 1);
         removeTrack(machine);
     }},
    {"name-by-tag",
     [](Machine& machine) {
         Root& root = machine.root;
         while (root.LListView2.count() > 1)
             root.LListView2.remove(root.LListView2.count());
         root.sAnzeige[1].Caption = u"Lied"_s;
         root.sAnzeige[2].Caption = u"Eine Band"_s;
         root.mnuSetTagName.Click();
     }},
    {"sort",
     [](Machine& machine) {
         machine.answer(Answer::Yes);
         machine.root.mnuSortierung[1].Click();
     }},
    {"add-folder",
     [](Machine& machine) {
         machine.forms.whileModal(u"Ordner"_s, [&machine](Form& form) {
             machine.root.tBrowseFolder.Text = soundFolder(machine.folder);
             machine.root.tBrowseFolder.Tag = u"1"_s;
             machine.forms.unload(form);
         });
         machine.root.mnuAddSounds.Click();
     }},
    {"paste",
     [](Machine& machine) {
         machine.root.LListView2.SetFocus();
         machine.root.mnuEditCopy.Tag = u"2"_s;
         machine.clipboard.copied = soundFiles(machine.folder);
         machine.answer(Answer::Yes);
         machine.root.mnuEditPaste.Click();
     }},
    {"drop", [](Machine& machine) { LListView2_OLEDragDrop(machine.root, soundFiles(machine.folder)); }},
    {"convert", [](Machine&) {}},
    {"convert-lf", [](Machine&) {}},
    {"nml",
     [](Machine& machine) {
         machine.choosers.open(machine.path(u"fremd/Import.nml"_s));
         machine.root.mnuDurchsuchen.Click();
     }},
    {"browse",
     [](Machine& machine) {
         machine.choosers.open(machine.path(u"fremd/Fremde Liste.m3u"_s));
         machine.root.mnuDurchsuchen.Click();
     }},
    {"new",
     [](Machine& machine) {
         machine.messages.enter(u"Ganz neu"_s);
         machine.root.mnuNeu.Click();
     }},
    {"local-save",
     [](Machine& machine) {
         Root& root = machine.root;
         root.mnuLokalePlayliste.Checked = true;
         root.LListView1.setSubItem(5, 2, machine.path(u"fremd/Fremde Liste.m3u"_s));
         open(root, 5);
         TrackList::Hold hold = root.trackList.hold();
         hold.remove(7);
         SavePlayEntrys(root);
     }},
    {"export",
     [](Machine& machine) {
         machine.choosers.save(machine.path(u"data/Playlisten/Liste 4.m3u"_s));
         mnuSpeichernUnter_Click(machine.root);
     }},
    {"cover",
     [](Machine& machine) {
         machine.choosers.open(machine.path(u"Neue Musik/Bild.jpg"_s));
         pCovers_Click(machine.root);
     }},
    {"cover-away",
     [](Machine& machine) {
         machine.answer(Answer::Yes);
         pCovers_MouseDown(machine.root, MouseButton::Right);
     }},
    {"move-track",
     [](Machine& machine) {
         machine.root.LListView2.select(40);
         machine.root.mnuMoveEntry[1].Click();
     }},
    {"tag",
     [](Machine& machine) {
         const QString track = soundFiles(machine.folder).front();
         Mp3Record record;
         machine.tags->Mp3FileInfo(track, record);
         std::copy_n("Neuer Titel", 11, record.title);
         record.trackFlagA = record.trackFlagB = 1;
         machine.tags->WriteID3V1(track, record);
     }},
    {"untag", [](Machine& machine) { machine.tags->EraseID3V2(soundFiles(machine.folder).front()); }},
    {"check-lists",
     [](Machine& machine) {
         machine.answer(Answer::Yes);
         closeNextModal(machine, u"ErrorListe"_s);
         machine.root.mnuCheckPlaylists.Click();
     }},
    {"recycle",
     [](Machine& machine) {
         machine.answer(Answer::Ok);
         machine.root.mnuRecycle.Click();
     }},
    {"remap",
     [](Machine& machine) {
         machine.root.mnuErrorDisplay.Checked = false;
         machine.forms.whileModal(u"FolderCheck"_s, [&machine](Form&) {
             FolderCheck& form = *machine.root.folderCheck;
             form.tFolderOld.Text = u"/musik"_s;
             form.tFolderNew.Text = u"/klang"_s;
             machine.answer(Answer::Yes);
             machine.answer(Answer::Ok);
             form.BReady.Click();
         });
         machine.root.mnuFolderCheck.Click();
     }},
    {"find-tracks", [](Machine& machine) { find(machine, soundFolder(machine.folder), FindAudio::NamesAndFolders); }},
    {"find-lists", [](Machine& machine) { find(machine, foreignFolder(machine.folder), FindAudio::Playlists); }},
    {"backup",
     [](Machine& machine) {
         machine.choosers.save(machine.archive());
         machine.root.mnuDbSicherungen.Click();
     }},
    {"restore",
     [](Machine& machine) {
         machine.answer(Answer::Ok);
         machine.choosers.open(machine.archive());
         machine.root.mnuDbWiederherstellung.Click();
     }},
    {"restore-copy",
     [](Machine& machine) {
         machine.answer(Answer::Yes);
         machine.root.mnuWiederherstellen.Click();
     }},
    {"reset",
     [](Machine& machine) {
         PosixFiles files({.recoveryFolder = machine.path(u"reset"_s)});
         (void)resetDatabase(files, {.dataFolder = machine.data(),
                                     .trash = machine.path(u"Trash"_s),
                                     .now = QDateTime(QDate(2026, 11, 20), QTime(12, 0))});
     }},
    {"transfer",
     [](Machine& machine) {
         machine.setStick();
         machine.answer(Answer::Ok);
         machine.choosers.chooseFolder(stick(machine.folder));
         machine.messages.enter(u"Rock"_s);
         machine.answer(Answer::Ok);
         machine.root.mnuHandling[1].Click();
     }},
    {"transfer-track",
     [](Machine& machine) {
         machine.setStick();
         machine.root.LListView2.select(1);
         machine.answer(Answer::Ok);
         machine.choosers.chooseFolder(stick(machine.folder));
         machine.answer(Answer::Ok);
         machine.root.mnuHandling[4].Click();
     }},
    {"pack-folder",
     [](Machine& machine) {
         machine.setStick();
         machine.answer(Answer::No);
         machine.answer(Answer::Cancel);
         machine.choosers.chooseFolder(stick(machine.folder));
         machine.answer(Answer::Ok);
         machine.root.mnuPackGo.Click();
     }},
    {"pack-zip",
     [](Machine& machine) {
         machine.setStick();
         machine.answer(Answer::Yes);
         machine.choosers.chooseFolder(stick(machine.folder));
         machine.answer(Answer::Ok);
         machine.root.mnuPackGo.Click();
     }},
    {"drop-folder", [](Machine& machine) { LListView1_OLEDragDrop(machine.root, {soundFolder(machine.folder)}); }},
};

} // namespace

/// orvantine-crash-fixture prepare|show|COMMAND FOLDER; without arguments the commands are told.
int main(int argc, char** argv)
{
    if (argc == 1) {
        for (const Command& command : Commands)
            std::printf("%s\n", command.name.data());
        return 0;
    }
    if (argc != 3)
        return 2;
    const QByteArrayView name(argv[1]);
    const QString folder = QFile::decodeName(argv[2]);
    if (name == "prepare") {
        prepare(folder);
        return 0;
    }
    // As a start does it.
    (void)PosixFiles({.recoveryFolder = folder + u"/reset"_s});
    Machine machine(folder);
    if (name == "show") {
        show(machine);
        return 0;
    }
    const auto* const command =
        std::find_if(std::begin(Commands), std::end(Commands), [name](const Command& c) { return c.name == name; });
    if (command == std::end(Commands))
        return 2;
    machine.run(command->run);
    return 0;
}
