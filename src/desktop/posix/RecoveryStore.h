#pragma once

#include <QByteArray>

namespace orvantine {

/// Old bytes of files that a command replaced or deleted, each under its content's hash in the user's recovery folder.
/// Copies go when they are older than 90 days or when all together take more than 200 MB, oldest first; the newest
/// copy of each path always stays.
class RecoveryStore
{
public:
    /// `folder` is made with mode 0700 at the first copy; "" for no store.
    explicit RecoveryStore(QByteArray folder);

    /// Keeps `bytes`, which stood at `path`. False if no copy could be made: nothing is left half written then.
    bool keep(const QByteArray& path, const QByteArray& bytes);

    static constexpr qint64 MostBytes = qint64{200} << 20;
    static constexpr qint64 MostSeconds = qint64{90} * 24 * 60 * 60;

private:
    void prune();

    QByteArray m_folder;
    bool m_pruned = false;
};

} // namespace orvantine
