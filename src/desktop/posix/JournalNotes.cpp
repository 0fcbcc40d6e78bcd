#include "desktop/posix/JournalNotes.h"

#include "desktop/posix/Checksum.h"

#include <QCryptographicHash>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace orvantine {
namespace {

constexpr quint64 magicMark = 0x4f5256554e444f33; // "ORVUNDO3"

constexpr char scratchPrefix[] = ".orvantine-";

struct Head
{
    quint64 magic = magicMark;
    /// Over the head, with zero in this place, the path and the bytes.
    quint64 sum = 0;
    quint32 kind = 0;
    quint32 mode = 0;
    quint64 device = 0;
    quint64 inode = 0;
    quint64 folderInode = 0;
    quint64 folderDevice = 0;
    quint64 fileSystem = 0;
    qint64 modifiedSeconds = 0;
    qint64 modifiedNanoseconds = 0;
    quint64 boot = 0;
    qint64 offset = 0;
    qint64 length = 0;
    qint64 pathLength = 0;
    qint64 bytesLength = 0;
};

quint64 sumOf(Head head, QByteArrayView path, QByteArrayView bytes)
{
    head.sum = 0;
    const QByteArrayView raw(reinterpret_cast<const char*>(&head), qsizetype{sizeof head});
    return checksum(checksum(checksum(0, raw), path), bytes);
}

bool isPossible(const JournalNote& note)
{
    const bool known = note.kind >= JournalNote::Kind::Before && note.kind <= JournalNote::Kind::Kept;
    // No file is longer, and sums of two of them can be told.
    constexpr qint64 longest = qint64{1} << 62;
    const bool inside = note.offset >= 0 && note.offset < longest && note.length >= 0 && note.length < longest;
    return known && inside && note.path.startsWith('/') && !note.path.contains('\0');
}

/// Each byte is one of those that stand in its place in one of the states. Room that was got and not filled reads as
/// zeros.
bool isMixtureOf(const QByteArray& found, const std::vector<const QByteArray*>& states)
{
    if (states.empty())
        return false;
    qsizetype shortest = states.front()->size();
    qsizetype longest = 0;
    for (const QByteArray* const state : states) {
        if (*state == found)
            return true;
        shortest = std::min(shortest, state->size());
        longest = std::max(longest, state->size());
    }
    if (found.size() < shortest || found.size() > longest)
        return false;
    for (qsizetype at = 0; at < found.size(); ++at) {
        const bool told = std::any_of(states.begin(), states.end(), [&](const QByteArray* state) {
            return at < state->size() && state->at(at) == found[at];
        });
        if (!told && (at < shortest || found[at] != '\0'))
            return false;
    }
    return true;
}

} // namespace

QByteArray scratchName(const QByteArray& path)
{
    const QByteArray sum = QCryptographicHash::hash(path, QCryptographicHash::Sha1).toHex().left(12);
    return path.first(path.lastIndexOf('/') + 1) + scratchPrefix + sum;
}

bool isScratchName(const QByteArray& path)
{
    return path.sliced(path.lastIndexOf('/') + 1).startsWith(scratchPrefix);
}

QByteArray encodedHead(const JournalNote& note)
{
    Head head;
    head.kind = static_cast<quint32>(note.kind);
    head.mode = note.mode;
    head.device = note.device;
    head.inode = note.inode;
    head.folderInode = note.folderInode;
    head.folderDevice = note.folderDevice;
    head.fileSystem = note.fileSystem;
    head.modifiedSeconds = note.modifiedSeconds;
    head.modifiedNanoseconds = note.modifiedNanoseconds;
    head.boot = note.boot;
    head.offset = note.offset;
    head.length = note.length;
    head.pathLength = note.path.size();
    head.bytesLength = note.bytes.size();
    head.sum = sumOf(head, note.path, note.bytes);
    QByteArray result;
    result.reserve(qsizetype{sizeof head} + note.path.size());
    result.append(reinterpret_cast<const char*>(&head), qsizetype{sizeof head});
    return result.append(note.path);
}

QByteArray encodedNote(const JournalNote& note)
{
    return encodedHead(note) + note.bytes;
}

std::optional<ReadNote> noteAt(const JournalBytes& bytes, qint64 at, qint64 size, bool& failed)
{
    constexpr qint64 headSize = sizeof(Head);
    const qint64 room = size - at - headSize;
    QByteArray raw;
    if (room < 0)
        return std::nullopt;
    failed = !bytes(at, headSize, raw) || raw.size() != headSize;
    if (failed)
        return std::nullopt;
    Head head;
    std::memcpy(&head, raw.constData(), sizeof head);
    if (head.magic != magicMark || head.pathLength <= 0 || head.pathLength > room || head.bytesLength < 0 ||
        head.bytesLength > room - head.pathLength)
        return std::nullopt;
    ReadNote read;
    JournalNote& note = read.note;
    failed = !bytes(at + headSize, head.pathLength, note.path) || note.path.size() != head.pathLength ||
             !bytes(at + headSize + head.pathLength, head.bytesLength, note.bytes) ||
             note.bytes.size() != head.bytesLength;
    if (failed || head.sum != sumOf(head, note.path, note.bytes))
        return std::nullopt;
    note.kind = static_cast<JournalNote::Kind>(head.kind);
    note.mode = head.mode;
    note.device = head.device;
    note.inode = head.inode;
    note.folderInode = head.folderInode;
    note.folderDevice = head.folderDevice;
    note.fileSystem = head.fileSystem;
    note.modifiedSeconds = head.modifiedSeconds;
    note.modifiedNanoseconds = head.modifiedNanoseconds;
    note.boot = head.boot;
    note.offset = head.offset;
    note.length = head.length;
    read.end = at + headSize + head.pathLength + head.bytesLength;
    return isPossible(note) ? std::optional(std::move(read)) : std::nullopt;
}

