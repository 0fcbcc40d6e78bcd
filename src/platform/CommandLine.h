#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace orvantine {

/// What the command line asks for before there is a window.
enum class LineWish { Start, Help, Version, Play, Pause, Next };

struct LineWord
{
    LineWish wish;
    QString word;
    /// In one line, for the help.
    QString meaning;
};

/// The words that count, the start commands first.
[[nodiscard]] const QList<LineWord>& lineWords();

/// A word counts only if it is the whole command line, letter by letter; everything else starts the program.
[[nodiscard]] LineWish lineWish(const QStringList& arguments);

/// What `--help` prints.
[[nodiscard]] QString helpText();

} // namespace orvantine
