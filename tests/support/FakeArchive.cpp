#include "support/FakeArchive.h"

#include "platform/FileDirPath.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QIODevice>

#include <algorithm>
#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QByteArray Head = "FakeZip1";
constexpr qsizetype SumLength = 16;

QByteArray sumOf(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Md5);
}

class FakeOpened final : public OpenedArchive
{
public:
    FakeOpened(Files& files, QString staging, qint64 size, const QList<FakeArchive::Packed>& packed)
        : m_files(files), m_staging(std::move(staging)), m_size(size)
    {
        for (const FakeArchive::Packed& one : packed) {
            m_entries.push_back(one.entry);
            m_bytes.push_back(one.bytes);
        }
    }
    ~FakeOpened() override
    {
        for (const QString& file : std::as_const(m_made))
            m_files.remove(file);
        (void)m_files.takeFault();
    }
    FakeOpened(const FakeOpened&) = delete;
    FakeOpened& operator=(const FakeOpened&) = delete;

    [[nodiscard]] const std::vector<ArchiveEntry>& entries() const override { return m_entries; }
    [[nodiscard]] qint64 size() const override { return m_size; }
    [[nodiscard]] bool unpack(const std::vector<std::size_t>& numbers, const ArchiveProgress& progress) override
    {
        qint64 done = 0;
        m_files.makeFolder(m_staging);
        for (const std::size_t number : numbers) {
            if (number >= m_entries.size() || m_entries[number].kind != ArchiveEntry::Kind::File ||
                m_bytes[number].size() != m_entries[number].size ||
                !m_files.writeBytes(unpackedFile(number), m_bytes[number]))
                return false;
            m_made.append(unpackedFile(number));
            SetModified(unpackedFile(number), m_entries[number].modified);
            if (++done; progress && !progress(done, static_cast<qint64>(numbers.size())))
                return false;
        }
        return true;
    }
    [[nodiscard]] QString unpackedFile(std::size_t number) const override
    {
        return m_staging + u'/' + QString::number(number);
    }

    std::function<void(const QString& path, const QDateTime& time)> SetModified;

private:
    Files& m_files;
    QString m_staging;
    qint64 m_size;
    std::vector<ArchiveEntry> m_entries;
    std::vector<QByteArray> m_bytes;
    QStringList m_made;
};

void putEntry(QList<FakeArchive::Packed>& entries, const FakeArchive::Packed& fresh)
{
    const qsizetype old = entries.indexOf(fresh);
    if (old < 0)
        entries.append(fresh);
    else
        entries[old] = fresh;
}

} // namespace

QByteArray FakeArchive::packed(const QList<Packed>& entries)
{
    QByteArray body;
    QDataStream out(&body, QIODevice::WriteOnly);
    out << static_cast<qint32>(entries.size());
    for (const auto& [entry, bytes] : entries)
        out << entry.name << static_cast<qint32>(entry.kind) << entry.size << entry.modified << bytes;
    return Head + sumOf(body) + body;
}

std::optional<QList<FakeArchive::Packed>> FakeArchive::unpacked(const QByteArray& bytes)
{
    const QByteArray body = bytes.mid(Head.size() + SumLength);
    if (!bytes.startsWith(Head) || bytes.mid(Head.size(), SumLength) != sumOf(body))
        return {};
    QDataStream in(body);
    qint32 count = 0;
    in >> count;
    QList<Packed> entries;
    for (qint32 i = 0; i < count; ++i) {
        Packed one;
        qint32 kind = 0;
        in >> one.entry.name >> kind >> one.entry.size >> one.entry.modified >> one.bytes;
        one.entry.kind = static_cast<ArchiveEntry::Kind>(kind);
        one.entry.packedSize = one.bytes.size();
        entries.append(one);
    }
    return entries;
}

bool FakeArchive::isRefused(const ArchiveJob& job, const QString& path, const QString& name) const
{
    return (job.takes && !job.takes(name)) || (!job.followsLinks && m_files.isLink(path));
}

