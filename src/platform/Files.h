#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace orvantine {

/// Identity and state of a file: equal stamps mean that nobody wrote to it in between.
struct FileStamp
{
    quint64 device = 0;
    quint64 inode = 0;
    qint64 size = 0;
    qint64 modifiedNanoseconds = 0;
    /// Also moves when somebody set the modification time back.
    qint64 changedNanoseconds = 0;

    bool operator==(const FileStamp&) const = default;
};

enum class ReadOutcome { Done, Missing, Failed };

/// Missing reads as an empty file; Failed (no rights, no regular file, too large, a device error) ends the step that
/// needed the bytes without writing anything.
struct ReadBytes
{
    ReadOutcome outcome = ReadOutcome::Failed;
    QByteArray bytes;
    [[nodiscard]] bool done() const { return outcome == ReadOutcome::Done; }
};

struct ReadText
{
    ReadOutcome outcome = ReadOutcome::Failed;
    QString text;
    [[nodiscard]] bool done() const { return outcome == ReadOutcome::Done; }
};

/// Why an action did not change the disk, or what it had changed was put back.
enum class WriteFault {
    NoRoom,
    ReadOnlyDisk,
    NoRights,
    /// Anything else that the disk reports.
    Disk,
    /// No file can have that name, or its folder is missing.
    NoSuchPlace,
    /// There is no place in which old bytes could be kept.
    NoSafePlace
};

/// Why no action can change anything at all.
enum class FilesTrouble {
    /// No folder for old bytes, or one that is not this user's alone.
    NoSafePlace,
    /// What an earlier command left half done cannot be put back yet.
    Unfinished
};

/// Bytes of a file, from `offset` on.
struct Passage
{
    qint64 offset = 0;
    qint64 length = 0;
};

/// Asked between the pieces of a file that is carried, and told how many of its bytes stand on the medium. It may serve
/// events; false stops.
using CarryStep = std::function<bool(qint64 done)>;

/// The one door to the user's files. Paths are texts as users and playlists have them: "\" and "/" both separate, a
/// drive letter is looked up in the drive map, names are found ignoring case and normal form. A text that names
/// nothing is no error: queries answer false or empty, actions answer false and leave the disk as it was.
class Files
{
public:
    virtual ~Files() = default;

    // Queries

    /// True if anything matches: a file, a folder, a pattern with "*" or "?" in the last part. False for "" and for a
    /// text that ends in a separator.
    [[nodiscard]] virtual bool exists(const QString& path) const = 0;
    /// True if the attributes can be read: for files as well. A trailing separator is allowed.
    [[nodiscard]] virtual bool folderExists(const QString& path) const = 0;
    [[nodiscard]] virtual bool isFolder(const QString& path) const = 0;
    /// A link, whatever it leads to.
    [[nodiscard]] virtual bool isLink(const QString& path) const = 0;
    /// Bytes, for a regular file.
    [[nodiscard]] virtual std::optional<qint64> size(const QString& path) const = 0;
    /// Time of the last change, in local time.
    [[nodiscard]] virtual std::optional<QDateTime> modified(const QString& path) const = 0;
    [[nodiscard]] virtual std::optional<FileStamp> stamp(const QString& path) const = 0;
    /// The host's bytes for an existing file or folder: absolute, fit for open(2) and for the player.
    [[nodiscard]] virtual std::optional<QByteArray> nativePath(const QString& path) const = 0;
    /// Names of the files of a folder that match one of the patterns ("*.mp3;*.wma"), sorted ignoring case; hidden
    /// files are left out. Only the names, without the folder.
    [[nodiscard]] virtual QStringList list(const QString& folder, const QString& patterns) const = 0;
    /// Names of the folders of a folder, sorted ignoring case, dot folders left out.
    [[nodiscard]] virtual QStringList folders(const QString& folder) const = 0;

    /// Answers `exists` for names below `folder`, which ends in a separator, from one look at it: for a loop that
    /// serves no events.
    [[nodiscard]] virtual std::function<bool(const QString& name)> namesIn(const QString& folder) const
    {
        return [this, folder](const QString& name) { return exists(folder + name); };
    }