std::vector<ReadNote> decodedNotes(const QByteArray& journal)
{
    const JournalBytes source = [&journal](qint64 offset, qint64 length, QByteArray& bytes) {
        bytes = journal.sliced(offset, length);
        return true;
    };
    std::vector<ReadNote> notes;
    bool failed = false;
    qint64 at = 0;
    while (std::optional<ReadNote> read = noteAt(source, at, journal.size(), failed)) {
        at = read->end;
        notes.push_back(std::move(*read));
    }
    return notes;
}

bool inodesSurvive(quint64 fileSystem)
{
    constexpr quint64 numbered[] = {0x4d44 /* FAT */, 0x2011bab0 /* exFAT */, 0x65735546 /* FUSE */,
                                    0xff534d42 /* CIFS */, 0xfe534d42 /* SMB */};
    return std::find(std::begin(numbered), std::end(numbered), fileSystem) == std::end(numbered);
}

bool FileHistory::extendTo(qint64 offset, const QByteArray& bytes)
{
    if (offset >= m_base || offset + bytes.size() != m_base || !m_target.exists || !m_now.exists)
        return false;
    m_target.tail.prepend(bytes);
    m_now.tail.prepend(bytes);
    m_previous = m_now;
    m_base = offset;
    return true;
}

bool FileHistory::extendToEnd(qint64 offset, const QByteArray& bytes)
{
    if (!m_fixedSize || offset != m_base + m_now.tail.size() || offset + bytes.size() != *m_fixedSize)
        return false;
    m_target.tail.append(bytes);
    m_now.tail.append(bytes);
    m_previous = m_now;
    m_fixedSize.reset();
    return true;
}

void FileHistory::setTarget()
{
    m_target = m_now;
    m_origin.reset();
    m_mode.reset();
    m_link.reset();
    m_kept.reset();
    m_made = m_changed = false;
}

void FileHistory::take(const JournalNote& note)
{
    const bool first = std::exchange(m_empty, false);
    m_changed = true;
    m_previous = m_now;
    m_placed.reset();
    m_boot = note.boot;
    if (note.fileSystem != 0) {
        m_folderInode = note.folderInode;
        m_folderDevice = note.folderDevice;
        m_fileSystem = note.fileSystem;
    }
    switch (note.kind) {
    case JournalNote::Kind::Before:
        if (!first) {
            m_sound =
                m_sound && (m_fixedSize ? extendToEnd(note.offset, note.bytes) : extendTo(note.offset, note.bytes));
            return;
        }
        if (note.length > note.offset + note.bytes.size())
            m_fixedSize = note.length;
        m_origin = note;
        m_inode = note.inode;
        m_base = note.offset;
        m_target = m_previous = m_now = {true, note.bytes};
        return;
    case JournalNote::Kind::Created:
        m_sound = m_sound && !m_now.exists;
        m_inode = 0;
        m_made = true;
        m_now = {true, {}};
        return;
    case JournalNote::Kind::Removed:
        if (first) {
            m_origin = note;
            m_target = m_previous = {true, note.bytes};
        } else {
            // The whole file is known from now on.
            if (const qint64 told = m_base + m_now.tail.size(); m_fixedSize && told <= note.bytes.size())
                m_sound = m_sound && extendToEnd(told, note.bytes.sliced(told));
            const bool follows =
                m_now.exists && note.bytes.size() == m_base + m_now.tail.size() && note.bytes.endsWith(m_now.tail);
            m_sound = m_sound && follows && (m_base == 0 || extendTo(0, note.bytes.first(m_base)));
        }
        // Only the rights of what stood there at first matter.
        if (!m_mode && !m_made)
            m_mode = note.mode;
        m_inode = note.inode;
        m_now = {};
        return;
    case JournalNote::Kind::Step: {
        const qint64 at = note.offset - m_base;
        m_sound = m_sound && m_now.exists && at >= 0 && at <= m_now.tail.size() &&
                  note.length <= m_now.tail.size() - at && (!m_fixedSize || note.length == note.bytes.size());
        m_inode = note.inode;
        if (m_sound)
            m_now.tail.replace(at, note.length, note.bytes);
        return;
    }
    case JournalNote::Kind::Placed:
        m_sound = m_sound && !m_now.exists;
        m_inode = note.inode;
        m_made = true;
        m_placed = note;
        m_now = {true, {}};
        return;
    case JournalNote::Kind::Scratch:
        m_sound = m_sound && isScratchName(note.path);
        m_now = m_previous = {};
        return;
    case JournalNote::Kind::Found:
        m_now = m_previous = {true, note.bytes};
        return;
    case JournalNote::Kind::Link:
        m_link = note.bytes;
        return;
    case JournalNote::Kind::Kept:
        m_sound = m_sound && first;
        m_kept = m_origin = note;
        m_mode = note.mode;
        m_inode = note.inode;
        m_target.exists = true;
        return;
    }
}

qint64 FileHistory::longestTail() const
{
    return std::max({m_target.tail.size(), m_previous.tail.size(), m_now.tail.size()});
}

bool FileHistory::explains(const std::optional<QByteArray>& found, bool sameFile) const
{
    std::vector<const QByteArray*> present;
    bool mayBeMissing = m_kept.has_value();
    for (const State* const state : {&m_now, &m_previous, &m_target}) {
        if (state->exists)
            present.push_back(&state->tail);
        else
            mayBeMissing = true;
    }
    if (!found)
        return mayBeMissing;
    return std::any_of(present.begin(), present.end(), [&](const QByteArray* tail) { return *tail == *found; }) ||
           (sameFile && isMixtureOf(*found, present));
}

} // namespace orvantine
