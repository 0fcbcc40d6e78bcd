#include "playlists/PlaylistText.h"

#include "app/TextLimits.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int MostEntries = 32767;
constexpr qsizetype LongestLine = 256;

} // namespace

int countEntries(QStringView text)
{
    int count = 0;
    qsizetype start = 0;
    for (qsizetype end = text.indexOf(u'\n'); end >= 0 && count < MostEntries; end = text.indexOf(u'\n', start)) {
        qsizetype first = start;
        while (first < end && text[first] == u'\r')
            ++first;
        if (first == end || text[first] != u'#')
            ++count;
        start = end + 1;
    }
    return count;
}

qsizetype entryLines(QStringView text)
{
    qsizetype count = 0;
    bool lineBegins = true;
    for (const QChar c : text) {
        const bool ends = c == u'\r' || c == u'\n';
        if (lineBegins && !ends && c != u'#')
            ++count;
        lineBegins = ends;
    }
    return count;
}

bool breaksLine(const QString& path)
{
    return path.contains(u'\r') || path.contains(u'\n');
}

QString normalisedEntries(QStringView text, const std::function<QString(const QString&)>& shorten)
{
    QString out;
    out.reserve(text.size());
    qsizetype start = 0;
    for (qsizetype end = text.indexOf(u'\r'); end >= 0; end = text.indexOf(u'\r', start)) {
        // A line cannot begin with CR or LF: the one ends it, the other is dropped.
        while (start < end && text[start] == u'\n')
            ++start;
        if (start < end && text[start] != u'#')
            out += shorten(text.mid(start, end - start).toString().remove(u'\n')) + u"\r\n"_s;
        start = end + 1;
    }
    return out;
}

QString linesForField(QStringView text, int count)
{
    QString marked = text.toString();
    int left = count;
    for (QChar& c : marked) {
        if (left == 0)
            break;
        if (c == u'\n') {
            c = u'|';
            --left;
        }
    }

    QString field;
    field.reserve(marked.size() + count);
    left = count;
    for (const QChar c : marked) {
        // Required: a "|" of a path counts as well.
        if (c == u'|' && left > 0) {
            field += u"\r\n"_s;
            --left;
        } else {
            field += c;
        }
    }
    if (field.endsWith(u"mp"_s))
        field += u'3';
    return field;
}

QString entriesOfNml(const QString& text)
{
    constexpr int MostImported = 99;
    constexpr qsizetype Head = 15; // LOCATION FILE="
    constexpr qsizetype Tail = 4;  // "/> and CR
    const QString folderMark = u" PATH="_s;

    QString rest = text;
    QString result;
    for (int i = 1; i <= MostImported; ++i) {
        const qsizetype found = rest.indexOf(u"LOCATION FILE"_s);
        if (found < 0)
            break;
        rest = rest.mid(found);
        const qsizetype lineEnd = rest.indexOf(u'\r');
        if (lineEnd < 0)
            break;
        QString line = rest.left(lineEnd + 1).mid(Head);
        line.chop(Tail);
        const qsizetype mark = line.indexOf(folderMark);
        const QString joined = line.mid(mark + 1 + folderMark.size()) + line.left(mark + 1);
        result += u"\r\n"_s + joined.section(u'"', 0, 0);
        // Required: the place found in the whole text is counted again, so that entries within the skip are lost.
        rest = rest.mid(found + 1 + Head);
    }
    return result.mid(1);
}

bool showsAll(const TextLines& lines, int count, QStringView entries)
{
    int next = 0;
    const auto nextLine = [&] {
        QString line;
        while (next < count && line.isEmpty())
            line = lines.GetTextZeile(next++);
        return line;
    };
    qsizetype start = 0;
    for (qsizetype end = entries.indexOf(u"\r\n"); end >= 0; end = entries.indexOf(u"\r\n", start)) {
        if (nextLine() != cutTo(entries.mid(start, end - start).toString(), LongestLine))
            return false;
        start = end + 2;
    }
    return nextLine().isEmpty();
}

TextLines::TextLines(const QString& text) : m_text(text)
{
    m_starts.push_back(0);
    for (qsizetype end = m_text.indexOf(u"\r\n"_s); end >= 0; end = m_text.indexOf(u"\r\n"_s, end + 2))
        m_starts.push_back(end + 2);
}

QString TextLines::GetTextZeile(int line) const
{
    if (line < 0 || line >= static_cast<int>(m_starts.size()))
        return {};
    const auto index = static_cast<std::size_t>(line);
    const qsizetype start = m_starts[index];
    qsizetype end = index + 1 < m_starts.size() ? m_starts[index + 1] - 2 : m_text.size();
    const bool closed = index + 1 < m_starts.size();
    if (closed && end > start && m_text.at(end - 1) == u'\r')
        --end;
    return cutTo(m_text.mid(start, end - start), LongestLine);
}

} // namespace orvantine
