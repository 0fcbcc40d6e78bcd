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
    /// Asks the holder of the lock that was not to be had to come to the front; false if it does not answer.
    virtual bool activateOther() = 0;
    /// A later instance asked this one to come to the front.
    std::function<void()> Activated = [] {};
    /// Asked before files are handed over: true if they would be taken now.
    std::function<bool()> TakesFiles = [] { return false; };
    /// Another program of this user hands files, folders and lists over.
    std::function<void(const QStringList& paths)> Handed = [](const QStringList&) {};
};

} // namespace orvantine
