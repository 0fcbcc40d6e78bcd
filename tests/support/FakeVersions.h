#pragma once

#include "platform/EarlierVersions.h"
#include "support/MemoryFiles.h"

#include <QSet>

namespace orvantine::fake {

/// What files in memory have kept.
class FakeVersions final : public EarlierVersions
{
public:
    explicit FakeVersions(const MemoryFiles& files) : m_files(files) {}

    [[nodiscard]] std::optional<EarlierVersionList> list() const override;
    [[nodiscard]] ReadBytes bytes(const QByteArray& handle) const override;

    /// Nobody can say from now on what was kept.
    bool Unknown = false;
    /// The copies whose bytes are not what they were.
    QSet<QByteArray> Damaged;
    /// How often bytes were asked for.
    mutable int Reads = 0;

private:
    const MemoryFiles& m_files;
};

} // namespace orvantine::fake
