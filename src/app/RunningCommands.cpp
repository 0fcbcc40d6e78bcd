#include "app/RunningCommands.h"

#include <algorithm>

namespace orvantine {

namespace {

bool overlap(Changes one, Changes other)
{
    return (static_cast<unsigned>(one) & static_cast<unsigned>(other)) != 0;
}

} // namespace

bool RunningCommands::admits(Changes wanted) const
{
    return std::none_of(m_running.begin(), m_running.end(), [this, wanted](const Running& command) {
        return command.depth < m_depth && overlap(command.changes, wanted);
    });
}

} // namespace orvantine