    // Reading: regular files only, whole

    [[nodiscard]] virtual ReadBytes readBytes(const QString& path) const = 0;
    /// Decoded by the code page: a BOM is dropped, valid UTF-8 is UTF-8; else line by line, UTF-8 or windows-1252.
    [[nodiscard]] virtual ReadText readText(const QString& path) const = 0;
    /// A playlist opened for input. The host's own text files (no CR, at least one LF) are adopted: an exact copy goes
    /// to the recovery folder, then the file is rewritten with CR LF line ends. Where the copy or the rewrite fails,
    /// the file stays and the adopted text is given all the same. Failed for a file that is no text (see `isText`).
    [[nodiscard]] virtual ReadText readPlaylist(const QString& path) = 0;
    /// A playlist may be written there: nothing stands there, or a text.
    [[nodiscard]] virtual bool mayHoldPlaylist(const QString& path) const = 0;

    // Writing: in place, so that inode, links and mode stay; never truncated before the new bytes stand. The old bytes
    // of what is written over or removed are kept in the recovery folder first; where that fails, the action does.

    virtual bool writeBytes(const QString& path, const QByteArray& bytes) = 0;
    /// A playlist, encoded by the code page. `text` goes out as it stands: the caller adds the last line end. A file
    /// that is no text is not written over.
    virtual bool writeText(const QString& path, const QString& text) = 0;
    /// Adds to the end; creates the file. What a command changes bit by bit is kept once, before its first change.
    virtual bool appendBytes(const QString& path, const QByteArray& bytes) = 0;
    /// Puts `bytes` in the place of the `length` bytes at `offset`; what follows moves. Kept as by appendBytes.
    virtual bool replaceBytes(const QString& path, qint64 offset, qint64 length, const QByteArray& bytes) = 0;
    /// Overwrites silently and keeps the modification time; a no-op that succeeds when both are one file.
    virtual bool copy(const QString& from, const QString& to) = 0;
    /// As copy, but not over a file that is no text.
    bool copyPlaylist(const QString& from, const QString& to) { return mayHoldPlaylist(to) && copy(from, to); }
    virtual bool remove(const QString& path) = 0;
    /// For what writes a file of any size anew: `change` gets the host's path of a hidden file beside it, which it
    /// makes and puts in the place of the first, or of none. What a killed program leaves of it goes at the next start.
    /// Of the old bytes the `gone` ones are kept, those that the new file does not hold: each as a file of its own, by
    /// the file's name with the offset behind it.
    virtual bool replaceAnew(const QString& path, const std::vector<Passage>& gone,
                             const std::function<bool(const QByteArray& scratch)>& change) = 0;
    /// One level; false if it stands already.
    virtual bool makeFolder(const QString& path) = 0;
    /// Takes the write protection away.
    virtual bool clearAttributes(const QString& path) = 0;

    // Carrying to another medium. Each is a change of its own, since events are served inside; none of them is a part
    // of a WholeChange. A file grows under its name with ".part" behind it, is brought to the medium and compared in
    // size, and then takes the place of an older one, whose mode it keeps. What fails, is stopped or killed leaves none
    // of it, and the older file stays. Of that the old bytes are kept up to LargestKept: lists, databases and pictures.
    // A sound file is replaced by its copy as told; keeping whole media of them would drive all else out of the store.

    static constexpr qint64 LargestKept = qint64{1} << 20;
    /// Copies a file of any size and keeps its modification time; a no-op that succeeds when both are one file.
    virtual bool carry(const QString& from, const QString& to, const CarryStep& goOn) = 0;
    virtual bool carryBytes(const QByteArray& bytes, const QString& to, const CarryStep& goOn) = 0;
    /// Brings the names of a folder to the medium: without it a loss of power may cost files that were carried there.
    virtual bool settle(const QString& folder, const CarryStep& goOn) = 0;

    // The program's own passing files, of which nothing is kept

