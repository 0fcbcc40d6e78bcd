#pragma once

#include "desktop/posix/Descriptor.h"
#include "platform/Instance.h"

#include <memory>

class QLocalServer;

namespace orvantine {

/// A lock file that the kernel frees when its holder dies, and a local socket beside it for the wish to come to the
/// front. Needs an event loop to hear that wish.
class LockInstance : public Instance
{
public:
    /// `runtimeFolder`: the session's own folder; where there is none, or where it is not the user's own, a private
    /// one below `tempFolder` stands in.
    LockInstance(const QString& runtimeFolder, const QString& tempFolder);
    ~LockInstance() override;
    LockInstance(const LockInstance&) = delete;
    LockInstance& operator=(const LockInstance&) = delete;

    /// Also true where no lock can be had at all: a full or unwritable folder keeps nobody from working.
    bool acquire(const QString& title) override;
    bool activateOther() override;

private:
    void listen();

    QString m_folder;
    QString m_name;
    Descriptor m_lock;
    std::unique_ptr<QLocalServer> m_server;
};

} // namespace orvantine
