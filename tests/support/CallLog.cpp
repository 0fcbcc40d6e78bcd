#include "support/CallLog.h"

#include <algorithm>
#include <utility>

namespace orvantine::fake {

bool CallLog::call(const QString& line)
{
    m_lines.append(line);
    bool works = ++m_calls != m_failing;
    for (qsizetype i = 0; i < m_faults.size();) {
        Fault& fault = m_faults[i];
        if (line.startsWith(fault.start) && --fault.remaining == 0) {
            works = false;
            m_faults.removeAt(i);
        } else {
            ++i;
        }
    }
    return works;
}

void CallLog::failNext(const QString& start, int number)
{
    m_faults.append({start, number});
}

QStringList CallLog::linesOf(const QStringList& starts) const
{
    QStringList found;
    for (const QString& line : m_lines)
        if (std::any_of(starts.begin(), starts.end(), [&](const QString& start) { return line.startsWith(start); }))
            found += line;
    return found;
}

QStringList CallLog::take()
{
    return std::exchange(m_lines, {});
}

} // namespace orvantine::fake
