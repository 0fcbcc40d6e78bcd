#pragma once

#include <QDirIterator>

#include <functional>

#include <unistd.h>

namespace orvantine::fake {

/// Gives the folder and all below it to a user without rights, where root runs the tests: root may read everything.
[[nodiscard]] inline bool giveToNobody(const QString& folder)
{
    constexpr uid_t Nobody = 65534;
    if (::geteuid() != 0)
        return true;
    bool given = ::chown(folder.toUtf8().constData(), Nobody, Nobody) == 0;
    QDirIterator all(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (all.hasNext())
        given = ::chown(all.next().toUtf8().constData(), Nobody, Nobody) == 0 && given;
    return given;
}

/// Ends the process with 0 if that holds as this user. For a process of its own, as EXPECT_EXIT makes one.
[[noreturn]] inline void exitAsNobody(const std::function<bool()>& holds)
{
    constexpr uid_t Nobody = 65534;
    const bool without = ::geteuid() != 0 || ::setresuid(Nobody, Nobody, Nobody) == 0;
    ::_exit(without && holds() ? 0 : 1);
}

} // namespace orvantine::fake
