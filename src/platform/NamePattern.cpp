#include "platform/NamePattern.h"

#include "platform/CaseFold.h"

#include <QList>

#include <algorithm>

namespace orvantine {

bool isPattern(QStringView name)
{
    return name.contains(u'*') || name.contains(u'?');
}

bool matchesPattern(QStringView name, QStringView pattern)
{
    if (pattern == QStringView(u"*.*"))
        return true;
    qsizetype n = 0;
    qsizetype p = 0;
    qsizetype star = -1;
    qsizetype resume = 0;
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            resume = n;
        } else if (p < pattern.size() &&
                   (pattern[p] == u'?' || foldedUnit(pattern[p].unicode()) == foldedUnit(name[n].unicode()))) {
            ++p;
            ++n;
        } else if (star >= 0) {
            p = star + 1;
            n = ++resume;
        } else {
            return false;
        }
    }
    while (p < pattern.size() && pattern[p] == u'*')
        ++p;
    return p == pattern.size();
}

bool matchesAnyPattern(QStringView name, QStringView patterns)
{
    const auto list = patterns.split(u';', Qt::SkipEmptyParts);
    return std::any_of(list.begin(), list.end(),
                       [name](QStringView pattern) { return matchesPattern(name, pattern.trimmed()); });
}

} // namespace orvantine
