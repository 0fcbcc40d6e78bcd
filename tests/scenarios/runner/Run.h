#pragma once

#include "runner/Script.h"
#include "runner/World.h"

#include <QHash>

#include <functional>

namespace orvantine::scenario {

/// What became of a scenario; `texts` is what is printed.
struct Outcome
{
    bool passed = true;
    QStringList texts;
};

struct RunOptions
{
    /// Prints what each expectation finds, whether it fits or not.
    bool printsAll = false;
};

/// One scenario while it runs. A wrong expectation is noted and the scenario goes on; any other mistake ends it.
class Run
{
public:
    Run(const ScenarioFile& file, const RunOptions& options);

    [[nodiscard]] Outcome scenario(const Scenario& scenario);

    World world;
    fake::FakeDesktop& desktop() { return world.desktop(); }
    Root& root() { return desktop().root(); }

    void execute(const QList<Command>& commands);
    /// Ends the scenario with a mistake at the present line.
    void fail(const QString& text);
    [[nodiscard]] bool failed() const { return m_stopped; }
    /// Compares, prints.
    void compare(const QString& subject, const QStringList& expected, const QStringList& actual);
    void print(const QString& subject, const QStringList& actual);

    // The words of a command; one that cannot be read ends the scenario
    [[nodiscard]] QByteArray bytes(const Command& command, qsizetype word);
    [[nodiscard]] QString text(const Command& command, qsizetype word);
    [[nodiscard]] QByteArray path(const Command& command, qsizetype word);
    [[nodiscard]] int number(const Command& command, qsizetype word);
    [[nodiscard]] qint64 bigNumber(const Command& command, qsizetype word);
    /// One of the choices, by its place; -1 ends the scenario.
    [[nodiscard]] int choice(const Command& command, qsizetype word, const QStringList& choices);
    [[nodiscard]] bool onOff(const Command& command, qsizetype word)
    {
        return choice(command, word, {QStringLiteral("off"), QStringLiteral("on")}) == 1;
    }

    // The program
    /// False ends the scenario: the command needs a program that runs.
    [[nodiscard]] bool needsProgram();
    bool started = false;
    /// Form that names without a form mean: the foremost modal one, else Root.
    [[nodiscard]] Form& currentForm();
    [[nodiscard]] Form* form(const QString& name);
    /// "mnuLaden", "mnuHandling(7)", "Info.BMail"; null ends the scenario. `form` is where it was found.
    [[nodiscard]] Control* control(const QString& name, Form** form = nullptr);
    [[nodiscard]] ListView* list(const QString& name);
    /// The script of a modal form, of the block.
    void runModal(Form& form, const QList<Command>& body);

    /// Lines of the log that an expectation of this kind has not seen yet, from there on.
    QHash<QString, qsizetype> seenCalls;

private:
    void note(const QString& text);

    const ScenarioFile& m_file;
    RunOptions m_options;
    Outcome m_outcome;
    QList<Form*> m_modal;
    int m_line = 0;
    bool m_stopped = false;
};

/// A command by its first word.
struct CommandEntry
{
    QString name;
    /// "folder PATH": shown when the number of words does not fit.
    QString usage;
    /// Words behind the name; no maximum: -1.
    int least = 0;
    int most = 0;
    Body body = Body::None;
    std::function<void(Run&, const Command&)> run;
};

/// Something that can be printed and compared, by the word behind "expect" or "print".
struct SubjectEntry
{
    QString name;
    QString usage;
    /// Words that choose what is meant; -1 for any number.
    int arguments = 0;
    /// Whether the expectation is a block of lines; else the rest of the line.
    bool block = true;
    std::function<QStringList(Run&, const Command&)> lines;
};

[[nodiscard]] QList<CommandEntry> layoutCommands();
[[nodiscard]] QList<CommandEntry> deviceCommands();
[[nodiscard]] QList<CommandEntry> userCommands();
[[nodiscard]] QList<CommandEntry> scriptCommands();
[[nodiscard]] const QList<CommandEntry>& allCommands();
[[nodiscard]] const QList<SubjectEntry>& subjects();

/// What a line's body is, and whether its words fit the command.
[[nodiscard]] Syntax syntaxOf(const QList<Word>& words);

} // namespace orvantine::scenario
