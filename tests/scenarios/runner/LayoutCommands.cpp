#include "runner/Run.h"

#include <QDir>
#include <QStringEncoder>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

namespace orvantine::scenario {

using namespace Qt::StringLiterals;

namespace {

const QString SettingsKeyName = u"Software\\Verdanis\\Orvant Manager"_s;

/// What must be chosen before the machine comes into being.
bool beforeTheMachine(Run& run)
{
    if (run.world.made())
        run.fail(u"this cannot stand in a block"_s);
    return !run.failed();
}

bool makeFolders(const QByteArray& path)
{
    struct stat info = {};
    if (::stat(path.constData(), &info) == 0)
        return S_ISDIR(info.st_mode);
    const qsizetype slash = path.lastIndexOf('/');
    return slash > 0 && makeFolders(path.first(slash)) && ::mkdir(path.constData(), 0755) == 0;
}

bool makeParents(const QByteArray& path)
{
    return makeFolders(path.first(path.lastIndexOf('/')));
}

bool writeWhole(const QByteArray& path, const QByteArray& bytes, int flags)
{
    const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_CLOEXEC | flags, 0644);
    if (file < 0)
        return false;
    qint64 done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ::write(file, bytes.constData() + done, static_cast<std::size_t>(bytes.size() - done));
        if (written <= 0)
            break;
        done += written;
    }
    return ::close(file) == 0 && done == bytes.size();
}

bool setModified(const QByteArray& path, const QDateTime& time)
{
    std::array<timespec, 2> times = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = time.toSecsSinceEpoch();
    return ::utimensat(AT_FDCWD, path.constData(), times.data(), 0) == 0;
}

void check(Run& run, bool done, const QByteArray& path)
{
    if (!done)
        run.fail(u"%1 cannot be laid out"_s.arg(QString::fromUtf8(path)));
}

/// "2026-11-20" or "2026-11-20 12:00:00" in one or two words.
QDateTime dateTime(Run& run, const Command& command, qsizetype word)
{
    QString text = run.text(command, word);
    if (command.words.size() > word + 1)
        text += u' ' + run.text(command, word + 1);
    if (text.size() == 10)
        text += u" 12:00:00"_s;
    const QDateTime time = QDateTime::fromString(text, u"yyyy-MM-dd hh:mm:ss"_s);
    if (!time.isValid())
        run.fail(u"\"%1\" is no date; the form is 2026-11-20 12:00:00"_s.arg(text));
    return time;
}

void codepage(Run& run, const Command& command)
{
    const int kind = run.choice(command, 1, {u"utf-8"_s, u"1252"_s});
    if (kind >= 0 && beforeTheMachine(run))
        run.world.options.codePage = kind == 0 ? CodePage::Utf8 : CodePage::Windows1252;
}

void adopt(Run& run, const Command& command)
{
    const bool on = run.onOff(command, 1);
    if (!run.failed() && beforeTheMachine(run))
        run.world.options.adoptsHostTexts = on;
}

void drive(Run& run, const Command& command)
{
    const QString letter = command.words[1].keyword().toUpper();
    const QString folder = command.words[2].keyword();
    if (letter.size() != 2 || !letter[0].isLetter() || letter[1] != u':')
        run.fail(u"a drive is a letter and a colon"_s);
    else if (folder.contains(u'{') || folder.startsWith(u'/'))
        run.fail(u"a drive's folder is a name below {base}"_s);
    else if (beforeTheMachine(run))
        run.world.options.drives.insert(letter, folder);
}

void date(Run& run, const Command& command)
{
    const QDateTime time = dateTime(run, command, 1);
    if (run.failed())
        return;
    if (run.world.made())
        run.desktop().events().setNow(time);
    else
        run.world.options.now = time;
}

/// Files are laid out at the virtual clock's time.
void stamp(Run& run, const QByteArray& path)
{
    setModified(path, run.desktop().events().now());
}

void folder(Run& run, const Command& command)
{
    const QByteArray path = run.path(command, 1);
    if (!run.failed())
        check(run, makeFolders(path), path);
}

