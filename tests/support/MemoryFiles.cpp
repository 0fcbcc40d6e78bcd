#include "support/MemoryFiles.h"

#include "platform/CaseFold.h"
#include "platform/HostText.h"
#include "platform/NamePattern.h"

#include <algorithm>
#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

QString withSlashes(const QString& path)
{
    QString text = path;
    text.replace(u'\\', u'/');
    while (text.contains(u"//"_s))
        text.replace(u"//"_s, u"/"_s);
    while (text.size() > 1 && text.endsWith(u'/'))
        text.chop(1);
    return text;
}

bool isDrive(const QString& text)
{
    return text.size() == 2 && text[0].isLetter() && text[1] == u':';
}

QString parentOf(const QString& path)
{
    const QString text = withSlashes(path);
    const qsizetype cut = text.lastIndexOf(u'/');
    return cut == 0 ? u"/"_s : text.left(std::max<qsizetype>(cut, 0));
}

QString nameOf(const QString& path)
{
    const QString text = withSlashes(path);
    return text.mid(text.lastIndexOf(u'/') + 1);
}

bool canBeCreated(const QString& name)
{
    return !name.isEmpty() && name != u"."_s && name != u".."_s &&
           std::none_of(name.begin(), name.end(),
                        [](QChar unit) { return unit.unicode() < 0x20 || u":*?\"<>|"_s.contains(unit); });
}

} // namespace

MemoryFiles::MemoryFiles(MemoryFilesOptions options) : m_options(options) {}

QString MemoryFiles::keyOf(const QString& path)
{
    return folded(withSlashes(path).normalized(QString::NormalizationForm_C));
}

const MemoryFiles::Node* MemoryFiles::node(const QString& path) const
{
    if (path.isEmpty() || path.contains(QChar::Null))
        return nullptr;
    const auto found = m_nodes.constFind(keyOf(path));
    if (found != m_nodes.constEnd())
        return found->folder || !(path.endsWith(u'/') || path.endsWith(u'\\')) ? &*found : nullptr;
    static const Node top{u"/"_s, true, false, false, {}, {}, 0, 0};
    const QString text = withSlashes(path);
    return text == u"/"_s || isDrive(text) ? &top : nullptr;
}

MemoryFiles::Node* MemoryFiles::node(const QString& path)
{
    const auto found = path.isEmpty() ? m_nodes.end() : m_nodes.find(keyOf(path));
    return found == m_nodes.end() ? nullptr : &*found;
}

bool MemoryFiles::exists(const QString& path) const
{
    if (path.isEmpty() || path.endsWith(u'/') || path.endsWith(u'\\'))
        return false;
    if (std::as_const(*this).node(path) != nullptr)
        return true;
    const QString pattern = nameOf(path);
    if (!isPattern(pattern) || !isFolder(parentOf(path)))
        return false;
    // A folder lists itself as "." as well, so that "*" matches in an empty one.
    return matchesPattern(u"."_s, pattern) || matchesPattern(u".."_s, pattern) ||
           !names(parentOf(path), false, pattern, true).isEmpty() ||
           !names(parentOf(path), true, pattern, true).isEmpty();
}

bool MemoryFiles::folderExists(const QString& path) const
{
    return std::as_const(*this).node(path) != nullptr;
}

bool MemoryFiles::isFolder(const QString& path) const
{
    const Node* found = std::as_const(*this).node(path);
    return found != nullptr && found->folder;
}

std::optional<qint64> MemoryFiles::size(const QString& path) const
{
    const Node* found = std::as_const(*this).node(path);
    if (found == nullptr || found->folder)
        return std::nullopt;
    return found->bytes.size();
}

std::optional<QDateTime> MemoryFiles::modified(const QString& path) const
{
    const Node* found = std::as_const(*this).node(path);
    if (found == nullptr)
        return std::nullopt;
    return found->modified;
}

std::optional<FileStamp> MemoryFiles::stamp(const QString& path) const
{
    const Node* found = std::as_const(*this).node(path);
    if (found == nullptr)
        return std::nullopt;
    FileStamp stamp;
    stamp.device = 1;
    stamp.inode = found->number;
    stamp.size = found->bytes.size();
    stamp.modifiedNanoseconds = found->modified.isValid() ? found->modified.toMSecsSinceEpoch() * 1'000'000 : 0;
    stamp.changedNanoseconds = found->changes;
    return stamp;
}

std::optional<QByteArray> MemoryFiles::nativePath(const QString& path) const
{
    const Node* found = std::as_const(*this).node(path);
    if (found == nullptr)
        return std::nullopt;
    return found->number == 0 ? withSlashes(path).toUtf8() : found->path.toUtf8();
}

