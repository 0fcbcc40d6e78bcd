#include "desktop/tags/TagLibTags.h"

#include "desktop/posix/AtomicReplace.h"
#include "desktop/posix/HostFile.h"
#include "desktop/tags/OtherTrack.h"
#include "desktop/tags/TagEdit.h"

#include <algorithm>
#include <limits>

#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class FileBytes final : public ByteSource
{
public:
    FileBytes(const Descriptor& file, qint64 size) : m_file(file), m_size(size) {}

    [[nodiscard]] qint64 size() const override { return m_size; }
    [[nodiscard]] QByteArray read(qint64 offset, qint64 length) const override
    {
        QByteArray bytes;
        const qint64 here = std::clamp<qint64>(m_size - offset, 0, length);
        if (offset < 0 || here == 0)
            return {};
        if (!readAt(m_file, offset, here, bytes)) {
            m_failed = true;
            bytes.clear();
        }
        return bytes;
    }
    /// A device error: what was read so far is not the whole truth.
    [[nodiscard]] bool failed() const { return m_failed; }

private:
    const Descriptor& m_file;
    qint64 m_size;
    mutable bool m_failed = false;
};

/// Applies an edit that is found for the bytes of a file.
template <class Edit>
bool edited(Files& files, const QString& path, Edit edit)
{
    const std::optional<QByteArray> native = files.nativePath(path);
    AtomicReplace file(native.value_or(QByteArray()));
    if (!file.isPossible())
        return false;
    const FileBytes bytes(file.file(), file.size());
    const std::optional<TagEdit> found = edit(bytes);
    if (!found || bytes.failed())
        return false;
    const std::vector<Passage> gone = {{0, found->keptFrom}, {found->keptTo, file.size() - found->keptTo}};
    return changesNothing(bytes, *found) || files.replaceAnew(path, gone, [&](const QByteArray& scratch) {
        return file.replace(scratch, found->keptFrom, found->keptTo, found->tail);
    });
}

} // namespace

void TagLibTags::Mp3FileInfo(const QString& path, Mp3Record& record)
{
    const std::optional<QByteArray> native = m_files.nativePath(path);
    struct stat info = {};
    // Asking first keeps a FIFO or a device from being opened.
    if (!native || ::stat(native->constData(), &info) != 0 || !S_ISREG(info.st_mode))
        return;
    if (!m_known || m_known->stamp != stampOf(info)) {
        m_known.reset();
        const Descriptor file(::open(native->constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
        if (!file.isOpen() || ::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode))
            return;
        const FileBytes bytes(file, info.st_size);
        const std::optional<TrackFacts> facts = trackFacts(bytes);
        if (bytes.failed())
            return;
        m_known = Known{.stamp = stampOf(info), .facts = facts ? *facts : otherTrackFacts(file)};
    }
    const TrackFacts& facts = m_known->facts;
    fill(record, facts.tag);
    record.bitRate = static_cast<qint16>(std::min<int>(facts.bitRate, std::numeric_limits<qint16>::max()));
    record.playingTime = facts.seconds;
}

bool TagLibTags::WriteID3V1(const QString& path, const Mp3Record& record)
{
    return isWritable(path) &&
           edited(m_files, path, [&record](const ByteSource& bytes) { return id3v1Edit(bytes, record); });
}

bool TagLibTags::EraseID3V2(const QString& path)
{
    return isWritable(path) && edited(m_files, path, id3v2Removal);
}

bool TagLibTags::isWritable(const QString& path)
{
    return !path.endsWith(u".wav"_s, Qt::CaseInsensitive) && !path.endsWith(u".wma"_s, Qt::CaseInsensitive);
}

} // namespace orvantine
