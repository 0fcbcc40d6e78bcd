#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <optional>

namespace orvantine {

/// One line of the recovery store's table of contents.
struct KeptCopy
{
    /// Since 1970.
    qint64 seconds = 0;
    /// Name of the copy in the store.
    QByteArray copy;
    /// What it is a copy of, absolute.
    QByteArray path;
    /// The command that replaced or deleted it; "" where none is known.
    QString reason;
};

[[nodiscard]] QByteArray lineOf(const KeptCopy& entry);
[[nodiscard]] QByteArray contentsFile(const QByteArray& folder);
/// The oldest first; empty for a store without a table. Lines that are no entry are passed over. Nothing if the table
/// cannot be read as a whole.
[[nodiscard]] std::optional<QList<KeptCopy>> readContents(const QByteArray& folder);

} // namespace orvantine
