#pragma once

#include "platform/EarlierVersions.h"

namespace orvantine {

/// What lies in the recovery folder.
class KeptVersions final : public EarlierVersions
{
public:
    /// "" for none.
    explicit KeptVersions(const QString& folder) : m_folder(folder.toUtf8()) {}

    [[nodiscard]] std::optional<EarlierVersionList> list() const override;
    [[nodiscard]] ReadBytes bytes(const QByteArray& handle) const override;

private:
    QByteArray m_folder;
};

} // namespace orvantine
