#include "support/FakeVersions.h"

#include <QCryptographicHash>

#include <algorithm>

namespace orvantine::fake {
namespace {

QByteArray handleOf(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256).toHex();
}

} // namespace

std::optional<EarlierVersionList> FakeVersions::list() const
{
    if (Unknown)
        return {};
    EarlierVersionList found;
    QSet<QByteArray> counted;
    for (auto kept = m_files.AllKept.crbegin(); kept != m_files.AllKept.crend(); ++kept) {
        const QByteArray handle = handleOf(kept->bytes);
        found.versions.push_back({kept->path, kept->when, kept->bytes.size(), kept->reason, handle});
        if (!counted.contains(handle))
            found.room += kept->bytes.size();
        counted.insert(handle);
    }
    return found;
}

ReadBytes FakeVersions::bytes(const QByteArray& handle) const
{
    ++Reads;
    const auto kept = std::find_if(m_files.AllKept.cbegin(), m_files.AllKept.cend(),
                                   [&handle](const MemoryFiles::Kept& one) { return handleOf(one.bytes) == handle; });
    if (kept == m_files.AllKept.cend())
        return {ReadOutcome::Missing, {}};
    if (Damaged.contains(handle))
        return {ReadOutcome::Failed, {}};
    return {ReadOutcome::Done, kept->bytes};
}

} // namespace orvantine::fake
