#include "desktop/posix/WriteJournal.h"

#include "desktop/posix/Checksum.h"
#include "desktop/posix/PrivateFolder.h"

#include <cstring>
#include <utility>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace orvantine {
namespace {

constexpr quint64 magicMark = 0x4f52564a524e4c31; // "ORVJRNL1"
constexpr qint64 keptLength = qint64{1} << 20;
constexpr qint64 slackSeconds = 2;

struct Header
{
    quint64 magic = 0;
    quint64 checksum = 0;
    quint64 device = 0;
    quint64 inode = 0;
    qint64 offset = 0;
    qint64 oldSize = 0;
    qint64 newSize = 0;
    qint64 pathLength = 0;
    /// Of the bytes, the first `headLength` came as a piece of their own: the checksum runs over pieces.
    qint64 headLength = 0;
    qint64 bytesLength = 0;
};

QByteArrayView bytesOf(const Header& header)
{
    return {reinterpret_cast<const char*>(&header), qsizetype{sizeof header}};
}

} // namespace

WriteJournal::WriteJournal(QByteArray folder) : m_folder(std::move(folder))
{
    if (open(false))
        complete();
}

bool WriteJournal::open(bool create)
{
    if (m_file.isOpen())
        return true;
    if (m_folder.isEmpty() || (create && !makePrivateFolder(m_folder)))
        return false;
    const QByteArray path = m_folder + "/Journal";
    Descriptor file(
        ::open(path.constData(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | (create ? O_CREAT : 0), 0600));
    struct stat info = {};
    if (!file.isOpen() || ::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode) ||
        ::flock(file.get(), LOCK_EX | LOCK_NB) != 0)
        return false;
    m_length = info.st_size;
    m_file = std::move(file);
    return true;
}

void WriteJournal::begin(const Descriptor& file, const QByteArray& path, qint64 offset, QByteArrayView head,
                         QByteArrayView rest, qint64 newSize)
{
    struct stat info = {};
    if (!open(true) || ::fstat(file.get(), &info) != 0)
        return;
    Header header;
    header.magic = magicMark;
    header.checksum = checksum(checksum(checksum(0, path), head), rest);
    header.device = info.st_dev;
    header.inode = info.st_ino;
    header.offset = offset;
    header.oldSize = info.st_size;
    header.newSize = newSize;
    header.pathLength = path.size();
    header.headLength = head.size();
    header.bytesLength = head.size() + rest.size();
    const qint64 headAt = qint64{sizeof header} + path.size();
    m_running = writeAt(m_file, sizeof header, path) && writeAt(m_file, headAt, head) &&
                writeAt(m_file, headAt + head.size(), rest) && writeAt(m_file, 0, bytesOf(header));
    m_length = qMax(m_length, headAt + header.bytesLength);
}

void WriteJournal::end()
{
    if (!m_file.isOpen())
        return;
    if (m_running)
        static_cast<void>(writeAt(m_file, 0, bytesOf(Header())));
    m_running = false;
    if (m_length > keptLength && ::ftruncate(m_file.get(), 0) == 0)
        m_length = 0;
}

void WriteJournal::complete()
{
    QByteArray content;
    struct stat journal = {};
    if (::fstat(m_file.get(), &journal) != 0 || !readAt(m_file, 0, journal.st_size, content) ||
        content.size() < qsizetype{sizeof(Header)})
        return;
    Header header;
    std::memcpy(&header, content.constData(), sizeof header);
    if (header.magic != magicMark)
        return;
    m_running = true;
    const qint64 room = content.size() - qint64{sizeof header};
    const bool fits = header.pathLength >= 0 && header.bytesLength >= 0 && header.pathLength <= room &&
                      header.bytesLength <= room - header.pathLength && header.offset >= 0 && header.newSize >= 0 &&
                      header.headLength >= 0 && header.headLength <= header.bytesLength;
    if (fits) {
        const QByteArray path = content.sliced(sizeof header, header.pathLength);
        const QByteArrayView bytes =
            QByteArrayView(content).sliced(qint64{sizeof header} + header.pathLength, header.bytesLength);
        const Descriptor file(::open(path.constData(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
        struct stat info = {};
        // Another file of that name, or one that was changed since, is left alone.
        const bool same = file.isOpen() && ::fstat(file.get(), &info) == 0 && S_ISREG(info.st_mode) &&
                          info.st_dev == header.device && info.st_ino == header.inode &&
                          info.st_mtim.tv_sec <= journal.st_mtim.tv_sec + slackSeconds &&
                          info.st_size >= qMin(header.oldSize, header.newSize) &&
                          info.st_size <= qMax(header.oldSize, header.newSize);
        const bool whole = header.checksum == checksum(checksum(checksum(0, path), bytes.first(header.headLength)),
                                                       bytes.sliced(header.headLength));
        if (same && whole && writeAt(file, header.offset, bytes) && ::ftruncate(file.get(), header.newSize) != 0)
            return;
    }
    end();
}

} // namespace orvantine
