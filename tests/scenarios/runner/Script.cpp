#include "runner/Script.h"

namespace orvantine::scenario {

using namespace Qt::StringLiterals;

namespace {

/// Collects the parts of one word.
class WordBuilder
{
public:
    void add(QStringView text) { m_literal += text.toUtf8(); }
    void addByte(char byte) { m_literal += byte; }
    void addPlaceholder(const QString& name)
    {
        flush();
        m_word.parts.append({name.toUtf8(), true});
    }
    Word take(bool quoted)
    {
        flush();
        m_word.quoted = quoted;
        return std::exchange(m_word, {});
    }

private:
    void flush()
    {
        if (!m_literal.isEmpty())
            m_word.parts.append({std::exchange(m_literal, {}), false});
    }

    QByteArray m_literal;
    Word m_word;
};

bool isPlaceholderName(QStringView name)
{
    return !name.isEmpty() &&
           std::all_of(name.begin(), name.end(), [](QChar unit) { return unit >= u'a' && unit <= u'z'; });
}

/// Takes a placeholder that begins at `at` (a "{"); moves behind it.
bool takePlaceholder(QStringView text, qsizetype& at, WordBuilder& word, QString* error)
{
    const qsizetype close = text.indexOf(u'}', at);
    const QStringView name = close < 0 ? QStringView() : text.sliced(at + 1, close - at - 1);
    if (!isPlaceholderName(name)) {
        *error = u"a \"{\" begins a placeholder such as {data}; the character itself is \\{ between double quotes"_s;
        return false;
    }
    word.addPlaceholder(name.toString());
    at = close + 1;
    return true;
}

/// Takes an escape that begins at `at` (a backslash); moves behind it.
bool takeEscape(QStringView text, qsizetype& at, WordBuilder& word, QString* error)
{
    const QChar kind = at + 1 < text.size() ? text[at + 1] : QChar();
    at += 2;
    switch (kind.unicode()) {
    case u'r':
        word.addByte('\r');
        return true;
    case u'n':
        word.addByte('\n');
        return true;
    case u't':
        word.addByte('\t');
        return true;
    case u'\\':
    case u'"':
    case u'{':
        word.add(QString(kind));
        return true;
    case u'x': {
        bool isNumber = false;
        const uint code = text.size() >= at + 2 ? text.sliced(at, 2).toUInt(&isNumber, 16) : 0;
        if (isNumber) {
            word.addByte(static_cast<char>(code));
            at += 2;
            return true;
        }
        break;
    }
    default:
        break;
    }
    *error = u"unknown escape: there are \\r \\n \\t \\\\ \\\" \\{ and \\xHH"_s;
    return false;
}

} // namespace

QString Word::keyword() const
{
    QByteArray all;
    for (const Part& part : parts)
        all += part.placeholder ? '{' + part.bytes + '}' : part.bytes;
    return QString::fromUtf8(all);
}

std::optional<Word> unescaped(const QString& text, QString* error)
{
    WordBuilder word;
    const QStringView view(text);
    for (qsizetype at = 0; at < view.size();) {
        if (view[at] == u'\\') {
            if (!takeEscape(view, at, word, error))
                return std::nullopt;
        } else if (view[at] == u'{') {
            if (!takePlaceholder(view, at, word, error))
                return std::nullopt;
        } else {
            const qsizetype length = view[at].isHighSurrogate() && at + 1 < view.size() ? 2 : 1;
            word.add(view.sliced(at, length));
            at += length;
        }
    }
    return word.take(true);
}

std::optional<QList<Word>> wordsOf(const QString& line, QString* error)
{
    QList<Word> words;
    const QStringView view(line);
    for (qsizetype at = 0; at < view.size();) {
        if (view[at].isSpace()) {
            ++at;
            continue;
        }
        if (view[at] == u'"') {
            qsizetype close = at + 1;
            while (close < view.size() && view[close] != u'"')
                close += view[close] == u'\\' ? 2 : 1;
            if (close >= view.size()) {
                *error = u"a text is not closed by a double quote"_s;
                return std::nullopt;
            }
            const std::optional<Word> word = unescaped(view.sliced(at + 1, close - at - 1).toString(), error);
            if (!word)
                return std::nullopt;
            words += *word;
            at = close + 1;
        } else if (view[at] == u'\'') {
            const qsizetype close = view.indexOf(u'\'', at + 1);
            if (close < 0) {
                *error = u"a text is not closed by a single quote"_s;
                return std::nullopt;
            }
            WordBuilder word;
            word.add(view.sliced(at + 1, close - at - 1));
            words += word.take(true);
            at = close + 1;
        } else {
            WordBuilder word;
            while (at < view.size() && !view[at].isSpace()) {
                if (view[at] == u'{') {
                    if (!takePlaceholder(view, at, word, error))
                        return std::nullopt;
                } else {
                    const qsizetype length = view[at].isHighSurrogate() && at + 1 < view.size() ? 2 : 1;
                    word.add(view.sliced(at, length));
                    at += length;
                }
            }
            words += word.take(false);
            continue;
        }
        if (at < view.size() && !view[at].isSpace()) {
            *error = u"a blank is missing behind a quoted text"_s;
            return std::nullopt;
        }
    }
    return words;
}

namespace {

class Parser
{
public:
    Parser(ScenarioFile& file, const QStringList& lines, const SyntaxOf& syntaxOf)
        : m_file(file), m_lines(lines), m_syntaxOf(syntaxOf)
    {
    }

