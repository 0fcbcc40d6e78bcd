#include "support/MemoryFiles.h"

#include <algorithm>
#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

bool MemoryFiles::carry(const QString& from, const QString& to, const CarryStep& goOn)
{
    const Node* const source = std::as_const(*this).node(from);
    if (source == nullptr || source->folder)
        return false;
    if (source->unreadable) {
        m_fault = WriteFault::NoRights;
        return false;
    }
    if (std::as_const(*this).node(to) == source)
        return true;
    // Events are served meanwhile, and the file may go.
    const QByteArray bytes = source->bytes;
    const QDateTime modified = source->modified;
    return carryPieces(bytes, modified, to, goOn);
}

bool MemoryFiles::carryBytes(const QByteArray& bytes, const QString& to, const CarryStep& goOn)
{
    return carryPieces(bytes, {}, to, goOn);
}

bool MemoryFiles::carryPieces(const QByteArray& bytes, const QDateTime& modified, const QString& to,
                              const CarryStep& goOn)
{
    const auto fails = [this](WriteFault fault) {
        m_fault = fault;
        return false;
    };
    if (m_wholes > 0 || !m_changesBefore.isEmpty() || Trouble)
        return fails(WriteFault::NoSafePlace);
    const Node* const older = std::as_const(*this).node(to);
    if (older != nullptr && (older->folder || older->readOnly || older->unreadable))
        return fails(WriteFault::NoRights);
    const QString target = older != nullptr ? older->path : QString(to).replace(u'\\', u'/');
    if (!goOn(0))
        return false;
    QString part = target + u".part"_s;
    for (int number = 2; std::as_const(*this).node(part) != nullptr; ++number)
        part = target + u".%1.part"_s.arg(number);
    if (create(part, false) == nullptr)
        return fails(WriteFault::NoSuchPlace);

    const auto drop = [this, &part] { m_nodes.remove(keyOf(part)); };
    bool goesOn = true;
    qint64 done = 0;
    while (goesOn && done < bytes.size()) {
        const qint64 length = std::min<qint64>(CarriedAtOnce, bytes.size() - done);
        if (Room && *Room < length) {
            drop();
            return fails(WriteFault::NoRoom);
        }
        if (Room)
            *Room -= length;
        Node* const growing = node(part);
        // Somebody has taken the medium away.
        if (growing == nullptr)
            return fails(WriteFault::Disk);
        growing->bytes = bytes.first(done + length);
        done += length;
        PieceCarried();
        goesOn = goOn(done);
    }
    if (goesOn && bytes.isEmpty())
        goesOn = goOn(0);
    const Node* const grown = std::as_const(*this).node(part);
    if (!goesOn || grown == nullptr || grown->bytes != bytes) {
        drop();
        return goesOn ? fails(WriteFault::Disk) : false;
    }
    const Node* const replaced = std::as_const(*this).node(target);
    if (replaced != nullptr && replaced->bytes != bytes && replaced->bytes.size() <= LargestKept && !keep(*replaced)) {
        drop();
        return fails(WriteFault::NoSafePlace);
    }
    drop();
    Node* const whole = insert(target, false);
    whole->bytes = bytes;
    if (modified.isValid())
        whole->modified = modified;
    return true;
}

bool MemoryFiles::settle(const QString& folder, const CarryStep&)
{
    return isFolder(folder);
}

QString MemoryFiles::privateFolder(const QString& path)
{
    QString own = path;
    for (int number = 2; m_foreign.contains(keyOf(own)) || (exists(own) && !isFolder(own)); ++number)
        own = path + u'.' + QString::number(number);
    return isFolder(own) || makeFolder(own) ? own : QString();
}

bool MemoryFiles::emptyPrivate(const QString& folder, const std::function<bool()>& goOn)
{
    if (!isFolder(folder) || m_foreign.contains(keyOf(folder)))
        return false;
    const auto removeFiles = [this](const QString& from) {
        const QStringList files = names(from, false, u"*"_s, true);
        for (const QString& file : files)
            m_nodes.remove(keyOf(from + u'/' + file));
    };
    const QStringList below = names(folder, true, u"*"_s, true);
    for (const QString& name : below) {
        const QString path = folder + u'/' + name;
        removeFiles(path);
        if (names(path, true, u"*"_s, true).isEmpty())
            m_nodes.remove(keyOf(path));
        if (!goOn())
            return false;
    }
    removeFiles(folder);
    return names(folder, true, u"*"_s, true).isEmpty();
}

} // namespace orvantine::fake