    /// A folder that is this user's alone: `path`, or one beside it where something else stands there; "" where none
    /// can be made.
    [[nodiscard]] virtual QString privateFolder(const QString& path) = 0;
    /// Empties such a folder: its files, and its folders with the files in them, one level deep. No link is followed.
    /// `goOn` is asked behind each folder.
    virtual bool emptyPrivate(const QString& folder, const std::function<bool()>& goOn) = 0;

    // Commands that change more than one thing: see WholeChange and PartChange. The ends are false if it was put back.

    virtual void beginWhole() {}
    virtual bool endWhole() { return true; }
    virtual void beginPart() {}
    virtual bool endPart() { return true; }
    /// A step of the running change has failed that is no action of this service.
    virtual void failWhole() {}
    [[nodiscard]] virtual bool wholeFailed() const { return false; }
    /// What was kept for the command before does not count for this one.
    virtual void beginCommand() {}
    /// What is kept from now on is kept because of the command of that name; "" where none is known.
    virtual void nameCommand(const QString&) {}

    /// False, with a fault as of a write, where a write to the file is bound to fail. A write protection that its owner
    /// can take away is no obstacle.
    [[nodiscard]] virtual bool claimWrite(const QString& path) = 0;
    /// Why the last action failed, once. Nothing there to copy or to remove is no fault.
    [[nodiscard]] virtual std::optional<WriteFault> takeFault() = 0;
    virtual void noteFault(WriteFault fault) = 0;
    [[nodiscard]] virtual std::optional<FilesTrouble> trouble() const { return {}; }
    /// The files that an earlier command left half done and whose disk is away: only they are not changed.
    [[nodiscard]] virtual QStringList waiting() const { return {}; }
    /// A WholeChange lives inside which no events may be served.
    [[nodiscard]] bool inClosedChange() const { return m_closedChanges > 0; }

    // The code page

    [[nodiscard]] virtual QByteArray encode(const QString& text) const = 0;
    [[nodiscard]] virtual QString decode(const QByteArray& bytes) const = 0;

private:
    friend class WholeChange;
    int m_closedChanges = 0;
};

/// While one lives, what is written, copied over, created and removed belongs together: if one of these actions fails,
/// no other one is done, and all are put back at its end; if the program is killed meanwhile, the next start puts the
/// files back as they were before. They nest; the outermost one counts.
class WholeChange
{
public:
    /// What another command writes does not belong to this change, so no events are served while one lives. A command
    /// whose steps yield says so: nobody who changes the same runs inside its waits.
    enum class Events { NotServed, Served };

    explicit WholeChange(Files& files, Events events = Events::NotServed) : m_files(files), m_events(events)
    {
        if (m_events == Events::NotServed)
            ++m_files.m_closedChanges;
        m_files.beginWhole();
    }
    ~WholeChange() { end(); }
    WholeChange(const WholeChange&) = delete;
    WholeChange& operator=(const WholeChange&) = delete;

    /// Ends it in front of its scope. False if it was put back, or will be at the end of the one around it.
    bool end()
    {
        if (std::exchange(m_ended, true))
            return true;
        if (m_events == Events::NotServed)
            --m_files.m_closedChanges;
        return m_files.endWhole();
    }
    /// A step that is no action of the service has failed, a read of what is to be written above all.
    void fail() { m_files.failWhole(); }
    [[nodiscard]] bool failed() const { return m_files.wholeFailed(); }

private:
    Files& m_files;
    Events m_events;
    bool m_ended = false;
};

/// What is done for the user's eyes inside a command, a read that brings a list into its form above all: if it fails it
/// is put back alone, and nobody is told.
class PartChange
{
public:
    explicit PartChange(Files& files) : m_files(files), m_faultBefore(files.takeFault()) { m_files.beginPart(); }
    ~PartChange()
    {
        m_files.endPart();
        (void)m_files.takeFault();
        if (m_faultBefore)
            m_files.noteFault(*m_faultBefore);
    }
    PartChange(const PartChange&) = delete;
    PartChange& operator=(const PartChange&) = delete;

private:
    Files& m_files;
    std::optional<WriteFault> m_faultBefore;
};

} // namespace orvantine
