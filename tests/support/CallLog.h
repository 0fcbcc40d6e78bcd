#pragma once

#include <QStringList>

namespace orvantine::fake {

/// Every call to a fake passes here: it is written down, and the n-th call of the run can be made to fail.
class CallLog
{
public:
    /// Writes the call down; false if this one is to fail.
    bool call(const QString& line);
    /// 1-based; 0 for none.
    void failCall(int number) { m_failing = number; }
    [[nodiscard]] int calls() const { return m_calls; }
    [[nodiscard]] const QStringList& lines() const { return m_lines; }
    /// Gives the lines since the last take.
    QStringList take();

private:
    QStringList m_lines;
    int m_calls = 0;
    int m_failing = 0;
};

} // namespace orvantine::fake
