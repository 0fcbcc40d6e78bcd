#include "support/CallLog.h"

#include <utility>

namespace orvantine::fake {

bool CallLog::call(const QString& line)
{
    m_lines.append(line);
    return ++m_calls != m_failing;
}

QStringList CallLog::take() { return std::exchange(m_lines, {}); }

} // namespace orvantine::fake
