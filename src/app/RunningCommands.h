#pragma once

#include <QString>

#include <vector>

namespace orvantine {

/// What a command changes as a whole, the routines that it calls included.
enum class Changes : unsigned { Nothing = 0, Tracks = 1, Catalogue = 2, Both = 3 };

/// The commands at work. Events are served in the middle of them, through doors alone (see Command); what is begun
/// inside a door lies one level deeper than what waits there.
class RunningCommands
{
public:
    /// False while a command that changes the same waits further up. What a command calls itself is a part of it.
    [[nodiscard]] bool admits(Changes wanted) const;
    /// Nothing is at work.
    [[nodiscard]] bool idle() const { return m_running.empty(); }
    /// One of them has taken something away and waits (see Command::wait).
    [[nodiscard]] bool waiting() const { return m_waits > 0; }

private:
    friend class Command;

    struct Running
    {
        Changes changes;
        int depth;
        QString name;
        /// It shows a modal form: what the user does there belongs to it.
        bool inForm = false;
    };
    std::vector<Running> m_running;
    /// How many doors stand open.
    int m_depth = 0;
    /// How many waits were entered and not left.
    int m_waits = 0;
};

} // namespace orvantine
