#pragma once

#include <QString>
#include <QStringView>

#include <functional>
#include <vector>

namespace orvantine {

/// Counts the lines of a playlist that are closed by LF and do not begin with "#"; CR is dropped, empty lines count.
/// Saturates at 32767.
[[nodiscard]] int countEntries(QStringView text);

/// True if the text holds more entries than the count can tell.
[[nodiscard]] bool exceedsCount(QStringView text);

/// The entries of a line-based playlist, each with CR LF: LF is dropped wherever it stands, CR closes a line, empty
/// lines and comments go. `shorten` gives the text that stands for an entry.
[[nodiscard]] QString normalisedEntries(QStringView text, const std::function<QString(const QString&)>& shorten);

/// What the hidden text field shows of a normalised file: the first `count` LF become "|", then the first `count` "|"
/// CR LF. An end cut to "mp" gets its "3" back.
[[nodiscard]] QString linesForField(QStringView text, int count);

/// Folder and name of the tracks of an NML list, each entry led by CR LF less the very first CR. 99 at the most.
[[nodiscard]] QString entriesOfNml(const QString& text);

/// A text field as an array of lines. CR LF and CR CR LF end one.
class TextLines
{
public:
    explicit TextLines(const QString& text);

    /// 0-based; at most 256 characters, "" beyond the end.
    [[nodiscard]] QString line(int number) const;

private:
    QString m_text;
    std::vector<qsizetype> m_starts;
};

/// Line of a text field by its 0-based number.
[[nodiscard]] QString GetTextZeile(const QString& text, int line);

} // namespace orvantine