QStringList MemoryFiles::names(const QString& folder, bool folders, const QString& patterns, bool hidden) const
{
    if (!isFolder(folder))
        return {};
    const QString parent = keyOf(folder);
    QStringList found;
    for (auto entry = m_nodes.constBegin(); entry != m_nodes.constEnd(); ++entry) {
        if (entry->folder != folders || parentOf(entry.key()) != parent)
            continue;
        const QString name = nameOf(entry->path);
        if ((hidden || !name.startsWith(u'.')) && matchesAnyPattern(name, patterns))
            found += name;
    }
    std::sort(found.begin(), found.end(), [](const QString& left, const QString& right) {
        return std::pair(folded(left), left) < std::pair(folded(right), right);
    });
    return found;
}

QStringList MemoryFiles::list(const QString& folder, const QString& patterns) const
{
    return names(folder, false, patterns, false);
}

QStringList MemoryFiles::folders(const QString& folder) const
{
    return names(folder, true, u"*"_s, false);
}

ReadBytes MemoryFiles::readBytes(const QString& path) const
{
    const Node* found = std::as_const(*this).node(path);
    if (found == nullptr)
        return {ReadOutcome::Missing, {}};
    if (found->folder || found->unreadable)
        return {ReadOutcome::Failed, {}};
    return {ReadOutcome::Done, found->bytes};
}

ReadText MemoryFiles::readText(const QString& path) const
{
    const ReadBytes read = readBytes(path);
    return {read.outcome, decode(read.bytes)};
}

ReadText MemoryFiles::readPlaylist(const QString& path)
{
    ReadBytes read = readBytes(path);
    if (read.done() && !isText(read.bytes))
        return {};
    if (read.done() && m_options.adoptsHostTexts && needsAdoption(read.bytes)) {
        read.bytes = adopted(read.bytes);
        const PartChange alone(*this);
        writeBytes(path, read.bytes);
    }
    return {read.outcome, decode(read.bytes)};
}

bool MemoryFiles::mayHoldPlaylist(const QString& path) const
{
    const ReadBytes read = readBytes(path);
    return read.outcome == ReadOutcome::Missing || (read.done() && isText(read.bytes));
}

void MemoryFiles::beginCommand()
{
    if (m_wholes == 0)
        m_keptForCommand.clear();
}

void MemoryFiles::beginWhole()
{
    if (m_wholes++ == 0)
        m_changesBefore.append({m_nodes, false});
}

bool MemoryFiles::endWhole()
{
    if (--m_wholes > 0)
        return !m_failed;
    if (m_failed)
        m_nodes = m_changesBefore.last().before;
    m_changesBefore.removeLast();
    return !std::exchange(m_failed, false);
}

void MemoryFiles::beginPart()
{
    beginWhole();
    m_changesBefore.append({m_nodes, std::exchange(m_failed, false)});
}

bool MemoryFiles::endPart()
{
    const Change part = m_changesBefore.takeLast();
    const bool done = !std::exchange(m_failed, part.failedBefore);
    if (!done)
        m_nodes = part.before;
    return endWhole() && done;
}

void MemoryFiles::failWhole()
{
    m_failed = m_wholes > 0;
    if (m_failed && !m_fault)
        m_fault = WriteFault::Disk;
}

bool MemoryFiles::claimWrite(const QString& path)
{
    const Node* const found = std::as_const(*this).node(path);
    const bool possible = found != nullptr ? !found->folder && !found->unreadable
                                           : canBeCreated(nameOf(path)) && isFolder(parentOf(path));
    if (!possible)
        m_fault = found != nullptr ? WriteFault::NoRights : WriteFault::NoSuchPlace;
    return possible;
}

bool MemoryFiles::act(const std::function<bool()>& action)
{
    if (m_failed)
        return false;
    const QMap<QString, Node> before = m_nodes;
    m_reason = WriteFault::NoRights;
    if (action())
        return true;
    m_nodes = before;
    m_fault = m_storeIsBroken ? WriteFault::NoSafePlace : m_reason;
    failWhole();
    return false;
}

bool MemoryFiles::keep(const Node& node)
{
    if (node.bytes.isEmpty())
        return true;
    if (!m_storeIsBroken) {
        m_recovered += node.bytes;
        AllKept.append({node.path, Clock(), m_command, node.bytes});
    }
    return !m_storeIsBroken;
}

bool MemoryFiles::keepBeforeCommand(const Node& node)
{
    return m_keptForCommand.value(node.number, -1) == node.changes || keep(node);
}

void MemoryFiles::touch(Node& node)
{
    node.modified = Clock();
    node.changes = ++m_changes;
}

MemoryFiles::Node* MemoryFiles::create(const QString& path, bool folder)
{
    const QString text = withSlashes(path);
    if (!canBeCreated(nameOf(text)) || !isFolder(parentOf(text)))
        return nullptr;
    return insert(text, folder);
}

MemoryFiles::Node* MemoryFiles::insert(const QString& text, bool folder)
{
    Node fresh;
    fresh.path = text;
    fresh.folder = folder;
    fresh.number = ++m_lastNumber;
    touch(fresh);
    return &*m_nodes.insert(keyOf(text), fresh);
}

