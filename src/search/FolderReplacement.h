#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <memory>
#include <vector>

namespace orvantine {

/// Replaces a text by another one, ignoring case, again and again from the start: what a replacement has put together
/// counts for the next one. The first that is found goes first, so a new text that holds the old one never ends.
///
/// One walk does it: what stands in front of a replacement is settled but for what a match could still begin in.
class TextReplacement
{
public:
    /// An empty `old` stands nowhere.
    TextReplacement(const QString& text, const QString& old, const QString& fresh);

    /// Makes one replacement more; false if there is none left.
    bool next();
    [[nodiscard]] qint64 count() const { return m_count; }
    /// More was put in than any file can take: nothing is added any more, but the end is not reached either.
    [[nodiscard]] bool isBeyondMeasure() const { return m_out.size() + m_pending.size() > m_most; }
    /// The whole text as it stands now.
    [[nodiscard]] QString result() const;

private:
    [[nodiscard]] qsizetype stateAfter(qsizetype state, QChar unit) const;
    void replaceMatch();

    const QString m_text;
    const QString m_old;
    /// Back to front.
    QString m_fresh;
    /// For each length of the beginning of the old text, how much of its end is a beginning too.
    std::vector<qsizetype> m_borders;
    /// What is settled: the old text stands nowhere in it.
    QString m_out;
    /// What was put in and is not read yet, back to front.
    QString m_pending;
    qsizetype m_read = 0;
    /// How much of the old text the settled part ends in.
    qsizetype m_state = 0;
    qsizetype m_most = 0;
    qint64 m_count = 0;
};

/// The same for the bytes of a file. Its last two characters, which are its line end, take no part and stay. Bytes
/// outside a match stay as they are, whatever the file's code page; only a line that cannot hold the new text in its
/// own is written anew.
class FileReplacement
{
public:
    FileReplacement(const QByteArray& bytes, QString old, QString fresh);

    /// As for a text.
    bool next();
    [[nodiscard]] qint64 count() const;
    [[nodiscard]] bool isBeyondMeasure() const { return m_part && m_part->isBeyondMeasure(); }
    /// All bytes, once `next` has told that there is none left.
    [[nodiscard]] QByteArray result() const;

private:
    void endPart();

    const QString m_old;
    const QString m_fresh;
    const QByteArray m_bytes;
    QByteArrayView m_tail;
    /// Lines, or all of it where it is of one code page.
    std::vector<QByteArrayView> m_parts;
    /// The one that comes next, or is at work.
    std::size_t m_at = 0;
    std::unique_ptr<TextReplacement> m_part;
    QByteArray m_out;
    qint64 m_countBefore = 0;
};

} // namespace orvantine
