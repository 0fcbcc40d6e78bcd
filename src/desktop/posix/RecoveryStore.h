#pragma once

#include "desktop/posix/Descriptor.h"
#include "platform/EarlierVersions.h"
#include "platform/Files.h"

#include <QByteArray>

namespace orvantine {

/// Old bytes of files that a command replaced or deleted, each under a sum of its content in the user's recovery
/// folder. Copies go when they are older than 90 days or when all together take more than 200 MB, oldest first; the
/// newest copy of each path always stays.
class RecoveryStore
{
public:
    /// `folder` is made with mode 0700 at the first copy; "" for no store.
    explicit RecoveryStore(QByteArray folder);

    /// Keeps `bytes`, which stood at `path`. False if no copy could be made: nothing is left half written then. The
    /// bytes are on the disk when it returns, their name with `settle`: until then the journal has them as well.
    [[nodiscard]] bool keep(const QByteArray& path, const QByteArray& bytes);
    /// The same for bytes of an open file, however many; `name` gets that of the copy, for who relies on
    /// it alone, and is settled.
    [[nodiscard]] bool keep(const QByteArray& path, const Descriptor& file, Passage bytes, QByteArray* name = nullptr);
    /// Brings names and table of what was kept to the disk.
    [[nodiscard]] bool settle();
    /// What was kept under a name.
    [[nodiscard]] Descriptor openCopy(const QByteArray& copy) const;

    /// What is kept from now on is kept for that reason.
    void setReason(const QString& reason) { m_reason = reason; }

    static constexpr qint64 MostBytes = EarlierVersions::MostBytes;
    static constexpr qint64 MostSeconds = qint64{EarlierVersions::MostDays} * 24 * 60 * 60;
    /// The name of a copy begins with so many digits: a sum of its bytes, or the first of the next ones that was free.
    static constexpr qsizetype SumLength = 16;
    static constexpr quint64 TriedSums = 16;

private:
    /// Enters the copy, `size` bytes, into the table of contents.
    [[nodiscard]] bool enter(const QByteArray& copy, const QByteArray& path, qint64 size);
    void prune();

    QByteArray m_folder;
    qint64 m_untilPrune = 0;
    bool m_unsettled = false;
    QString m_reason;
};

} // namespace orvantine