/// The characters of UTF-8 bytes as windows-1252; what is no UTF-8 stays.
QByteArray inWindows1252(const QByteArray& bytes)
{
    QByteArray result;
    for (qsizetype at = 0; at < bytes.size();) {
        const auto first = static_cast<uchar>(bytes[at]);
        const qsizetype length = first < 0xC2 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
        const QString text = QString::fromUtf8(bytes.mid(at, length));
        if (length == 1 || text.contains(QChar::ReplacementCharacter)) {
            result += bytes[at++];
        } else {
            result += CodePage::toWindows1252(text);
            at += length;
        }
    }
    return result;
}

void file(Run& run, const Command& command)
{
    const QByteArray path = run.path(command, 1);
    QByteArray content;
    const bool lines = command.words.size() > 2 && !command.words[2].quoted && command.words[2].keyword() == u"lines"_s;
    if (lines) {
        QByteArray lineEnd = "\r\n";
        bool oneByte = false;
        for (qsizetype i = 3; i < command.words.size(); ++i) {
            const int option = run.choice(command, i, {u"crlf"_s, u"lf"_s, u"cr"_s, u"1252"_s});
            if (option == 3)
                oneByte = true;
            else if (option >= 0)
                lineEnd = option == 0 ? "\r\n" : option == 1 ? "\n" : "\r";
        }
        for (const RawLine& line : command.text) {
            QString error;
            const std::optional<Word> word = unescaped(line.text, &error);
            const std::optional<QByteArray> bytes = word ? run.world.expanded(*word, &error) : std::nullopt;
            if (!bytes)
                return run.fail(u"line %1: %2"_s.arg(QString::number(line.number), error));
            content += (oneByte ? inWindows1252(*bytes) : *bytes) + lineEnd;
        }
    } else {
        for (qsizetype i = 2; i < command.words.size(); ++i)
            content += run.bytes(command, i);
    }
    if (run.failed())
        return;
    check(run, makeParents(path) && writeWhole(path, content, O_TRUNC), path);
    stamp(run, path);
}

void append(Run& run, const Command& command)
{
    const QByteArray path = run.path(command, 1);
    QByteArray content;
    for (qsizetype i = 2; i < command.words.size(); ++i)
        content += run.bytes(command, i);
    if (run.failed())
        return;
    check(run, makeParents(path) && writeWhole(path, content, O_APPEND), path);
    stamp(run, path);
}

void mode(Run& run, const Command& command)
{
    const QByteArray path = run.path(command, 1);
    bool isNumber = false;
    const uint bits = run.text(command, 2).toUInt(&isNumber, 8);
    if (!isNumber)
        return run.fail(u"rights are an octal number such as 0444"_s);
    if (!run.failed())
        check(run, ::chmod(path.constData(), bits) == 0, path);
}

void time(Run& run, const Command& command)
{
    const QByteArray path = run.path(command, 1);
    const QDateTime modified = dateTime(run, command, 2);
    if (!run.failed())
        check(run, setModified(path, modified), path);
}

void symlinkCommand(Run& run, const Command& command)
{
    const QByteArray path = run.path(command, 1);
    const QByteArray target = run.bytes(command, 2);
    if (!run.failed())
        check(run, makeParents(path) && ::symlink(target.constData(), path.constData()) == 0, path);
}

void archive(Run& run, const Command& command)
{
    const QByteArray path = run.path(command, 1);
    QList<fake::FakeArchive::Packed> entries;
    for (qsizetype word = 2; word + 1 < command.words.size(); word += 2) {
        fake::FakeArchive::Packed one;
        one.entry.name = run.text(command, word);
        one.bytes = run.bytes(command, word + 1);
        one.entry.kind = one.entry.name.endsWith(u'/') ? ArchiveEntry::Kind::Folder : ArchiveEntry::Kind::File;
        one.entry.size = one.entry.packedSize = one.bytes.size();
        one.entry.modified = run.desktop().events().now();
        entries.append(one);
    }
    if (run.failed())
        return;
    check(run, makeParents(path) && writeWhole(path, fake::FakeArchive::packed(entries), O_TRUNC), path);
    stamp(run, path);
}

void hardlink(Run& run, const Command& command)
{
    const QByteArray path = run.path(command, 1);
    const QByteArray target = run.path(command, 2);
    if (!run.failed())
        check(run, makeParents(path) && ::link(target.constData(), path.constData()) == 0, path);
}

void fifo(Run& run, const Command& command)
{
    const QByteArray path = run.path(command, 1);
    if (!run.failed())
        check(run, makeParents(path) && ::mkfifo(path.constData(), 0644) == 0, path);
}

