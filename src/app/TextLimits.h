#pragma once

#include <QDate>
#include <QString>

namespace orvantine {

/// The first `characters` of a text; a surrogate pair is never cut in two.
[[nodiscard]] QString cutTo(const QString& text, qsizetype characters);

/// Text before the first NUL; the whole text where there is none.
[[nodiscard]] QString cutAtNul(const QString& text);

/// A number with at least `digits` digits: 7 and 3 give "007".
[[nodiscard]] QString padded(int number, int digits);

/// "dd.mm.yyyy"
[[nodiscard]] QString dateText(const QDate& date);

/// The number at the head of a text, 0 where there is none.
[[nodiscard]] double leadingNumber(QStringView text);

/// Control characters as blanks: a name stands in one line, between tabs.
[[nodiscard]] QString withoutControls(QString text);

/// True for a name of nothing but blanks and pairs of quotes: the database gives it back as "", and a row without a
/// name is lost with all its keys at the next load.
[[nodiscard]] bool readsAsEmpty(const QString& name);

} // namespace orvantine
