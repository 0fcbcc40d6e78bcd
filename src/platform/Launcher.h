#pragma once

#include <QString>
#include <QStringList>

namespace orvantine {

enum class LaunchKind { Help, FileManager, Properties, DefaultPlayer, Program, Link };

struct LaunchRequest
{
    LaunchKind kind = LaunchKind::Program;
    /// The whole command line as the logic forms it, kept to be seen: "hh.exe C:\…\Orvantine.chm::/…".
    QString command;
    /// File, folder, program or link that is meant.
    QString target;
    /// Help: the topic. Program: the arguments.
    QStringList arguments;
};

/// Hands files to the outside. Programs are started by absolute path and argument list, never through a shell.
class Launcher
{
public:
    virtual ~Launcher() = default;

    /// False if nothing could be started.
    virtual bool start(const LaunchRequest& request) = 0;
};

} // namespace orvantine
