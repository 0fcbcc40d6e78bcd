#pragma once

#include "platform/ZipArchive.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <variant>
#include <vector>

namespace orvantine {

/// What a backup may hold at most. A larger one is none of ours.
inline constexpr qint64 MostRestoredEntries = 20000;
inline constexpr qint64 MostRestoredBytes = qint64{2} * 1024 * 1024 * 1024;

struct RestoredFile
{
    /// Number of the entry.
    std::size_t number = 0;
    /// Goes to "Resource"; else to "Playlisten".
    bool picture = false;
    /// Below that folder, with "/".
    QString name;
};

/// What of an archive goes where.
struct RestorePlan
{
    std::vector<RestoredFile> files;
    /// To be made below "Playlisten", each after the one that it lies in. The others come with their files.
    QStringList folders;
    /// The copy of the database, if the archive holds one.
    std::optional<std::size_t> database;
};

/// A name that stays below the folder that it is unpacked to, on every desktop, and that can be made there.
[[nodiscard]] bool isRestorableName(const QString& name);

/// Why nothing of an archive is brought back.
struct RestoreObstacle
{
    enum class Kind {
        /// No archive, none of ours or a damaged one.
        Unsound,
        /// More than a backup may hold.
        TooMuch,
        NoRoom,
        /// A link stands where a file is to go.
        Linked
    };

    Kind kind = Kind::Unsound;
    /// Name of the entry; "" where it is the whole.
    QString entry;
};

/// Nothing is planned unless each entry can be brought back: one bad name, one entry twice (case and normal form do not
/// count), a link, a size that cannot be true or more than `room` bytes, and nothing of the archive is trusted.
[[nodiscard]] std::variant<RestorePlan, RestoreObstacle> planRestore(const std::vector<ArchiveEntry>& entries,
                                                                     qint64 archiveSize, qint64 room);

} // namespace orvantine
