#include "desktop/posix/UndoJournal.h"

#include "desktop/posix/Checksum.h"
#include "desktop/posix/PrivateFolder.h"
#include "desktop/posix/RecoveryStore.h"

#include <QSet>

#include <cstring>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace orvantine {

struct UndoJournal::Note
{
    enum class Kind : quint64 { Changed = 1, Created = 2, Removed = 3 };

    quint64 magic = 0;
    quint64 checksum = 0;
    Kind kind = Kind::Changed;
    quint64 device = 0;
    quint64 inode = 0;
    quint64 mode = 0;
    qint64 modifiedSeconds = 0;
    qint64 modifiedNanoseconds = 0;
    qint64 offset = 0;
    qint64 oldSize = 0;
    qint64 pathLength = 0;
    qint64 bytesLength = 0;
};

namespace {

constexpr quint64 magicMark = 0x4f5256554e444f31; // "ORVUNDO1"
constexpr qint64 longestJournal = qint64{1} << 30;

QByteArray folderOf(const QByteArray& path)
{
    return path.first(qMax<qsizetype>(path.lastIndexOf('/'), 1));
}

void syncPath(const QByteArray& path)
{
    const Descriptor file(::open(path.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (file.isOpen())
        ::fsync(file.get());
}

/// Nothing for what is no regular file.
Descriptor openFile(const QByteArray& path, int flags, struct stat& info)
{
    Descriptor file(::open(path.constData(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0600));
    if (file.isOpen() && (::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode)))
        file.close();
    return file;
}

} // namespace

UndoJournal::UndoJournal(QByteArray folder, RecoveryStore& store) : m_folder(std::move(folder)), m_store(store)
{
    if (open(false))
        putBack();
}

bool UndoJournal::open(bool create)
{
    if (m_file.isOpen())
        return true;
    if (m_folder.isEmpty() || (create && !makePrivateFolder(m_folder)))
        return false;
    const QByteArray path = m_folder + "/Undo";
    struct stat info = {};
    Descriptor file = openFile(path, O_RDWR | O_NOFOLLOW | (create ? O_CREAT : 0), info);
    if (!file.isOpen() || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return false;
    m_length = info.st_size;
    m_file = std::move(file);
    return true;
}

void UndoJournal::end()
{
    if (m_depth == 0 || --m_depth > 0)
        return;
    QSet<QByteArray> folders;
    for (const QByteArray& path : std::as_const(m_touched)) {
        syncPath(path);
        folders.insert(folderOf(path));
    }
    for (const QByteArray& folder : std::as_const(folders))
        syncPath(folder);
    m_touched.clear();
    m_coveredFrom.clear();
    if (m_file.isOpen() && m_length > 0 && ::ftruncate(m_file.get(), 0) == 0)
        m_length = 0;
}

void UndoJournal::willChange(const Descriptor& file, const QByteArray& path, qint64 offset, QByteArrayView old)
{
    struct stat info = {};
    if (!running() || ::fstat(file.get(), &info) != 0)
        return;
    const qint64 covered = m_coveredFrom.value(path, info.st_size);
    if (m_coveredFrom.contains(path) && offset >= covered)
        return;
    Note note;
    note.kind = Note::Kind::Changed;
    note.device = info.st_dev;
    note.inode = info.st_ino;
    note.modifiedSeconds = info.st_mtim.tv_sec;
    note.modifiedNanoseconds = info.st_mtim.tv_nsec;
    note.offset = offset;
    note.oldSize = info.st_size;
    // What is noted already is not noted once more: a command notes no more than the whole file.
    add(note, path, old.first(qMin<qsizetype>(old.size(), covered - offset)));
    if (offset + old.size() >= covered)
        m_coveredFrom.insert(path, offset);
}

void UndoJournal::willCreate(const QByteArray& path)
{
    if (!running())
        return;
    Note note;
    note.kind = Note::Kind::Created;
    add(note, path, {});
    m_coveredFrom.insert(path, 0);
}

void UndoJournal::willRemove(const QByteArray& path)
{
    struct stat info = {};
    if (!running())
        return;
    const Descriptor file = openFile(path, O_RDONLY, info);
    QByteArray bytes;
    if (!file.isOpen() || info.st_size > longestJournal || !readAt(file, 0, info.st_size, bytes))
        return;
    Note note;
    note.kind = Note::Kind::Removed;
    note.mode = info.st_mode & 07777U;
    note.modifiedSeconds = info.st_mtim.tv_sec;
    note.modifiedNanoseconds = info.st_mtim.tv_nsec;
    add(note, path, bytes);
    m_coveredFrom.remove(path);
}

void UndoJournal::add(const Note& told, const QByteArray& path, QByteArrayView bytes)
{
    if (!m_touched.contains(path))
        m_touched.append(path);
    if (!open(true))
        return;
    Note note = told;
    note.magic = magicMark;
    note.checksum = checksum(checksum(0, path), bytes);
    note.pathLength = path.size();
    note.bytesLength = bytes.size();
    const QByteArray head(reinterpret_cast<const char*>(&note), sizeof note);
    const qint64 start = m_length;
    if (writeAt(m_file, start, head + path) && writeAt(m_file, start + head.size() + path.size(), bytes) &&
        ::fdatasync(m_file.get()) == 0)
        m_length = start + head.size() + path.size() + bytes.size();
    else
        static_cast<void>(::ftruncate(m_file.get(), start) == 0);
}

void UndoJournal::putBack()
{
    QByteArray content;
    if (m_length > longestJournal || !readAt(m_file, 0, m_length, content))
        return;
    struct Read
    {
        Note note;
        QByteArray path;
        QByteArray bytes;
    };
    std::vector<Read> notes;
    qint64 at = 0;
    while (content.size() - at >= qint64{sizeof(Note)}) {
        Read read;
        std::memcpy(&read.note, content.constData() + at, sizeof read.note);
        const qint64 room = content.size() - at - qint64{sizeof(Note)};
        if (read.note.magic != magicMark || read.note.pathLength <= 0 || read.note.pathLength > room ||
            read.note.bytesLength < 0 || read.note.bytesLength > room - read.note.pathLength)
            break;
        read.path = content.sliced(at + qint64{sizeof(Note)}, read.note.pathLength);
        read.bytes = content.sliced(at + qint64{sizeof(Note)} + read.note.pathLength, read.note.bytesLength);
        // A torn note is one whose step has not begun.
        if (read.note.checksum != checksum(checksum(0, read.path), read.bytes))
            break;
        at += qint64{sizeof(Note)} + read.note.pathLength + read.note.bytesLength;
        notes.push_back(std::move(read));
    }

    begin();
    QSet<QByteArray> kept;
    QSet<QByteArray> madeAnew;
    for (auto read = notes.rbegin(); read != notes.rend(); ++read) {
        struct stat info = {};
        QByteArray present;
        if (!kept.contains(read->path)) {
            kept.insert(read->path);
            const Descriptor file = openFile(read->path, O_RDONLY, info);
            if (file.isOpen() && info.st_size > 0 && readAt(file, 0, info.st_size, present))
                (void)m_store.keep(read->path, present);
        }
        putBack(read->note, read->path, read->bytes, madeAnew.contains(read->path));
        if (read->note.kind == Note::Kind::Removed)
            madeAnew.insert(read->path);
        m_touched.append(read->path);
    }
    end();
}

void UndoJournal::putBack(const Note& note, const QByteArray& path, const QByteArray& bytes, bool madeAnew)
{
    struct stat info = {};
    const timespec times[2] = {{0, UTIME_OMIT}, {note.modifiedSeconds, note.modifiedNanoseconds}};
    switch (note.kind) {
    case Note::Kind::Created:
        ::unlink(path.constData());
        return;
    case Note::Kind::Changed: {
        const Descriptor file = openFile(path, O_RDWR, info);
        // Another file of that name is left alone.
        const bool same = madeAnew || (info.st_dev == note.device && info.st_ino == note.inode);
        if (!file.isOpen() || !same || info.st_size < note.offset)
            return;
        if (writeAt(file, note.offset, bytes) && ::ftruncate(file.get(), note.oldSize) == 0)
            ::futimens(file.get(), times);
        return;
    }
    case Note::Kind::Removed: {
        const Descriptor file = openFile(path, O_WRONLY | O_CREAT | O_EXCL, info);
        if (file.isOpen() && writeAt(file, 0, bytes) && ::fchmod(file.get(), static_cast<mode_t>(note.mode)) == 0)
            ::futimens(file.get(), times);
        return;
    }
    }
}

} // namespace orvantine
