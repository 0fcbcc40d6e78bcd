#pragma once

#include <QString>
#include <QStringView>

#include <functional>
#include <vector>

namespace orvantine {

/// Counts the lines of a playlist that are closed by LF and do not begin with "#"; CR is dropped, empty lines count.
/// Saturates at 32767.
[[nodiscard]] int countEntries(QStringView text);

/// Lines of a playlist file that name something, however they are closed: what a write over the file would lose.
[[nodiscard]] qsizetype entryLines(QStringView text);

/// True for a path that is no entry: a playlist holds a path in a line, and the next read would split it.
[[nodiscard]] bool breaksLine(const QString& path);

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
    [[nodiscard]] QString GetTextZeile(int line) const;

private:
    QString m_text;
    std::vector<qsizetype> m_starts;
};

/// True if the first `count` lines, as a text field gives them and less the empty ones, are the entries and there are
/// no more. An entry that is longer than a line of the field counts as shown.
[[nodiscard]] bool showsAll(const TextLines& lines, int count, QStringView entries);

} // namespace orvantine
