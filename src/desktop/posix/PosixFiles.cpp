#include "desktop/posix/PosixFiles.h"

#include "desktop/posix/HostFile.h"
#include "platform/CaseFold.h"
#include "platform/HostText.h"
#include "platform/NamePattern.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace orvantine {

PosixFiles::PosixFiles(PosixFilesOptions options)
    : m_options(std::move(options)),
      m_names(m_options.drives),
      m_store(m_options.recoveryFolder.toUtf8()),
      m_undo(m_options.recoveryFolder.toUtf8(), m_store)
{
    removeLeftPart();
}

PosixFiles::~PosixFiles() = default;

bool PosixFiles::exists(const QString& path) const
{
    if (path.endsWith(u'/') || path.endsWith(u'\\'))
        return false;
    if (m_names.find(path).error == 0)
        return true;
    const qsizetype cut = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\')) + 1;
    const QStringView pattern = QStringView(path).sliced(cut);
    if (!isPattern(pattern))
        return false;
    const NameLookup::Found folder = m_names.find(cut > 0 ? path.left(cut) : u"."_s);
    if (folder.error != 0 || !S_ISDIR(folder.info.st_mode))
        return false;
    // A folder lists itself as "." as well, so that "*" matches in an empty one.
    const QStringList names = m_names.names(folder.path) + QStringList{u"."_s, u".."_s};
    return std::any_of(names.begin(), names.end(),
                       [pattern](const QString& name) { return matchesPattern(name, pattern); });
}

std::function<bool(const QString& name)> PosixFiles::namesIn(const QString& folder) const
{
    const NameLookup::Found found = m_names.find(folder);
    if (found.error != 0 || !S_ISDIR(found.info.st_mode))
        return Files::namesIn(folder);
    return [this, folder, isKnown = m_names.keysOf(found.path)](const QString& name) {
        // A miss is told by the listing; all else is looked up.
        const bool plain = !name.isEmpty() && !isPattern(name) && !name.contains(u'/') && !name.contains(u'\\') &&
                           name != u"."_s && name != u".."_s;
        return (!plain || isKnown(NameLookup::keyOf(name))) && exists(folder + name);
    };
}

bool PosixFiles::folderExists(const QString& path) const
{
    return m_names.find(path).error == 0;
}

bool PosixFiles::isFolder(const QString& path) const
{
    const NameLookup::Found found = m_names.find(path);
    return found.error == 0 && S_ISDIR(found.info.st_mode);
}

bool PosixFiles::isLink(const QString& path) const
{
    QString name = path;
    while (name.size() > 1 && (name.endsWith(u'/') || name.endsWith(u'\\')))
        name.chop(1);
    const NameLookup::Found found = m_names.find(name);
    struct stat entry = {};
    return found.error == 0 && ::lstat(found.path.constData(), &entry) == 0 && S_ISLNK(entry.st_mode);
}

std::optional<qint64> PosixFiles::size(const QString& path) const
{
    const NameLookup::Found found = m_names.find(path);
    if (found.error != 0 || !S_ISREG(found.info.st_mode))
        return std::nullopt;
    return found.info.st_size;
}

std::optional<QDateTime> PosixFiles::modified(const QString& path) const
{
    const NameLookup::Found found = m_names.find(path);
    if (found.error != 0)
        return std::nullopt;
    return QDateTime::fromMSecsSinceEpoch(stampOf(found.info).modifiedNanoseconds / 1'000'000);
}

std::optional<FileStamp> PosixFiles::stamp(const QString& path) const
{
    const NameLookup::Found found = m_names.find(path);
    if (found.error != 0)
        return std::nullopt;
    return stampOf(found.info);
}

std::optional<QByteArray> PosixFiles::nativePath(const QString& path) const
{
    const NameLookup::Found found = m_names.find(path);
    if (found.error != 0)
        return std::nullopt;
    return absolutePath(found.path);
}

QStringList PosixFiles::sortedNames(const QString& folder, bool folders, const QString& patterns) const
{
    const NameLookup::Found found = m_names.find(folder);
    if (found.error != 0 || !S_ISDIR(found.info.st_mode))
        return {};
    std::vector<std::pair<QString, QString>> kept;
    const QString base = folder.endsWith(u'/') || folder.endsWith(u'\\') ? folder : folder + u'/';
    const QStringList names = m_names.names(found.path);
    for (const QString& name : names) {
        if (name.startsWith(u'.') || !matchesAnyPattern(name, patterns))
            continue;
        const NameLookup::Found entry = m_names.find(base + name);
        if (entry.error == 0 && (folders ? S_ISDIR(entry.info.st_mode) : S_ISREG(entry.info.st_mode)))
            kept.emplace_back(folded(name), name);
    }
    std::sort(kept.begin(), kept.end());
    QStringList result;
    result.reserve(static_cast<qsizetype>(kept.size()));
    for (const auto& entry : kept)
        result += entry.second;
    return result;
}

QStringList PosixFiles::list(const QString& folder, const QString& patterns) const
{
    return sortedNames(folder, false, patterns);
}

QStringList PosixFiles::folders(const QString& folder) const
{
    return sortedNames(folder, true, u"*"_s);
}

ReadBytes PosixFiles::readBytes(const QString& path) const
{
    ReadBytes result;
    m_undo.noteRead();
    const NameLookup::Found found = m_names.find(path);
    if (found.error != 0) {
        result.outcome = isMissing(found.error) ? ReadOutcome::Missing : ReadOutcome::Failed;
        return result;
    }
    if (!S_ISREG(found.info.st_mode))
        return result;
    struct stat info = {};
    const Descriptor file = openRegular(found.path, O_RDONLY, info);
    if (!file.isOpen()) {
        result.outcome = isMissing(errno) ? ReadOutcome::Missing : ReadOutcome::Failed;
        return result;
    }
    if (info.st_size > m_options.maximumReadSize)
        return result;
    // One byte more than there should be: a file that grows meanwhile is read again to its new end.
    qint64 wanted = info.st_size + 1;
    do {
        if (!readAt(file, 0, wanted, result.bytes)) {
            result.bytes.clear();
            return result;
        }
        wanted = result.bytes.size() < wanted ? 0 : wanted * 2;
    } while (wanted > 0 && wanted <= m_options.maximumReadSize);
    if (wanted > 0) {
        result.bytes.clear();
        return result;
    }
    result.outcome = ReadOutcome::Done;
    return result;
}

ReadText PosixFiles::readText(const QString& path) const
{
    const ReadBytes read = readBytes(path);
    return {read.outcome, decode(read.bytes)};
}

ReadText PosixFiles::readPlaylist(const QString& path)
{
    if (PosixFiles::size(path).value_or(0) > LargestPlaylist)
        return {};
    ReadBytes read = readBytes(path);
    if (read.done() && !isText(read.bytes))
        return {};
    if (read.done() && m_options.adoptsHostTexts && needsAdoption(read.bytes)) {
        // It would be no playlist any more.
        if (read.bytes.size() + read.bytes.count('\n') > LargestPlaylist)
            return {};
        read.bytes = adopted(read.bytes);
        const PartChange alone(*this);
        writeBytes(path, read.bytes);
    }
    return {read.outcome, decode(read.bytes)};
}

bool PosixFiles::mayHoldPlaylist(const QString& path) const
{
    if (PosixFiles::size(path).value_or(0) > LargestPlaylist)
        return false;
    const ReadBytes read = readBytes(path);
    return read.outcome == ReadOutcome::Missing || (read.done() && isText(read.bytes));
}

} // namespace orvantine
