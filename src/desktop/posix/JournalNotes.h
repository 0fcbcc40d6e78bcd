#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <functional>
#include <optional>
#include <vector>

namespace orvantine {

/// One line of the journal of changes: what is about to happen to the file at `path`, or what stands there before it.
struct JournalNote
{
    enum class Kind : quint32 {
        /// The file stood like this from `offset` to its end, or to the offset that an earlier note begins at. With a
        /// `length` that is the whole file's, and what is behind the bytes is told of by a later note, or nothing of it
        /// is changed.
        Before = 1,
        /// There was no file.
        Created = 2,
        /// The whole file stood like this, and goes.
        Removed = 3,
        /// `bytes` take the place of `length` bytes at `offset`.
        Step = 4,
        /// A whole file of `length` bytes and the noted time takes the place of none.
        Placed = 5,
        /// A file on its way to its place, under a name of ours: whatever it holds is nobody's.
        Scratch = 6,
        /// A return has found `bytes` there, from the offset of the first note on, and takes their place.
        Found = 7,
        /// A link that leads to `bytes`, and goes.
        Link = 8,
        /// A file of `length` bytes, too large for the journal, goes; the store has it under the name `bytes`.
        Kept = 9
    };

    Kind kind = Kind::Before;
    QByteArray path;
    QByteArray bytes;
    qint64 offset = 0;
    qint64 length = 0;
    quint64 device = 0;
    quint64 inode = 0;
    /// Of the folder, to tell whether it is away. Its number counts where a medium begins with it, else it is 0.
    quint64 folderInode = 0;
    quint64 folderDevice = 0;
    quint64 fileSystem = 0;
    quint32 mode = 0;
    qint64 modifiedSeconds = 0;
    qint64 modifiedNanoseconds = 0;
    /// Of the running system: tells a program that died from a loss of power.
    quint64 boot = 0;
};

/// Name for a file on its way to `path`, in the same folder: short, hidden, and the same at the next try.
[[nodiscard]] QByteArray scratchName(const QByteArray& path);
[[nodiscard]] bool isScratchName(const QByteArray& path);

/// What is written in front of the note's bytes: a head and the path, under one checksum over all three.
[[nodiscard]] QByteArray encodedHead(const JournalNote& note);
/// The whole note.
[[nodiscard]] QByteArray encodedNote(const JournalNote& note);

struct ReadNote
{
    JournalNote note;
    /// Offset behind the note.
    qint64 end = 0;
};

/// Bytes of a journal; false where they cannot be read.
using JournalBytes = std::function<bool(qint64 offset, qint64 length, QByteArray& bytes)>;

/// The note at `at`; nothing at the end and where it is not whole: the step of a torn one has not begun. Where a read
/// fails `failed` is set.
[[nodiscard]] std::optional<ReadNote> noteAt(const JournalBytes& bytes, qint64 at, qint64 size, bool& failed);
[[nodiscard]] std::vector<ReadNote> decodedNotes(const QByteArray& journal);

/// Whether a file system gives a file the same number again after it was away.
[[nodiscard]] bool inodesSurvive(quint64 fileSystem);

/// What a journal tells of one file: how it was at some time, and how it must look now.
class FileHistory
{
public:
    struct State
    {
        bool exists = false;
        /// The bytes from `base` to the end, or to where nothing was changed any more.
        QByteArray tail;
    };

    void take(const JournalNote& note);
    /// The file is to be as it is told of up to here; else it is to be as it was in front of the first note.
    void setTarget();

    /// False where the notes contradict one another: nobody of ours has written them.
    [[nodiscard]] bool isSound() const { return m_sound; }
    /// Nothing in front of this offset was changed.
    [[nodiscard]] qint64 base() const { return m_base; }
    /// The size that the file keeps, if nothing was changed behind the told bytes: they are not its end then.
    [[nodiscard]] std::optional<qint64> fixedSize() const { return m_fixedSize; }
    [[nodiscard]] const State& target() const { return m_target; }
    [[nodiscard]] bool changedSinceTarget() const { return m_changed; }
    /// The first note, if it tells of a file that stood; the target has its times.
    [[nodiscard]] const std::optional<JournalNote>& origin() const { return m_origin; }
    /// Of the file that the last note tells of; 0 where it is not known.
    [[nodiscard]] quint64 inode() const { return m_inode; }
    [[nodiscard]] quint64 folderInode() const { return m_folderInode; }
    [[nodiscard]] quint64 folderDevice() const { return m_folderDevice; }
    [[nodiscard]] quint64 fileSystem() const { return m_fileSystem; }
    /// Since the target the file was made by us.
    [[nodiscard]] bool wasMade() const { return m_made; }
    /// The link that stood there, and the large file.
    [[nodiscard]] const std::optional<QByteArray>& link() const { return m_link; }
    [[nodiscard]] const std::optional<JournalNote>& kept() const { return m_kept; }
    /// What was put in the place of none as a whole, if that is the last that was done.
    [[nodiscard]] const std::optional<JournalNote>& placed() const { return m_placed; }
    [[nodiscard]] quint64 boot() const { return m_boot; }
    /// Rights of the file that was removed.
    [[nodiscard]] std::optional<quint32> mode() const { return m_mode; }

    /// The longest file that could be explained, from the base on.
    [[nodiscard]] qint64 longestTail() const;
    /// A file as it is found from the base on, nothing where there is none, may have been left so by the noted steps:
    /// the last one done, not done or done in part, or by a return to the target that was done in part. Of what is not
    /// the same file that holds for a whole state only.
    [[nodiscard]] bool explains(const std::optional<QByteArray>& found, bool sameFile) const;

private:
    bool extendTo(qint64 offset, const QByteArray& bytes);
    /// The told bytes reach to the end of the file from now on.
    bool extendToEnd(qint64 offset, const QByteArray& bytes);

    qint64 m_base = 0;
    std::optional<qint64> m_fixedSize;
    State m_target;
    State m_previous;
    State m_now;
    std::optional<JournalNote> m_origin;
    std::optional<quint32> m_mode;
    std::optional<QByteArray> m_link;
    std::optional<JournalNote> m_kept;
    std::optional<JournalNote> m_placed;
    quint64 m_inode = 0;
    quint64 m_boot = 0;
    quint64 m_folderInode = 0;
    quint64 m_folderDevice = 0;
    quint64 m_fileSystem = 0;
    bool m_made = false;
    bool m_sound = true;
    bool m_empty = true;
    bool m_changed = false;
};

} // namespace orvantine