    void run()
    {
        while (m_at < m_lines.size()) {
            const int number = static_cast<int>(m_at) + 1;
            const QString line = m_lines[m_at++].trimmed();
            if (line.isEmpty() || line.startsWith(u'#'))
                continue;
            if (line == u"common"_s) {
                if (!m_file.scenarios.isEmpty() || !m_file.common.isEmpty())
                    problem(number, u"\"common\" stands once, before the first scenario"_s);
                m_file.common = block(number);
            } else if (line.startsWith(u"scenario "_s)) {
                m_file.scenarios.append({line.mid(9).trimmed(), number, {}});
            } else if (m_file.scenarios.isEmpty()) {
                problem(number, u"a command stands before the first \"scenario TITLE\""_s);
                static_cast<void>(command(line, number));
            } else if (const std::optional<Command> read = command(line, number)) {
                m_file.scenarios.last().commands += *read;
            }
        }
        if (m_file.scenarios.isEmpty())
            problem(1, u"the file holds no scenario"_s);
    }

private:
    void problem(int line, const QString& text) { m_file.problems.append({line, text}); }

    std::optional<Command> command(const QString& line, int number)
    {
        QString error;
        const std::optional<QList<Word>> words = wordsOf(line, &error);
        if (!words) {
            problem(number, error);
            return std::nullopt;
        }
        const Syntax syntax = m_syntaxOf(*words);
        if (!syntax.error.isEmpty()) {
            problem(number, syntax.error);
            return std::nullopt;
        }
        Command read{number, *words, {}, {}};
        if (syntax.body == Body::Commands)
            read.body = block(number);
        else if (syntax.body == Body::Text)
            read.text = text(number);
        return read;
    }

    /// A line that begins a scenario ends every block, so that one forgotten "end" is one problem.
    bool endsBlock(const QString& line, int start)
    {
        if (line.startsWith(u"scenario "_s)) {
            problem(start, u"the block that begins here has no \"end\""_s);
            return true;
        }
        if (line != u"end"_s)
            return false;
        ++m_at;
        return true;
    }

    QList<Command> block(int start)
    {
        QList<Command> commands;
        while (m_at < m_lines.size()) {
            const int number = static_cast<int>(m_at) + 1;
            const QString line = m_lines[m_at].trimmed();
            if (endsBlock(line, start))
                return commands;
            ++m_at;
            if (line.isEmpty() || line.startsWith(u'#'))
                continue;
            if (const std::optional<Command> read = command(line, number))
                commands += *read;
        }
        problem(start, u"the block that begins here has no \"end\""_s);
        return commands;
    }

    QList<RawLine> text(int start)
    {
        QList<RawLine> lines;
        while (m_at < m_lines.size()) {
            const QString line = m_lines[m_at].trimmed();
            if (endsBlock(line, start))
                return lines;
            ++m_at;
            lines.append({static_cast<int>(m_at), line});
        }
        problem(start, u"the block that begins here has no \"end\""_s);
        return lines;
    }

    ScenarioFile& m_file;
    const QStringList& m_lines;
    const SyntaxOf& m_syntaxOf;
    qsizetype m_at = 0;
};

} // namespace

ScenarioFile parse(const QString& name, const QByteArray& bytes, const SyntaxOf& syntaxOf)
{
    ScenarioFile file;
    file.name = name;
    const QStringList lines = QString::fromUtf8(bytes).split(u'\n');
    Parser(file, lines, syntaxOf).run();
    return file;
}

} // namespace orvantine::scenario
