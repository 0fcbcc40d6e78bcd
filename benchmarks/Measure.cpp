#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>

namespace orvantine::bench {

bool Row::holds() const
{
    return (limitIsRatio ? measured / floor.value_or(measured) : measured) <= limit;
}

double medianMilliseconds(int runs, const std::function<void()>& work, const std::function<void()>& prepare)
{
    using Clock = std::chrono::steady_clock;
    std::vector<double> times;
    for (int run = 0; run <= runs; ++run) {
        prepare();
        const Clock::time_point start = Clock::now();
        work();
        const std::chrono::duration<double, std::milli> time = Clock::now() - start;
        if (run > 0)
            times.push_back(time.count());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void print(const std::vector<Row>& rows)
{
    std::printf("%-62s %10s %10s %7s %12s\n", "", "measured", "floor", "ratio", "limit");
    for (const Row& row : rows) {
        const QByteArray floor = row.floor ? QByteArray::number(*row.floor, 'f', 2) : QByteArray("-");
        const QByteArray ratio = row.floor ? QByteArray::number(row.measured / *row.floor, 'f', 2) : QByteArray("-");
        const QByteArray limit = row.limitIsRatio ? QByteArray::number(row.limit) + " x floor"
                                                  : QByteArray::number(row.limit) + ' ' + row.unit.toUtf8();
        std::printf("%-62s %7.2f %-3s %9s %7s %12s  %s\n", row.name.toUtf8().constData(), row.measured,
                    row.unit.toUtf8().constData(), floor.constData(), ratio.constData(), limit.constData(),
                    row.holds() ? "ok" : "FALLS SHORT");
    }
    std::fflush(stdout);
}

} // namespace orvantine::bench
