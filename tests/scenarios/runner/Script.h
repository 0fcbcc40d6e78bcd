#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>
#include <optional>

namespace orvantine::scenario {

/// One word of a line: a bare word, "text with escapes" or 'text as it stands'. Placeholders ({data}) are filled in
/// when the line runs.
struct Word
{
    struct Part
    {
        QByteArray bytes;
        bool placeholder = false;
    };
    QList<Part> parts;
    bool quoted = false;

    /// The word without placeholders; only for keywords.
    [[nodiscard]] QString keyword() const;
};

struct RawLine
{
    int number = 0;
    QString text;
};

/// A line of a scenario with what belongs to it up to its "end".
struct Command
{
    int line = 0;
    QList<Word> words;
    QList<Command> body;
    QList<RawLine> text;
};

struct Scenario
{
    QString title;
    int line = 0;
    QList<Command> commands;
};

struct Problem
{
    int line = 0;
    QString text;
};

struct ScenarioFile
{
    QString name;
    /// Run at the start of every scenario of the file.
    QList<Command> common;
    QList<Scenario> scenarios;
    QList<Problem> problems;
};

/// What follows a line up to its "end": nothing, commands, or lines of text.
enum class Body { None, Commands, Text };

/// The kind of body that a line has; an error text where there is no such command.
struct Syntax
{
    Body body = Body::None;
    QString error;
};
using SyntaxOf = std::function<Syntax(const QList<Word>& words)>;

/// Reads a file. Mistakes of form stand in `problems`; the rest of the file is read all the same.
[[nodiscard]] ScenarioFile parse(const QString& name, const QByteArray& bytes, const SyntaxOf& syntaxOf);

/// The words of a line; nothing and an error text where quotes or escapes do not fit.
[[nodiscard]] std::optional<QList<Word>> wordsOf(const QString& line, QString* error);

/// The inside of a text with escapes and placeholders.
[[nodiscard]] std::optional<Word> unescaped(const QString& text, QString* error);

} // namespace orvantine::scenario
