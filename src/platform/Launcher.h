#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

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

/// A program that was started and is watched. It goes on when this goes.
class RunningProgram
{
public:
    virtual ~RunningProgram() = default;

    /// Nothing while it runs; −1 for one that was killed.
    [[nodiscard]] virtual std::optional<int> exitCode() = 0;
};

/// Hands files to the outside. Programs are started by absolute path and argument list, never through a shell.
class Launcher
{
public:
    virtual ~Launcher() = default;

    /// False if nothing could be started.
    virtual bool start(const LaunchRequest& request) = 0;
    /// Starts a program to be waited for. Null if it could not be started.
    [[nodiscard]] virtual std::unique_ptr<RunningProgram> run(const LaunchRequest& request) = 0;
};

} // namespace orvantine
