#include "app/TextLimits.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

QString cutTo(const QString& text, qsizetype characters)
{
    if (text.size() <= characters)
        return text;
    const bool splitsPair = characters > 0 && text.at(characters - 1).isHighSurrogate();
    return text.left(splitsPair ? characters - 1 : characters);
}

QString cutAtNul(const QString& text)
{
    const qsizetype end = text.indexOf(QChar(u'\0'));
    return end < 0 ? text : text.left(end);
}

QString padded(int number, int digits)
{
    return u"%1"_s.arg(number, digits, 10, QLatin1Char('0'));
}

QString dateText(const QDate& date)
{
    return date.toString(u"dd.MM.yyyy"_s);
}

QString withoutControls(QString text)
{
    std::replace_if(
        text.begin(), text.end(), [](QChar c) { return c.category() == QChar::Other_Control; }, u' ');
    return text;
}

bool readsAsEmpty(const QString& name)
{
    const QString text = withoutControls(name);
    QStringView rest = text;
    for (;;) {
        while (rest.startsWith(u' '))
            rest = rest.sliced(1);
        while (rest.endsWith(u' '))
            rest.chop(1);
        const bool quoted =
            rest.size() >= 2 && rest.front() == rest.back() && (rest.front() == u'"' || rest.front() == u'\'');
        if (!quoted)
            return rest.isEmpty();
        // Each save and load takes one more pair off.
        rest = rest.sliced(1, rest.size() - 2);
    }
}

double leadingNumber(QStringView text)
{
    const QStringView trimmed = text.trimmed();
    qsizetype length = 0;
    bool point = false;
    while (length < trimmed.size()) {
        const char16_t c = trimmed[length].unicode();
        const bool sign = length == 0 && (c == u'-' || c == u'+');
        if (!sign && !(c >= u'0' && c <= u'9') && !(c == u'.' && !point))
            break;
        point = point || c == u'.';
        ++length;
    }
    return trimmed.left(length).toDouble();
}

} // namespace orvantine
