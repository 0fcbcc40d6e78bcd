#include "desktop/archive/OpenedZip.h"

#include "desktop/archive/CentralDirectory.h"
#include "desktop/archive/DiskFault.h"
#include "desktop/archive/Heartbeat.h"
#include "desktop/posix/HostFile.h"
#include "desktop/posix/PrivateFolder.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {
namespace {

constexpr qsizetype pieceSize = qsizetype{256} << 10;
constexpr zip_uint16_t timeField = 0x5455;

ArchiveEntry::Kind kindOf(zip_t* archive, zip_uint64_t number, const zip_stat_t& stat, const QString& name)
{
    constexpr zip_uint64_t wanted = ZIP_STAT_SIZE | ZIP_STAT_COMP_SIZE | ZIP_STAT_ENCRYPTION_METHOD;
    zip_uint8_t system = 0;
    zip_uint32_t attributes = 0;
    const bool known = zip_file_get_external_attributes(archive, number, 0, &system, &attributes) == 0;
    const mode_t type = known && (system == ZIP_OPSYS_UNIX || system == ZIP_OPSYS_OS_X)
                            ? static_cast<mode_t>(attributes >> 16U) & S_IFMT
                            : 0;
    const bool folder = name.endsWith(u'/');
    if ((stat.valid & wanted) != wanted || stat.encryption_method != ZIP_EM_NONE ||
        (type != 0 && type != (folder ? S_IFDIR : S_IFREG)) || (folder && stat.size != 0))
        return ArchiveEntry::Kind::Other;
    return folder ? ArchiveEntry::Kind::Folder : ArchiveEntry::Kind::File;
}

/// To the second and without regard to the zone, where the archive has it so.
QDateTime timeOf(zip_t* archive, zip_uint64_t number, const zip_stat_t& stat)
{
    constexpr zip_uint16_t length = 5;
    zip_uint16_t size = 0;
    const zip_uint8_t* const field =
        zip_file_extra_field_get_by_id(archive, number, timeField, 0, &size, ZIP_FL_CENTRAL);
    if (field != nullptr && size >= length && (field[0] & 1U) != 0) {
        quint32 seconds = 0;
        for (int i = 0; i < 4; ++i)
            seconds |= static_cast<quint32>(field[i + 1]) << (8 * i);
        return QDateTime::fromSecsSinceEpoch(static_cast<qint32>(seconds));
    }
    return (stat.valid & ZIP_STAT_MTIME) != 0 ? QDateTime::fromSecsSinceEpoch(stat.mtime) : QDateTime();
}

qint64 bounded(zip_uint64_t size)
{
    constexpr auto most = std::numeric_limits<qint64>::max();
    return size > static_cast<zip_uint64_t>(most) ? most : static_cast<qint64>(size);
}

} // namespace

bool readEntry(zip_t* archive, std::size_t number, qint64 size, const std::function<bool(QByteArrayView piece)>& take)
{
    zip_file_t* const file = zip_fopen_index(archive, number, 0);
    if (file == nullptr) {
        errno = UnsoundArchive;
        return false;
    }
    QByteArray piece(pieceSize, Qt::Uninitialized);
    qint64 left = size;
    bool goesOn = true;
    zip_int64_t count = 0;
    do {
        count = zip_fread(file, piece.data(), static_cast<zip_uint64_t>(pieceSize));
        left -= count;
        if (count < 0 || left < 0)
            errno = UnsoundArchive;
        goesOn = count >= 0 && left >= 0 && take(QByteArrayView(piece).first(count));
    } while (count > 0 && goesOn);
    // Why it was stopped is told by whoever did that.
    const int stopped = errno;
    const bool closed = zip_fclose(file) == 0;
    errno = goesOn ? UnsoundArchive : stopped;
    return goesOn && closed && left == 0;
}

std::unique_ptr<OpenedZip> OpenedZip::open(Files& files, const QByteArray& path, qint64 mostEntries,
                                           const QByteArray& staging)
{
    struct stat info = {};
    // What is no regular file is no archive.
    errno = UnsoundArchive;
    Descriptor file = openRegular(path, O_RDONLY, info);
    return file.isOpen() ? read(files, std::move(file), info.st_size, mostEntries, staging) : nullptr;
}

std::unique_ptr<OpenedZip> OpenedZip::read(Files& files, Descriptor file, qint64 size, qint64 mostEntries,
                                           const QByteArray& staging)
{
    auto opened = std::make_unique<OpenedZip>(files, std::move(file), size, staging);
    if (opened->readEntries(mostEntries))
        return opened;
    const int error = std::max(opened->m_headError, opened->m_bytes.readError());
    errno = error != 0 ? error : UnsoundArchive;
    return nullptr;
}

OpenedZip::OpenedZip(Files& files, Descriptor file, qint64 size, QByteArray staging)
    : m_files(files), m_file(std::move(file)), m_size(size), m_staging(std::move(staging)), m_bytes(&m_file, m_size)
{
}

