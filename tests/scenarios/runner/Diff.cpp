#include "runner/Diff.h"

#include <algorithm>
#include <vector>

namespace orvantine::scenario {

using namespace Qt::StringLiterals;

QStringList difference(const QStringList& expected, const QStringList& actual)
{
    const auto rows = static_cast<std::size_t>(expected.size());
    const auto columns = static_cast<std::size_t>(actual.size());
    const auto left = [&](std::size_t i) -> const QString& { return expected[static_cast<qsizetype>(i)]; };
    const auto right = [&](std::size_t i) -> const QString& { return actual[static_cast<qsizetype>(i)]; };

    // Length of the longest common part of what follows each pair of places.
    std::vector<std::vector<int>> common(rows + 1, std::vector<int>(columns + 1, 0));
    for (std::size_t i = rows; i-- > 0;)
        for (std::size_t j = columns; j-- > 0;)
            common[i][j] =
                left(i) == right(j) ? common[i + 1][j + 1] + 1 : std::max(common[i + 1][j], common[i][j + 1]);

    QStringList lines;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < rows || j < columns) {
        if (i < rows && j < columns && left(i) == right(j)) {
            lines += u"  "_s + left(i++);
            ++j;
        } else if (i < rows && (j == columns || common[i + 1][j] >= common[i][j + 1])) {
            lines += u"- "_s + left(i++);
        } else {
            lines += u"+ "_s + right(j++);
        }
    }
    return lines;
}

} // namespace orvantine::scenario
