#pragma once

#include "desktop/posix/Descriptor.h"
#include "desktop/posix/JournalNotes.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>

#include <optional>
#include <vector>

namespace orvantine {

class RecoveryStore;

/// What stood where a command is about to write, create or remove, and what it puts there. A change whose steps all
/// succeed is brought to the disk, and then its notes go. One that fails, or whose program dies, is put back from
/// them: at its end, or at the next start, again and again until that has succeeded. Until then nothing is changed.
///
/// A file that is not as the noted steps left it belongs to whoever has changed it since, and stays.
///
/// One file in the recovery folder, held by a lock: a second program beside the first changes nothing. What stood
/// before is on the disk before the step that it is for.
class UndoJournal
{
public:
    /// Puts back what a killed program left half done; what stands in the way of that goes to the store. `folder` is
    /// made at the first note; "" for no journal.
    UndoJournal(QByteArray folder, RecoveryStore& store);

    /// Calls nest; only the outermost pair counts.
    void begin();
    /// False with `errno` if the change did not come to its end and was put back, or will be.
    bool end();
    /// As begin and end, for steps whose failure puts back themselves alone.
    void beginPart();
    bool endPart();
    [[nodiscard]] bool running() const { return m_depth > 0; }

    /// A step of the running change has failed: all of it is put back at its end.
    void fail() { m_failed = running(); }
    [[nodiscard]] bool failed() const { return m_failed; }
    /// An earlier change could not be put back yet, so nothing may be changed.
    [[nodiscard]] bool isStuck() const { return m_stuck; }
    /// There is a place for it that is this user's alone, or it can be made.
    [[nodiscard]] bool hasPlace() const;

    // Notes; paths are absolute. False with `errno`: the step must not be done.

    /// `fresh` will take the place of `length` bytes at `offset`, and what follows them moves. `old` stands there now,
    /// up to the end of the file unless nothing moves.
    [[nodiscard]] bool willWrite(const Descriptor& file, const QByteArray& path, qint64 offset, QByteArrayView old,
                                 qint64 length, QByteArrayView fresh);
    /// What is written to the file then is told of as well.
    [[nodiscard]] bool willCreate(const QByteArray& path);
    /// A regular file.
    [[nodiscard]] bool willRemove(const QByteArray& path);
    /// A file under the scratch name of `path` is on its way.
    [[nodiscard]] bool willPrepare(const QByteArray& path);
    /// And takes the place of none.
    [[nodiscard]] bool willPlace(const QByteArray& path, const Descriptor& prepared);

private:
    struct Part
    {
        qint64 start = 0;
        bool failedBefore = false;
    };
    enum class Sync { Yes, No };

    bool open(bool create);
    bool add(std::vector<JournalNote> notes, Sync sync);
    /// Brings what was touched to the disk.
    [[nodiscard]] bool syncTouched() const;
    /// Lets the notes behind `length` go.
    bool cutTo(qint64 length);
    /// The notes that stand, from the disk.
    [[nodiscard]] std::optional<std::vector<ReadNote>> notes() const;
    /// The files are again as they were when the journal was `start` bytes long. False if that is not so yet.
    bool putBack(qint64 start);
    bool restore(const QByteArray& path, const FileHistory& history);
    /// What `willChange` knows, from the notes that stand.
    [[nodiscard]] bool rememberCovered();
    /// Nothing of an earlier change is left, or it is put back now.
    bool settle();

    QByteArray m_folder;
    RecoveryStore& m_store;
    Descriptor m_file;
    qint64 m_length = 0;
    int m_depth = 0;
    bool m_failed = false;
    bool m_stuck = false;
    /// What is put back is a command of an earlier run: what it has written goes to the store first.
    bool m_recovers = false;
    std::vector<Part> m_parts;
    /// By path, from which offset on the old bytes are noted up to the file's end.
    QHash<QByteArray, qint64> m_coveredFrom;
    QByteArrayList m_touched;
};

} // namespace orvantine
