#pragma once

#include <QString>

namespace orvantine {

/// One character ignoring case, as file names and profile keys are compared: character by character, so that the
/// length stays ("ß" is not "ss").
[[nodiscard]] inline char16_t foldedUnit(char16_t unit)
{
    if (unit < 0x80)
        return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 0x20) : unit;
    return static_cast<char16_t>(QChar::toCaseFolded(char32_t{unit}));
}

[[nodiscard]] inline QString folded(QStringView text)
{
    QString result(text.size(), Qt::Uninitialized);
    QChar* out = result.data();
    for (const QChar unit : text)
        *out++ = QChar(foldedUnit(unit.unicode()));
    return result;
}

} // namespace orvantine
