#include "search/FolderReplacement.h"

#include "platform/CaseFold.h"
#include "platform/CodePage.h"

#include <algorithm>
#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype MostGrowth = qsizetype{32} << 20;
const QByteArray ByteOrderMark = QByteArrayLiteral("\xEF\xBB\xBF");

qsizetype startOfTail(QByteArrayView bytes)
{
    constexpr int TailCharacters = 2;
    constexpr int MostContinuations = 3;
    qsizetype start = bytes.size();
    for (int i = 0; i < TailCharacters && start > 0; ++i) {
        --start;
        for (int c = 0; c < MostContinuations && start > 0 && (static_cast<uchar>(bytes[start]) & 0xC0U) == 0x80U; ++c)
            --start;
    }
    return start;
}

bool breaksLines(const QString& text)
{
    return text.contains(u'\r') || text.contains(u'\n');
}

/// Encoding what it reads as gives these very bytes again.
bool isUtf8(const QByteArray& bytes)
{
    return CodePage().encode(CodePage().decode(bytes)) == bytes;
}

std::vector<QByteArrayView> linesOf(QByteArrayView bytes)
{
    std::vector<QByteArrayView> lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' && bytes[i] != '\n')
            continue;
        lines.push_back(bytes.sliced(start, i + 1 - start));
        start = i + 1;
    }
    if (start < bytes.size())
        lines.push_back(bytes.sliced(start));
    return lines;
}

/// The bytes of a changed part: in the code page that it has, if it then reads as the text.
QByteArray encoded(const QString& text, const QByteArray& before)
{
    if (!isUtf8(before)) {
        QByteArray old = CodePage::toWindows1252(text);
        if (CodePage().decode(old) == text)
            return old;
    }
    return CodePage().encode(text);
}

} // namespace

TextReplacement::TextReplacement(const QString& text, const QString& old, const QString& fresh)
    : m_text(text), m_old(folded(old)), m_fresh(fresh), m_most(text.size() + MostGrowth)
{
    std::reverse(m_fresh.begin(), m_fresh.end());
    m_borders.assign(static_cast<std::size_t>(m_old.size()) + 1, 0);
    for (qsizetype length = 1; length < m_old.size(); ++length)
        m_borders[static_cast<std::size_t>(length) + 1] =
            stateAfter(m_borders[static_cast<std::size_t>(length)], m_old[length]);
    m_out.reserve(text.size());
}

qsizetype TextReplacement::stateAfter(qsizetype state, QChar unit) const
{
    const QChar wanted(foldedUnit(unit.unicode()));
    while (state > 0 && m_old[state] != wanted)
        state = m_borders[static_cast<std::size_t>(state)];
    return m_old[state] == wanted ? state + 1 : 0;
}

bool TextReplacement::next()
{
    if (m_old.isEmpty())
        return false;
    if (isBeyondMeasure())
        return true;
    while (!m_pending.isEmpty() || m_read < m_text.size()) {
        QChar unit;
        if (m_pending.isEmpty()) {
            unit = m_text[m_read++];
        } else {
            unit = m_pending.back();
            m_pending.chop(1);
        }
        m_out += unit;
        m_state = stateAfter(m_state, unit);
        if (m_state == m_old.size()) {
            replaceMatch();
            return true;
        }
    }
    return false;
}

void TextReplacement::replaceMatch()
{
    m_out.chop(m_old.size());
    m_pending += m_fresh;
    ++m_count;
    // No match reaches further back.
    m_state = 0;
    for (qsizetype i = std::max<qsizetype>(0, m_out.size() - m_old.size() + 1); i < m_out.size(); ++i)
        m_state = stateAfter(m_state, m_out[i]);
}

QString TextReplacement::result() const
{
    QString text = m_out;
    text.reserve(m_out.size() + m_pending.size() + m_text.size() - m_read);
    for (qsizetype i = m_pending.size(); i > 0; --i)
        text += m_pending[i - 1];
    text += QStringView(m_text).sliced(m_read);
    return text;
}

FileReplacement::FileReplacement(const QByteArray& bytes, QString old, QString fresh)
    : m_old(std::move(old)), m_fresh(std::move(fresh)), m_bytes(bytes)
{
    const QByteArrayView all(m_bytes);
    const qsizetype start = m_bytes.startsWith(ByteOrderMark) ? ByteOrderMark.size() : 0;
    const qsizetype end = std::max(start, startOfTail(all));
    m_tail = all.sliced(end);
    m_out = all.first(start).toByteArray();
    const QByteArrayView body = all.sliced(start, end - start);
    // No match reaches over a line end that neither text holds.
    if (isUtf8(body.toByteArray()) || breaksLines(m_old) || breaksLines(m_fresh))
        m_parts = {body};
    else
        m_parts = linesOf(body);
}

bool FileReplacement::next()
{
    for (; m_at < m_parts.size(); ++m_at) {
        if (!m_part)
            m_part = std::make_unique<TextReplacement>(CodePage().decode(m_parts[m_at].toByteArray()), m_old, m_fresh);
        if (m_part->next())
            return true;
        endPart();
    }
    return false;
}

void FileReplacement::endPart()
{
    const QByteArray before = m_parts[m_at].toByteArray();
    m_out += m_part->count() > 0 ? encoded(m_part->result(), before) : before;
    m_countBefore += m_part->count();
    m_part.reset();
}

qint64 FileReplacement::count() const
{
    return m_countBefore + (m_part ? m_part->count() : 0);
}

QByteArray FileReplacement::result() const
{
    return m_out + m_tail.toByteArray();
}

} // namespace orvantine