void FakeArchive::read(const ArchiveJob& job, const ArchiveTree& tree, const QString& below, Tree& found) const
{
    const QString folder = below.isEmpty() ? tree.folder : FileDirPath::join(tree.folder, below);
    for (const QString& file : m_files.list(folder, u"*"_s)) {
        const QString path = FileDirPath::join(folder, file);
        if (m_files.stamp(path) == m_files.stamp(job.archive))
            continue;
        Packed one;
        one.entry.name = below + file;
        const ReadBytes bytes = m_files.readBytes(path);
        if (isRefused(job, path, one.entry.name) || !bytes.done()) {
            found.leftOut.append(one.entry.name);
            continue;
        }
        one.bytes = bytes.bytes;
        one.entry.size = one.entry.packedSize = bytes.bytes.size();
        one.entry.modified = m_files.modified(path).value_or(QDateTime());
        putEntry(found.files, one);
    }
    for (const QString& name : m_files.folders(folder)) {
        Packed one;
        one.entry.name = below + name + u'/';
        one.entry.kind = ArchiveEntry::Kind::Folder;
        one.entry.modified = m_files.modified(FileDirPath::join(folder, name)).value_or(QDateTime());
        if (isRefused(job, FileDirPath::join(folder, name), one.entry.name)) {
            found.leftOut.append(one.entry.name);
            continue;
        }
        if (tree.foldersToo)
            putEntry(found.files, one);
        read(job, tree, one.entry.name, found);
    }
}

ArchiveOutcome FakeArchive::add(const ArchiveJob& job, const ArchiveProgress& progress)
{
    QStringList folders;
    for (const ArchiveTree& tree : job.trees)
        folders.append(quoted(tree.folder));
    if (!m_log.call(u"zip.add %1 from %2 level %3"_s.arg(quoted(job.archive), folders.join(u' '))
                        .arg(static_cast<int>(job.compression)))) {
        m_files.noteFault(WriteFault::Disk);
        return {};
    }
    QList<Packed> entries;
    if (m_files.exists(job.archive)) {
        const std::optional<QList<Packed>> old = unpacked(m_files.readBytes(job.archive).bytes);
        if (!old)
            return {};
        entries = *old;
    }
    Tree found;
    for (const ArchiveTree& tree : job.trees)
        read(job, tree, {}, found);
    for (const ArchiveFile& file : job.files) {
        Packed one;
        one.entry.name = file.name;
        const ReadBytes read = m_files.readBytes(file.path);
        one.bytes = read.bytes;
        one.entry.size = one.entry.packedSize = one.bytes.size();
        one.entry.modified = m_files.modified(file.path).value_or(QDateTime());
        if (read.done())
            putEntry(found.files, one);
        else if (read.outcome == ReadOutcome::Failed)
            found.leftOut.append(one.entry.name);
    }
    qint64 done = 0;
    for (const Packed& one : std::as_const(found.files)) {
        putEntry(entries, one);
        if (++done; progress && !progress(done, found.files.size()))
            return {};
    }
    std::vector<ArchiveEntry> all;
    for (const Packed& one : std::as_const(entries))
        all.push_back(one.entry);
    const QByteArray bytes = packed(entries);
    if (entries.isEmpty() || (job.accepts && !job.accepts(all, bytes.size())))
        return {};
    return {.done = m_files.writeBytes(job.archive, bytes), .leftOut = found.leftOut};
}

std::unique_ptr<OpenedArchive> FakeArchive::open(const QString& archive, qint64 mostEntries)
{
    if (!m_log.call(u"zip.open %1"_s.arg(quoted(archive)))) {
        m_files.noteFault(WriteFault::Disk);
        return nullptr;
    }
    const ReadBytes read = m_files.readBytes(archive);
    const std::optional<QList<Packed>> entries = unpacked(read.bytes);
    if (!entries || entries->size() > mostEntries)
        return nullptr;
    auto opened = std::make_unique<FakeOpened>(m_files, m_staging, read.bytes.size(), *entries);
    opened->SetModified = SetModified;
    return opened;
}

} // namespace orvantine::fake
