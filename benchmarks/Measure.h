#pragma once

#include <QString>

#include <functional>
#include <optional>
#include <vector>

namespace orvantine::bench {

/// One target. The limit is either a ratio to a floor that was measured in the same run, or an absolute figure.
struct Row
{
    QString name;
    QString unit;
    double measured = 0;
    std::optional<double> floor;
    double limit = 0;
    bool limitIsRatio = false;

    [[nodiscard]] bool holds() const;
};

/// Median wall time of `runs` runs in milliseconds, after one that does not count. `prepare` is not measured.
[[nodiscard]] double medianMilliseconds(
    int runs, const std::function<void()>& work, const std::function<void()>& prepare = [] {});

void print(const std::vector<Row>& rows);

/// Rows in the order in which they are printed.
[[nodiscard]] std::vector<Row> catalogueRows();
[[nodiscard]] std::vector<Row> checkRows();
[[nodiscard]] std::vector<Row> searchRows();
[[nodiscard]] std::vector<Row> tagRows();
[[nodiscard]] std::vector<Row> programRows();
[[nodiscard]] std::vector<Row> transferRows();
[[nodiscard]] std::vector<Row> viewRows();

} // namespace orvantine::bench
