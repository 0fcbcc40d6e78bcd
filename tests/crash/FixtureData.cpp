#include "crash/FixtureData.h"

#include "app/Registry.h"
#include "catalogue/mnuLaden.h"
#include "desktop/tags/TagLibTags.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>

#include <cstdio>

namespace orvantine::crash {

using namespace Qt::StringLiterals;

namespace {

constexpr int Lists = 6;
constexpr int NewTracks = 12;

} // namespace

Machine::Machine(const QString& where)
    : DiskDesktop(where, [](Files& disk) { return std::make_unique<TagLibTags>(disk); })
{
    settings.createKey(Hive::CurrentUser, settingsKey());
    // Where a call of the disk fails a box may come up that nobody has an answer for: it is refused.
    complaints.Report = [](const QString& text) {
        if (!qEnvironmentVariableIsSet("FIXTURE_LENIENT"))
            qFatal("%s", qPrintable(text));
    };
}

QString Machine::data() const
{
    return path(u"data/"_s);
}

QString Machine::archive() const
{
    return path(u"stick/Sicherung.zip"_s);
}

void Machine::run(const std::function<void(Machine&)>& command)
{
    mnuLaden_Click(root);
    root.Visible = true;
    command(*this);
}

void Machine::answer(Answer answer)
{
    messages.script({answer, {}, {}, {}, {}});
}

void Machine::setStick()
{
    volumes.set(folder, {});
    services.folders.temp = path(u"tmp"_s);
}

namespace {

void layOut(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the fixture could not be laid out");
}

} // namespace

QString listFile(const QString& folder, int row)
{
    constexpr int Foreign = 5;
    if (row == Foreign)
        return folder + u"/fremd/Liste 5.m3u"_s;
    return folder + (row == 1 ? u"/data/Neu.tmp"_s : u"/data/Playlisten/Liste %1.m3u"_s.arg(row));
}

QString soundFolder(const QString& folder)
{
    return folder + u"/Neue Musik"_s;
}

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

namespace {

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

} // namespace

QString stick(const QString& folder)
{
    return folder + u"/stick"_s;
}

namespace {

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

} // namespace

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

namespace {

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

} // namespace

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

} // namespace orvantine::crash