bool removeTree(const QByteArray& path)
{
    struct stat info = {};
    if (::lstat(path.constData(), &info) != 0)
        return false;
    if (!S_ISDIR(info.st_mode))
        return ::unlink(path.constData()) == 0;
    return QDir(QString::fromUtf8(path)).removeRecursively();
}

void removePath(Run& run, const Command& command)
{
    const QByteArray path = run.path(command, 1);
    if (!run.failed() && !removeTree(path))
        run.fail(u"%1 is not there"_s.arg(QString::fromUtf8(path)));
}

/// The value that begins at a word: "sz TEXT", "dword NUMBER", "binary HH HH …" and so on.
std::optional<SettingValue> settingValue(Run& run, const Command& command, qsizetype word)
{
    const QStringList types{u"sz"_s, u"expand-sz"_s, u"multi-sz"_s, u"dword"_s, u"binary"_s, u"none"_s};
    const int type = run.choice(command, word, types);
    if (type < 0 || type == 5)
        return std::nullopt;
    if (type < 4 && command.words.size() != word + 2) {
        run.fail(u"one value is missing behind the type"_s);
        return std::nullopt;
    }
    SettingValue value;
    switch (type) {
    case 0:
    case 1:
    case 2:
        value.type = type == 0 ? SettingType::String : type == 1 ? SettingType::ExpandString : SettingType::MultiString;
        value.text = run.text(command, word + 1);
        break;
    case 3:
        value = fake::dwordSetting(run.number(command, word + 1));
        break;
    default:
        value.type = SettingType::Binary;
        for (qsizetype i = word + 1; i < command.words.size(); ++i)
            value.bytes += QByteArray::fromHex(run.bytes(command, i));
        break;
    }
    return value;
}

void setting(Run& run, const Command& command)
{
    Hive hive = Hive::CurrentUser;
    QString key = SettingsKeyName;
    qsizetype word = 1;
    if (command.words[1].keyword() == u"machine"_s) {
        hive = Hive::LocalMachine;
        ++word;
    }
    if (command.words[word].keyword() == u"key"_s && command.words.size() > word + 3) {
        key = run.text(command, word + 1);
        word += 2;
    }
    if (command.words.size() < word + 2)
        return run.fail(u"a setting has a name and a value"_s);
    const QString name = run.text(command, word);
    const std::optional<SettingValue> value = settingValue(run, command, word + 1);
    if (run.failed())
        return;
    if (value)
        run.desktop().settings.put(hive, key, name, *value);
    else
        run.desktop().settings.drop(hive, key, name);
}

} // namespace

QList<CommandEntry> layoutCommands()
{
    return {
        {u"codepage"_s, u"codepage utf-8|1252"_s, 1, 1, Body::None, codepage},
        {u"adopt"_s, u"adopt on|off"_s, 1, 1, Body::None, adopt},
        {u"drive"_s, u"drive LETTER: FOLDER"_s, 2, 2, Body::None, drive},
        {u"date"_s, u"date YYYY-MM-DD [HH:MM:SS]"_s, 1, 2, Body::None, date},
        {u"folder"_s, u"folder PATH"_s, 1, 1, Body::None, folder},
        {u"file"_s, u"file PATH [\"BYTES\" …] or file PATH lines [lf|cr|1252 …]"_s, 1, -1, Body::None, file},
        {u"append"_s, u"append PATH \"BYTES\" …"_s, 2, -1, Body::None, append},
        {u"mode"_s, u"mode PATH OCTAL"_s, 2, 2, Body::None, mode},
        {u"time"_s, u"time PATH YYYY-MM-DD [HH:MM:SS]"_s, 2, 3, Body::None, time},
        {u"symlink"_s, u"symlink PATH TARGET"_s, 2, 2, Body::None, symlinkCommand},
        {u"hardlink"_s, u"hardlink PATH EXISTING"_s, 2, 2, Body::None, hardlink},
        {u"archive"_s, u"archive PATH NAME \"BYTES\" …"_s, 1, -1, Body::None, archive},
        {u"fifo"_s, u"fifo PATH"_s, 1, 1, Body::None, fifo},
        {u"delete"_s, u"delete PATH"_s, 1, 1, Body::None, removePath},
        {u"setting"_s, u"setting [machine] [key KEY] NAME TYPE VALUE"_s, 2, -1, Body::None, setting},
    };
}

} // namespace orvantine::scenario