OpenedZip::~OpenedZip()
{
    if (m_staged)
        emptyStaging();
}

bool OpenedZip::readEntries(qint64 mostEntries)
{
    const auto read = [this](qint64 offset, qint64 length) {
        QByteArray bytes;
        errno = 0;
        if (readAt(m_file, offset, length, bytes))
            return bytes;
        m_headError = errno;
        return QByteArray();
    };
    if (m_size == 0 || !namesAreClean(read, m_size))
        return false;
    // Counted before each head of an entry is looked at.
    m_archive.reset(m_bytes.open(ZIP_RDONLY));
    if (!m_archive || zip_get_num_entries(m_archive.get(), 0) > mostEntries)
        return false;
    m_archive.reset(m_bytes.open(ZIP_RDONLY | ZIP_CHECKCONS));
    if (!m_archive)
        return false;
    const zip_int64_t count = zip_get_num_entries(m_archive.get(), 0);
    for (zip_int64_t i = 0; i < count; ++i) {
        const auto number = static_cast<zip_uint64_t>(i);
        zip_stat_t stat;
        const char* const name = zip_get_name(m_archive.get(), number, ZIP_FL_ENC_GUESS);
        if (name == nullptr || zip_stat_index(m_archive.get(), number, 0, &stat) != 0)
            return false;
        ArchiveEntry entry;
        entry.name = QString::fromUtf8(name);
        entry.kind = kindOf(m_archive.get(), number, stat, entry.name);
        entry.size = bounded(stat.size);
        entry.packedSize = bounded(stat.comp_size);
        entry.modified = timeOf(m_archive.get(), number, stat);
        m_entries.push_back(std::move(entry));
    }
    return true;
}

void OpenedZip::emptyStaging() const
{
    const Descriptor folder(::open(m_staging.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    const int again = folder.isOpen() ? ::dup(folder.get()) : -1;
    DIR* const names = again >= 0 ? ::fdopendir(again) : nullptr;
    if (names == nullptr)
        return;
    while (const dirent* entry = ::readdir(names))
        ::unlinkat(folder.get(), entry->d_name, 0);
    ::closedir(names);
    ::rmdir(m_staging.constData());
}

bool OpenedZip::prepareStaging()
{
    const QByteArray parent = m_staging.first(std::max<qsizetype>(m_staging.lastIndexOf('/'), 0));
    if (m_staging.isEmpty() || !preparePrivateFolder(parent)) {
        errno = EACCES;
        return false;
    }
    m_staged = true;
    // What a killed program has left.
    emptyStaging();
    errno = 0;
    if (preparePrivateFolder(m_staging))
        return true;
    errno = errno != 0 ? errno : EACCES;
    return false;
}

bool OpenedZip::unpack(const std::vector<std::size_t>& numbers, const ArchiveProgress& progress)
{
    qint64 total = 0;
    for (const std::size_t number : numbers) {
        if (number >= m_entries.size() || m_entries[number].kind != ArchiveEntry::Kind::File)
            return false;
        total += m_entries[number].size;
    }
    Heartbeat heartbeat(progress, total);
    bool goesOn = true;
    const auto beat = [&heartbeat, &goesOn](qint64 bytes) {
        goesOn = heartbeat.add(bytes);
        return goesOn;
    };
    bool done = prepareStaging();
    for (std::size_t i = 0; done && i < numbers.size(); ++i)
        done = unpackOne(numbers[i], beat);
    const int error = m_bytes.readError() != 0 ? m_bytes.readError() : errno;
    if (!done && goesOn && error != UnsoundArchive)
        m_files.noteFault(diskFault(error));
    return done && heartbeat.finish();
}

bool OpenedZip::unpackOne(std::size_t number, const std::function<bool(qint64 bytes)>& goesOn)
{
    const QByteArray path = m_staging + '/' + QByteArray::number(static_cast<qulonglong>(number));
    // Whoever gets a copy of it gets these rights; the folder lets nobody else in.
    const Descriptor file(::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600));
    if (!file.isOpen() || ::fchmod(file.get(), 0666) != 0)
        return false;
    qint64 done = 0;
    if (!readEntry(m_archive.get(), number, m_entries[number].size, [&](QByteArrayView piece) {
            if (!writeAt(file, done, piece))
                return false;
            done += piece.size();
            return goesOn(piece.size());
        }))
        return false;
    const QDateTime& time = m_entries[number].modified;
    const timespec times[2] = {{0, UTIME_OMIT}, {time.isValid() ? time.toSecsSinceEpoch() : 0, 0}};
    return !time.isValid() || ::futimens(file.get(), times) == 0;
}

QString OpenedZip::unpackedFile(std::size_t number) const
{
    return QFile::decodeName(m_staging) + u'/' + QString::number(number);
}

} // namespace orvantine
