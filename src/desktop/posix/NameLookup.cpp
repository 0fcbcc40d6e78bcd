#include "desktop/posix/NameLookup.h"

#include "platform/CaseFold.h"
#include "platform/CodePage.h"
#include "platform/FileDirPath.h"

#include <QUtf8StringView>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <tuple>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

constexpr int keptFolders = 128;
// Ends the search in a tree where every level holds many spellings of one name.
constexpr int searchBudget = 512;
// A byte that cannot be told in any other way stands in a text as U+DC00 plus its value.
constexpr char16_t escapeBase = 0xdc00;

bool isAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80; });
}

bool isUtf8(const QByteArray& bytes)
{
    return QUtf8StringView(bytes).isValidUtf8();
}

bool isEscape(QChar unit)
{
    return unit.unicode() >= escapeBase + 0x80 && unit.unicode() <= escapeBase + 0xff;
}

QByteArray bytesOf(const QString& text)
{
    if (std::none_of(text.begin(), text.end(), isEscape))
        return text.toUtf8();
    QByteArray bytes;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool paired = i > 0 && text[i - 1].isHighSurrogate();
        if (!isEscape(text[i]) || paired)
            continue;
        bytes += QStringView(text).sliced(start, i - start).toUtf8();
        bytes += static_cast<char>(text[i].unicode() - escapeBase);
        start = i + 1;
    }
    return bytes + QStringView(text).sliced(start).toUtf8();
}

QString escaped(const QByteArray& name)
{
    QString text;
    for (const char byte : name) {
        const auto value = static_cast<unsigned char>(byte);
        text += QChar(static_cast<char16_t>(value < 0x80 ? value : escapeBase + value));
    }
    return text;
}

bool sameTime(const timespec& a, const timespec& b)
{
    return a.tv_sec == b.tv_sec && a.tv_nsec == b.tv_nsec;
}

bool sameFolder(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && sameTime(a.st_mtim, b.st_mtim) &&
           sameTime(a.st_ctim, b.st_ctim);
}

// A folder that changed a moment ago can change once more under the same time.
bool isSettled(const struct stat& info)
{
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    const qint64 age = (qint64{now.tv_sec} - info.st_mtim.tv_sec) * 1'000'000'000 + now.tv_nsec - info.st_mtim.tv_nsec;
    const bool coarseTimes = info.st_mtim.tv_nsec == 0;
    const qint64 window = coarseTimes ? 2'100'000'000 : 20'000'000;
    return age > window || age < -window;
}

// How far a name on disk is from the wanted one; the nearest is tried first.
int distance(const QByteArray& name, const QByteArray& wanted)
{
    if (name == wanted)
        return 0;
    if (!isUtf8(name))
        return 3;
    return folded(QString::fromUtf8(name)) == folded(NameLookup::textOf(wanted)) ? 1 : 2;
}

QByteArray joined(const QByteArray& folder, const QByteArray& name)
{
    return folder.endsWith('/') ? folder + name : folder + '/' + name;
}

} // namespace

NameLookup::NameLookup(const QMap<QString, QString>& drives)
{
    for (auto drive = drives.cbegin(); drive != drives.cend(); ++drive)
        m_drives.insert(drive.key().left(2).toUpper(), drive.value());
}

QString NameLookup::textOf(const QByteArray& name)
{
    return isUtf8(name) ? QString::fromUtf8(name) : CodePage::fromWindows1252(name);
}

QString NameLookup::keyOf(const QString& name)
{
    return folded(isAscii(name) ? name : name.normalized(QString::NormalizationForm_C));
}

std::optional<QString> NameLookup::hostText(const QString& path) const
{
    if (path.isEmpty() || path.contains(QChar(u'\0')))
        return std::nullopt;
    const auto isSeparator = [](QChar unit) { return unit == u'/' || unit == u'\\'; };
    const bool drive =
        path.size() >= 2 && path[1] == u':' && path[0].isLetter() && (path.size() == 2 || isSeparator(path[2]));
    if (!drive)
        return path;
    QString folder = m_drives.value(path.left(2).toUpper());
    if (folder.isEmpty())
        return std::nullopt;
    // The text behind it begins with its own separator.
    while (folder.endsWith(u'/'))
        folder.chop(1);
    return folder + (path.size() == 2 ? u"/"_s : path.sliced(2));
}

NameLookup::Found NameLookup::find(const QString& path) const
{
    Found found;
    // One file is asked for again and again: the database.
    if (path != m_lastText || m_lastText.isEmpty()) {
        const std::optional<QString> text = hostText(path);
        if (!text) {
            found.error = ENOENT;
            return found;
        }
        m_lastText = path;
        m_lastBytes = bytesOf(*text);
    }
    found.path = m_lastBytes;
    if (::stat(found.path.constData(), &found.info) == 0)
        return found;
    if (found.path.contains('\\')) {
        found.path.replace('\\', '/');
        if (::stat(found.path.constData(), &found.info) == 0)
            return found;
    }
    found.error = errno;
    if (found.error != ENOENT && found.error != ENOTDIR)
        return found;
    Found other = search(found.path);
    if (other.error == 0)
        return other;
    if (other.error != ENOENT && other.error != ENOTDIR)
        found.error = other.error;
    return found;
}

std::function<bool(const QString& key)> NameLookup::keysOf(const QByteArray& path) const
{
    // The table is shared, not copied, until the folder is listed anew.
    const Folder& here = folder(path);
    return [entries = here.entries, whole = here.error == 0](const QString& key) {
        return !whole || entries.contains(key);
    };
}

