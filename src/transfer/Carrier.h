#pragma once

#include "platform/Files.h"
#include "transfer/CarryProgress.h"

#include <QDateTime>
#include <QSet>
#include <QStringList>

#include <optional>
#include <utility>

namespace orvantine {

class Command;
struct Root;

/// Carries the files of a command to another medium, one after the other, and serves events meanwhile. One that cannot
/// be carried is named and passed over.
///
/// A stop counts at the end of the file that is on its way. One that is not over a second later is broken off.
class Carrier
{
public:
    enum class Outcome {
        Carried,
        /// Nothing stands there to be carried.
        Missing,
        Failed,
        /// By a stop, or by the end of the program.
        BrokenOff
    };

    /// When the dialog comes up that tells of it.
    enum class Dialog { Shown, Late };

    /// Without a number of bytes the bar goes by steps.
    Carrier(Root& root, Command& command, std::optional<qint64> totalBytes, Dialog dialog = Dialog::Shown);
    /// Says quietly what could not be carried.
    ~Carrier();
    Carrier(const Carrier&) = delete;
    Carrier& operator=(const Carrier&) = delete;

    /// Sound files of the user's own: nothing is put in their place.
    void spare(const QStringList& files);

    /// A sound file.
    Outcome carry(const QString& from, const QString& to);
    /// A list, a database or a picture: these are small, and a stop does not break them off.
    Outcome carryBesides(const QString& from, const QString& to);
    /// A list that stands under its name when it is whole.
    /// `source`: what it was made of, which is named where it cannot be carried; "" for `to`.
    Outcome carryText(const QString& text, const QString& to, const QString& source = {});
    /// Brings the names of a folder to the medium.
    void settle(const QString& folder);
    /// A file has no place that it could be carried to.
    void refuse(const QString& from);
    /// A file could not be carried, for the reason that the last action gave.
    void noteFailure(const QString& path);
    /// Each once.
    [[nodiscard]] const QStringList& failed() const { return m_failed; }
    [[nodiscard]] CarryProgress& progress() { return m_progress; }

private:
    Outcome carryFile(const QString& from, const QString& to, bool mayBeStopped);
    [[nodiscard]] bool goesOn(qint64 done, bool mayBeStopped);
    [[nodiscard]] bool isSpared(const QString& from, const QString& to);

    Root& m_root;
    Command& m_command;
    CarryProgress m_progress;
    QSet<QString> m_spared;
    /// Those of them of which nobody has asked yet which files they are, and device and inode of the others.
    QStringList m_sparedPaths;
    QSet<std::pair<quint64, quint64>> m_sparedFiles;
    QStringList m_failed;
    std::optional<WriteFault> m_firstFault;
    QDateTime m_stopAsked;
    bool m_brokenOff = false;
    /// Since when a dialog is waited for that is not shown yet.
    std::optional<QDateTime> m_lateSince;
};

/// The list is the file of a row of the catalogue, by whatever path: a copy of it is not put in its place. True also
/// where nobody knows because the database cannot be read.
[[nodiscard]] bool isCatalogueFile(const Root& root, const QString& path);

/// The bytes of all these files; a missing one adds nothing. Nothing after the end of the program.
[[nodiscard]] std::optional<qint64> bytesOf(const Root& root, Command& command, const QStringList& files);

} // namespace orvantine
