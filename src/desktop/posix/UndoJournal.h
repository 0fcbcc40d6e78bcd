#pragma once

#include "desktop/posix/Descriptor.h"
#include "desktop/posix/JournalNotes.h"

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QSet>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <sys/stat.h>

namespace orvantine {

class RecoveryStore;

/// What stood where a command is about to write, create or remove, and what it puts there. A change whose steps all
/// succeed is brought to the disk, and then its notes go. One that fails, or whose program dies, is put back from
/// them: at its end, or at the next start, again and again until that has succeeded. Until then nothing is changed.
///
/// A file that is not as the noted steps left it belongs to whoever has changed it since, and stays.
///
/// What was read while something was half done may be half of it. So only what comes up before the first read may put
/// it back in this process; after that the next start does, and until then nothing is changed.
///
/// What is on a disk that is away waits in a journal of its own, and only these files are not changed until then.
///
/// One file in the recovery folder, held by a lock: a second program beside the first changes nothing. What stood
/// before is on the disk before the step that it is for.
class UndoJournal
{
public:
    /// Puts back what a killed program left half done; what stands in the way of that goes to the store. `folder` is
    /// made at the first note; "" for no journal.
    UndoJournal(QByteArray folder, RecoveryStore& store);
    UndoJournal(const UndoJournal&) = delete;
    UndoJournal& operator=(const UndoJournal&) = delete;
    ~UndoJournal();

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
    /// An earlier change could not be put back yet, or its journal not be read, so nothing may be changed.
    [[nodiscard]] bool isStuck() const { return m_stuck; }
    /// The files that wait for their disk.
    [[nodiscard]] QList<QByteArray> waiting() const;
    /// Tries again what is stuck, unless something was read since.
    void tryAgain();
    /// The program has read what stands on the disk.
    void noteRead() const { m_readWhileStuck = m_readWhileStuck || m_stuck; }
    /// There is a place for it that is this user's alone, or it can be made.
    [[nodiscard]] bool hasPlace() const;

    // Notes; paths are absolute. False with `errno`: the step must not be done.

    /// `fresh` will take the place of `length` bytes at `offset`, and what follows them moves. `old` stands there now,
    /// up to the end of the file unless nothing moves.
    [[nodiscard]] bool willWrite(const Descriptor& file, const QByteArray& path, qint64 offset, QByteArrayView old,
                                 qint64 length, QByteArrayView fresh);
    /// What is written to the file then is told of as well.
    [[nodiscard]] bool willCreate(const QByteArray& path);
    /// A regular file; a large one has a copy in the store.
    [[nodiscard]] bool willRemove(const QByteArray& path, const QByteArray& copy);
    [[nodiscard]] bool willRemoveLink(const QByteArray& path);
    /// A file under the scratch name of `path` is on its way.
    [[nodiscard]] bool willPrepare(const QByteArray& path);
    /// And takes the place of none.
    [[nodiscard]] bool willPlace(const QByteArray& path, const Descriptor& prepared);

    /// The notes behind `mark` are of a step that has done nothing.
    [[nodiscard]] qint64 mark() const { return m_length; }
    [[nodiscard]] bool takeBack(qint64 mark);

private:
    using Index = std::vector<std::pair<QByteArray, std::vector<qint64>>>;
    struct Part
    {
        qint64 start = 0;
        bool failedBefore = false;
    };
    /// From an offset on up to another one, with which the file of that size does not end, or to its end.
    struct Covered
    {
        qint64 from = 0;
        std::optional<qint64> to;
        qint64 size = 0;
    };
    struct OldBytes
    {
        qint64 offset = 0;
        QByteArrayView bytes;
        /// What follows them gets another place.
        bool move = false;
    };
    enum class Sync { Yes, No };
    enum class Opened {
        Yes,
        /// There is none.
        Missing,
        /// With `errno`; whether it holds anything is unknown.
        No
    };

    /// One that stands already.
    [[nodiscard]] Opened openStanding();
    /// A new one, or an empty one.
    [[nodiscard]] bool openForNotes();
    bool add(std::vector<JournalNote> notes, Sync sync);
    /// The notes of old bytes that are missing for a step; `covered` is what is noted, and what is then.
    [[nodiscard]] static bool noteOld(const Descriptor& file, const struct stat& info, const OldBytes& old,
                                      std::optional<Covered>& covered, std::vector<JournalNote>& notes);
    /// A note of the running change.
    void remember(const JournalNote& note);
    /// Brings what was touched to the disk.
    [[nodiscard]] bool syncTouched();
    /// Lets the notes behind `length` go.
    bool cutTo(qint64 length);
    /// A note from the disk.
    [[nodiscard]] std::optional<ReadNote> read(qint64 at, bool& failed) const;
    /// Where the notes that stand begin, by path.
    [[nodiscard]] std::optional<Index> index() const;
    /// Lets what somebody else may have done to a file be known to a second return.
    [[nodiscard]] bool noteFound(const QByteArray& path, const QByteArray& found);
    /// The files are again as they were when the journal was `start` bytes long. False if that is not so yet.
    bool putBack(qint64 start);
    /// What stands in the way is nothing but files on disks that are away.
    [[nodiscard]] bool onlyWaits() const { return m_stuck && !m_failedReturn && !m_away.isEmpty(); }
    /// Opens the journal of what waits, and tries to put it back.
    void openWaiting();
    /// Their notes go over to that journal.
    [[nodiscard]] bool moveAway();
    bool restore(const QByteArray& path, const FileHistory& history);
    bool restoreStanding(const QByteArray& path, const FileHistory& history, const struct stat& info);
    /// Nobody but us has touched the file, though the notes do not tell what it holds.
    [[nodiscard]] bool isUntouched(const FileHistory& history, const struct stat& info) const;
    /// What `willChange` knows, from the notes that stand.
    [[nodiscard]] bool rememberCovered();
    /// Nothing of an earlier change is left, or it is put back now.
    bool settle();

    UndoJournal(QByteArray folder, RecoveryStore& store, const char* name);

    QByteArray m_folder;
    QByteArray m_name;
    RecoveryStore& m_store;
    std::unique_ptr<UndoJournal> m_waiting;
    /// Found by the last return: files on disks that are away, and whether another one could not be put back.
    QSet<QByteArray> m_away;
    bool m_failedReturn = false;
    Descriptor m_file;
    qint64 m_length = 0;
    int m_depth = 0;
    bool m_failed = false;
    bool m_stuck = false;
    mutable bool m_readWhileStuck = false;
    /// What is put back is a command of an earlier run: what it has written goes to the store first.
    bool m_recovers = false;
    std::vector<Part> m_parts;
    /// By path, the old bytes that are noted.
    QHash<QByteArray, Covered> m_covered;
    /// By path, the last note.
    QHash<QByteArray, JournalNote::Kind> m_touched;
    /// The folders in which a name comes or goes.
    QSet<QByteArray> m_folders;
    /// By device and inode, the name under which a written file is told of.
    QHash<std::pair<quint64, quint64>, QByteArray> m_names;
    bool m_syncFailed = false;
    /// What seems to be on the disk may not be.
    bool m_rewrites = false;
    /// The end of the run that the notes are of.
    timespec m_lastWritten = {};
};

} // namespace orvantine
