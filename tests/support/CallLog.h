#pragma once

#include "support/Quoting.h"

#include <QStringList>

namespace orvantine::fake {

/// Every call to a fake passes here: it is written down, and the n-th call of the run can be made to fail.
class CallLog
{
public:
    /// Writes the call down; false if this one is to fail.
    bool call(const QString& line);
    /// 1-based, counted from the start of the run; 0 for none.
    void failCall(int number) { m_failing = number; }
    /// The n-th call from now on whose line begins with `start` fails. Several may be waiting.
    void failNext(const QString& start, int number = 1);
    [[nodiscard]] int calls() const { return m_calls; }
    [[nodiscard]] const QStringList& lines() const { return m_lines; }
    /// Lines that begin with one of the words.
    [[nodiscard]] QStringList linesOf(const QStringList& starts) const;
    /// Gives the lines since the last take.
    QStringList take();

private:
    struct Fault
    {
        QString start;
        int remaining = 1;
    };

    QStringList m_lines;
    QList<Fault> m_faults;
    int m_calls = 0;
    int m_failing = 0;
};

} // namespace orvantine::fake
