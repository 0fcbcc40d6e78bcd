#pragma once

#include "desktop/posix/Descriptor.h"
#include "platform/Instance.h"

#include <QTimer>

#include <chrono>
#include <memory>

class QLocalServer;
class QLocalSocket;

namespace orvantine {

/// What a process was started for.
struct Errand
{
    /// Files, folders and lists.
    QStringList paths;
    /// The desktop's leave to come to the front; empty for none.
    QByteArray token;
};

/// A lock file, and a lock on the folder of data itself, which the kernel frees when their holder dies; and for each a
/// local socket for the wish to come to the front, and for files. Needs an event loop to hear them. Files that cannot
/// be taken at once wait here until they can.
class LockInstance : public Instance
{
public:
    /// `stateFolder` is made where it is missing. It is no folder of one session, so that all sessions of a user meet
    /// there; where it is not the user's own, a private one below `tempFolder` stands in, in which the sockets of the
    /// folders of data lie too.
    /// `patience`: how long awaitEnd waits.
    LockInstance(const QString& stateFolder, const QString& tempFolder, Errand errand = {},
                 std::chrono::milliseconds patience = std::chrono::seconds{3});
    ~LockInstance() override;
    LockInstance(const LockInstance&) = delete;
    LockInstance& operator=(const LockInstance&) = delete;

    /// Also true where no lock can be had at all: a full or unwritable folder keeps nobody from working.
    bool acquire(const QString& title) override;
    bool acquireFolder(const QString& folder) override;
    bool activateOther() override;
    bool awaitEnd() override;

    /// Later: so many files wait already.
    enum class Handing { Taken, Later, Nobody };
    /// Hands files over to the program that holds the lock of that title.
    Handing hand(const QString& title, const QStringList& paths);

private:
    [[nodiscard]] bool hold(const QString& title);
    [[nodiscard]] std::unique_ptr<QLocalServer> listen(const QString& path);
    void hear(QLocalSocket& socket);
    void hearOffer(QLocalSocket& socket, const QByteArray& heard);
    void comeToFront(const QByteArray& token);
    void offerWaiting();

    QString m_folder;
    /// Holds the sockets of the folders of data; "" where there is none that is private.
    QString m_meeting;
    /// Of the holder of the lock that was asked for last.
    QString m_socket;
    QString m_folderSocket;
    Errand m_errand;
    /// Looks whether `m_errand.paths` can be taken.
    QTimer m_look;
    Descriptor m_lock;
    /// The lock that was not to be had last.
    Descriptor m_other;
    std::chrono::milliseconds m_patience;
    Descriptor m_folderLock;
    std::unique_ptr<QLocalServer> m_server;
    std::unique_ptr<QLocalServer> m_folderServer;
};

} // namespace orvantine