MemoryFiles::Node* MemoryFiles::writable(const QString& path)
{
    if (path.endsWith(u'/') || path.endsWith(u'\\'))
        return nullptr;
    Node* found = node(path);
    if (found == nullptr) {
        m_reason = WriteFault::NoSuchPlace;
        return std::as_const(*this).node(path) == nullptr ? create(path, false) : nullptr;
    }
    return found->folder || found->readOnly || found->unreadable ? nullptr : found;
}

bool MemoryFiles::replaceWhole(const QString& path, const QByteArray& bytes, bool textOnly)
{
    Node* target = writable(path);
    if (target == nullptr || (textOnly && !isText(target->bytes)))
        return false;
    if (target->bytes == bytes)
        return true;
    if (!keep(*target))
        return false;
    target->bytes = bytes;
    touch(*target);
    return true;
}

bool MemoryFiles::writeBytes(const QString& path, const QByteArray& bytes)
{
    return act([&] { return replaceWhole(path, bytes, false); });
}

bool MemoryFiles::writeText(const QString& path, const QString& text)
{
    return act([&] { return replaceWhole(path, encode(text), true); });
}

bool MemoryFiles::appendBytes(const QString& path, const QByteArray& bytes)
{
    return act([&] {
        Node* target = writable(path);
        if (target == nullptr || !keepBeforeCommand(*target))
            return false;
        target->bytes += bytes;
        touch(*target);
        m_keptForCommand.insert(target->number, target->changes);
        return true;
    });
}

bool MemoryFiles::replaceBytes(const QString& path, qint64 offset, qint64 length, const QByteArray& bytes)
{
    return act([&] {
        Node* target = node(path);
        if (target == nullptr || writable(path) == nullptr || offset < 0 || length < 0 ||
            offset > target->bytes.size() || length > target->bytes.size() - offset)
            return false;
        if (target->bytes.mid(offset, length) == bytes)
            return true;
        if (!keepBeforeCommand(*target))
            return false;
        target->bytes.replace(offset, length, bytes);
        touch(*target);
        m_keptForCommand.insert(target->number, target->changes);
        return true;
    });
}

bool MemoryFiles::copy(const QString& from, const QString& to)
{
    const Node* source = std::as_const(*this).node(from);
    if (source == nullptr || source->folder)
        return false;
    return act([&] {
        const Node* const origin = std::as_const(*this).node(from);
        if (origin->unreadable)
            return false;
        if (std::as_const(*this).node(to) == origin)
            return true;
        const QByteArray bytes = origin->bytes;
        const QDateTime modified = origin->modified;
        Node* target = writable(to);
        if (target == nullptr || (target->bytes != bytes && !keep(*target)))
            return false;
        target->bytes = bytes;
        touch(*target);
        target->modified = modified;
        return true;
    });
}

bool MemoryFiles::remove(const QString& path)
{
    const Node* found = std::as_const(*this).node(path);
    if (found == nullptr || found->folder)
        return false;
    return act([&] {
        const Node* const entry = std::as_const(*this).node(path);
        return !entry->unreadable && keep(*entry) && m_nodes.remove(keyOf(path)) == 1;
    });
}

bool MemoryFiles::makeFolder(const QString& path)
{
    return std::as_const(*this).node(path) == nullptr && create(path, true) != nullptr;
}

bool MemoryFiles::clearAttributes(const QString& path)
{
    Node* found = node(path);
    if (found != nullptr)
        found->readOnly = false;
    return found != nullptr;
}

QByteArray MemoryFiles::encode(const QString& text) const
{
    return m_options.codePage.encode(text);
}

QString MemoryFiles::decode(const QByteArray& bytes) const
{
    return m_options.codePage.decode(bytes);
}

void MemoryFiles::putFolder(const QString& path)
{
    if (isFolder(path))
        return;
    putFolder(parentOf(path));
    insert(withSlashes(path), true);
}

void MemoryFiles::put(const QString& path, const QByteArray& bytes)
{
    putFolder(parentOf(path));
    Node* target = node(path);
    if (target == nullptr)
        target = insert(withSlashes(path), false);
    target->bytes = bytes;
    touch(*target);
}

std::optional<QByteArray> MemoryFiles::bytes(const QString& path) const
{
    const Node* found = std::as_const(*this).node(path);
    if (found == nullptr || found->folder)
        return std::nullopt;
    return found->bytes;
}

void MemoryFiles::setModified(const QString& path, const QDateTime& time)
{
    Node* found = node(path);
    if (found != nullptr) {
        touch(*found);
        found->modified = time;
    }
}

void MemoryFiles::setReadOnly(const QString& path, bool readOnly)
{
    Node* found = node(path);
    if (found != nullptr)
        found->readOnly = readOnly;
}

void MemoryFiles::setUnreadable(const QString& path, bool unreadable)
{
    Node* found = node(path);
    if (found != nullptr)
        found->unreadable = unreadable;
}

} // namespace orvantine::fake
