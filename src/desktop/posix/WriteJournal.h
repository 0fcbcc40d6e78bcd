#pragma once

#include "desktop/posix/Descriptor.h"

#include <QByteArray>

namespace orvantine {

/// What is about to be written in place stands here first. A program that is killed inside a write leaves the journal
/// behind, and the next start completes the write. One file in the recovery folder, held by a lock: a second program
/// beside the first writes without it.
class WriteJournal
{
public:
    /// Completes what a killed program left. `folder` is made at the first write; "" for no journal.
    explicit WriteJournal(QByteArray folder);

    /// From now until `end` the file at `path` is on its way to hold `head` and `rest` at `offset` and to be `newSize`
    /// bytes long.
    void begin(const Descriptor& file, const QByteArray& path, qint64 offset, QByteArrayView head, QByteArrayView rest,
               qint64 newSize);
    void end();

private:
    bool open(bool create);
    void complete();

    QByteArray m_folder;
    Descriptor m_file;
    qint64 m_length = 0;
    bool m_running = false;
};

} // namespace orvantine
