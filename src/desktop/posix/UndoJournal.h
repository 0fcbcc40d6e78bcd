#pragma once

#include "desktop/posix/Descriptor.h"

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>

namespace orvantine {

class RecoveryStore;

/// What stood where a command is about to write, delete or create. A program that is killed in the middle of the
/// command leaves the journal behind, and the next start puts everything back: the files are as they were before the
/// command, or as they are after it.
///
/// One file in the recovery folder, held by a lock: a second program beside the first works without it. Each note is
/// on the disk before the step that it is for.
class UndoJournal
{
public:
    /// Puts back what a killed program left half done; what stands in the way of that goes to the store. `folder` is
    /// made at the first note; "" for no journal.
    UndoJournal(QByteArray folder, RecoveryStore& store);

    /// Calls nest; only the outermost pair counts.
    void begin() { ++m_depth; }
    /// Brings the files to the disk and lets the notes go.
    void end();
    [[nodiscard]] bool running() const { return m_depth > 0; }

    // Notes; paths are absolute. Outside a begin they do nothing.

    /// The file will change from `offset` on, where `old` stands now.
    void willChange(const Descriptor& file, const QByteArray& path, qint64 offset, QByteArrayView old);
    void willCreate(const QByteArray& path);
    void willRemove(const QByteArray& path);

private:
    struct Note;

    bool open(bool create);
    void add(const Note& note, const QByteArray& path, QByteArrayView bytes);
    void putBack();
    /// `madeAnew`: a later note has put the whole file back, so its inode is another one.
    void putBack(const Note& note, const QByteArray& path, const QByteArray& bytes, bool madeAnew);

    QByteArray m_folder;
    RecoveryStore& m_store;
    Descriptor m_file;
    qint64 m_length = 0;
    int m_depth = 0;
    /// By path, from which offset on the old bytes are noted up to the file's end.
    QHash<QByteArray, qint64> m_coveredFrom;
    QByteArrayList m_touched;
};

} // namespace orvantine
