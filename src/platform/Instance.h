#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace orvantine {

/// One running program a user, and one a folder of data, by locks that the kernel frees when their holder dies.
class Instance
{
public:
    virtual ~Instance() = default;

    /// True if this process holds the lock now.
    virtual bool acquire(const QString& title) = 0;
    /// True if no other process works on that folder, whatever desktop it runs on.
    virtual bool acquireFolder(const QString& folder) = 0;
    /// Asks the holder of the lock that was not to be had to come to the front, and hands it the files that this
    /// process was started for; false if it does not answer.
    virtual bool activateOther() = 0;
    /// True once the holder that did not answer has ended, so that its lock is to be had; waits a few seconds for that.
    virtual bool awaitEnd() = 0;
    /// A later instance asked this one to come to the front.
    std::function<void()> Activated = [] {};
    /// True if files would be taken now: until then they wait.
    std::function<bool()> TakesFiles = [] { return false; };
    /// Another program of this user hands files, folders and lists over, or this process was started for them.
    std::function<void(const QStringList& paths)> Handed = [](const QStringList&) {};
};

} // namespace orvantine