NameLookup::Found NameLookup::search(const QByteArray& path) const
{
    Found found;
    found.error = ENOENT;
    // The usual miss: the folder stands there literally, and no name in it comes near.
    const qsizetype slash = path.lastIndexOf('/');
    if (slash > 0 && slash + 1 < path.size()) {
        struct stat info = {};
        const QByteArray parent = path.first(slash);
        if (::stat(parent.constData(), &info) == 0 && S_ISDIR(info.st_mode)) {
            const Folder& here = folder(parent, &info);
            if (here.error == 0 && !here.entries.contains(keyOf(textOf(path.sliced(slash + 1)))))
                return found;
        }
    }
    const bool absolute = path.startsWith('/');
    QList<QByteArray> parts;
    for (const QByteArray& part : path.split('/')) {
        if (!part.isEmpty())
            parts += part;
    }
    if (parts.isEmpty())
        return found;
    // What stands there literally is taken; only what lies behind it is looked for.
    qsizetype known = parts.size() - 1;
    QByteArray base;
    for (;; --known) {
        base = (absolute ? "/" : "") + parts.first(known).join('/');
        if (base.isEmpty())
            base = ".";
        struct stat info = {};
        if (known == 0 || (::stat(base.constData(), &info) == 0 && S_ISDIR(info.st_mode)))
            break;
    }
    int budget = searchBudget;
    if (descend(base, parts, known, budget, found)) {
        found.error = 0;
        if (path.endsWith('/') && !S_ISDIR(found.info.st_mode))
            found.error = ENOTDIR;
    }
    return found;
}

bool NameLookup::descend(const QByteArray& base, const QList<QByteArray>& parts, qsizetype index, int& budget,
                         Found& found) const
{
    const QByteArray& wanted = parts[index];
    std::vector<QByteArray> candidates;
    if (wanted == "." || wanted == "..") {
        candidates.push_back(wanted);
    } else {
        const Folder& here = folder(base);
        const auto entry = here.entries.constFind(keyOf(textOf(wanted)));
        if (entry != here.entries.cend())
            candidates = *entry;
        else if (here.error != 0)
            found.error = here.error;
    }
    if (candidates.size() > 1) {
        std::sort(candidates.begin(), candidates.end(), [&wanted](const QByteArray& a, const QByteArray& b) {
            return std::pair(distance(a, wanted), a) < std::pair(distance(b, wanted), b);
        });
    }
    const bool last = index + 1 == parts.size();
    for (const QByteArray& name : candidates) {
        if (--budget < 0)
            return false;
        const QByteArray path = base == "." ? name : joined(base, name);
        struct stat info = {};
        if (::stat(path.constData(), &info) != 0) {
            if (errno != ENOENT && errno != ENOTDIR)
                found.error = errno;
            continue;
        }
        if (last) {
            found.path = path;
            found.info = info;
            return true;
        }
        if (S_ISDIR(info.st_mode) && descend(path, parts, index + 1, budget, found))
            return true;
    }
    return false;
}

const NameLookup::Folder& NameLookup::folder(const QByteArray& path, const struct stat* known) const
{
    struct stat info = {};
    if (known == nullptr && ::stat(path.constData(), &info) == 0)
        known = &info;
    const auto kept = m_folders.find(path);
    if (kept != m_folders.end() && known != nullptr && kept->settled && sameFolder(kept->stamp, *known))
        return *kept;
    if (m_folders.size() >= keptFolders)
        m_folders.clear();
    Folder& fresh = m_folders[path];
    fresh = Folder();
    const int number = ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC | O_NONBLOCK);
    fresh.error = number < 0 ? errno : 0;
    if (number < 0)
        return fresh;
    ::fstat(number, &fresh.stamp);
    DIR* listing = ::fdopendir(number);
    if (listing == nullptr) {
        fresh.error = errno;
        ::close(number);
        return fresh;
    }
    errno = 0;
    while (const dirent* entry = ::readdir(listing)) {
        const QByteArray name(entry->d_name);
        if (name != "." && name != "..")
            fresh.entries[keyOf(textOf(name))].push_back(name);
        errno = 0;
    }
    fresh.error = errno;
    ::closedir(listing);
    fresh.settled = fresh.error == 0 && isSettled(fresh.stamp);
    return fresh;
}

QStringList NameLookup::names(const QByteArray& folderPath) const
{
    QStringList result;
    const Folder& here = folder(folderPath);
    result.reserve(here.entries.size());
    for (const std::vector<QByteArray>& spellings : here.entries) {
        for (const QByteArray& name : spellings)
            result += spellings.size() > 1 && !isUtf8(name) ? escaped(name) : textOf(name);
    }
    return result;
}

std::optional<QByteArray> NameLookup::creationPath(const QString& path) const
{
    const std::optional<QString> text = hostText(path);
    if (!text)
        return std::nullopt;
    const QString slashed = QString(*text).replace(u'\\', u'/');
    const QStringList parts = slashed.split(u'/');
    const QString& name = parts.last();
    if (name.isEmpty() || !FileDirPath::canBeFileName(name) || parts.contains(u"."_s) || parts.contains(u".."_s))
        return std::nullopt;
    const QByteArray nameBytes = bytesOf(name);
    const qsizetype folderLength = slashed.size() - name.size();
    if (folderLength == 0)
        return nameBytes;
    const Found parent = find(slashed.left(folderLength));
    if (parent.error != 0 || !S_ISDIR(parent.info.st_mode))
        return std::nullopt;
    return joined(parent.path, nameBytes);
}

} // namespace orvantine
