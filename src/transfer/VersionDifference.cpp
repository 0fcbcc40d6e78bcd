#include "transfer/VersionDifference.h"

#include <QHash>

#include <algorithm>
#include <vector>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Length of the longest run of rising numbers, each of which occurs once.
qsizetype longestRising(const std::vector<qsizetype>& numbers)
{
    std::vector<qsizetype> ends;
    for (const qsizetype number : numbers) {
        const auto place = std::lower_bound(ends.begin(), ends.end(), number);
        if (place == ends.end())
            ends.push_back(number);
        else
            *place = number;
    }
    return static_cast<qsizetype>(ends.size());
}

} // namespace

VersionDifference versionDifference(const QStringList& now, const QStringList& then)
{
    struct Places
    {
        std::vector<qsizetype> places;
        std::size_t used = 0;
    };
    QHash<QString, Places> rows;
    rows.reserve(now.size());
    for (qsizetype place = 0; place < now.size(); ++place)
        rows[now[place]].places.push_back(place);

    std::vector<qsizetype> staying;
    VersionDifference difference;
    for (const QString& row : then) {
        const auto found = rows.find(row);
        if (found == rows.end() || found->used == found->places.size())
            ++difference.added;
        else
            staying.push_back(found->places[found->used++]);
    }
    const auto stay = static_cast<qsizetype>(staying.size());
    difference.gone = now.size() - stay;
    difference.moved = stay - longestRising(staying);
    return difference;
}

QString differenceText(const VersionDifference& difference)
{
    QStringList parts;
    if (difference.added > 0)
        parts += u"+%1"_s.arg(difference.added);
    if (difference.gone > 0)
        parts += u"−%1"_s.arg(difference.gone);
    QString text = parts.join(u' ');
    if (difference.moved > 0)
        text += (text.isEmpty() ? u"%1 verschoben"_s : u", %1 verschoben"_s).arg(difference.moved);
    return text;
}

} // namespace orvantine
