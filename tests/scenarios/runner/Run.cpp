#include "runner/Run.h"

#include "playlists/PlaylistText.h"
#include "runner/Diff.h"

#include <QRegularExpression>

#include <algorithm>

namespace orvantine::scenario {

using namespace Qt::StringLiterals;

namespace {

const CommandEntry* commandNamed(const QString& name)
{
    const QList<CommandEntry>& all = allCommands();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const CommandEntry& entry) { return entry.name == name; });
    return found == all.end() ? nullptr : &*found;
}

const SubjectEntry* subjectNamed(const QString& name)
{
    const QList<SubjectEntry>& all = subjects();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const SubjectEntry& entry) { return entry.name == name; });
    return found == all.end() ? nullptr : &*found;
}

/// "tDatum.Caption" is a subject of its own; every other one is a bare word of the table.
const SubjectEntry* subjectOf(const Word& word)
{
    const SubjectEntry* named = subjectNamed(word.keyword());
    return named == nullptr && word.keyword().contains(u'.') ? subjectNamed(u"CONTROL.PROPERTY"_s) : named;
}

/// A line in the one form that lines are compared in, whichever quotes it was written with.
QString normalized(const QString& line)
{
    QString ignored;
    const std::optional<QList<Word>> words = wordsOf(line, &ignored);
    if (!words)
        return line;
    QStringList parts;
    for (const Word& word : *words)
        parts += rendered(word);
    return parts.join(u' ');
}

/// The expected lines of a block: blank lines and comments do not count.
QStringList expectedLines(const QList<RawLine>& text)
{
    QStringList lines;
    for (const RawLine& line : text)
        if (!line.text.isEmpty() && !line.text.startsWith(u'#'))
            lines += normalized(line.text);
    return lines;
}

void runExpect(Run& run, const Command& command)
{
    const SubjectEntry* subject = subjectOf(command.words[1]);
    const QStringList actual = subject->lines(run, command);
    if (run.failed())
        return;
    QStringList shown;
    for (const QString& line : actual)
        shown += normalized(run.world.shown(line));
    QStringList title;
    QStringList value;
    for (qsizetype i = 1; i < command.words.size(); ++i)
        (subject->block || i < 2 + subject->arguments ? title : value) += rendered(command.words[i]);
    run.compare(title.join(u' '), subject->block ? expectedLines(command.text) : QStringList{value.join(u' ')}, shown);
}

void runPrint(Run& run, const Command& command)
{
    const QStringList actual = subjectOf(command.words[1])->lines(run, command);
    if (run.failed())
        return;
    QStringList title;
    for (qsizetype i = 1; i < command.words.size(); ++i)
        title += rendered(command.words[i]);
    QStringList shown;
    for (const QString& line : actual)
        shown += run.world.shown(line);
    run.print(title.join(u' '), shown);
}

/// Looks without comparing: what a later look shows begins here.
void runForget(Run& run, const Command& command)
{
    (void)subjectOf(command.words[1])->lines(run, command);
}

bool choosesTheMachine(const Command& command)
{
    return QStringList{u"codepage"_s, u"adopt"_s, u"drive"_s}.contains(command.words[0].keyword());
}

QString misuse(const QString& usage)
{
    return u"the form is: "_s + usage;
}

Syntax syntaxOfSubject(const QList<Word>& words, bool expects)
{
    if (words.size() < 2)
        return {Body::None, misuse(words[0].keyword() + u" SUBJECT …"_s)};
    const SubjectEntry* subject = subjectOf(words[1]);
    if (subject == nullptr)
        return {Body::None, u"there is nothing called \"%1\" to expect or print"_s.arg(words[1].keyword())};
    const qsizetype given = words.size() - 2;
    const bool fits = subject->arguments < 0       ? true
                      : subject->block || !expects ? given == subject->arguments
                                                   : given > subject->arguments;
    if (!fits)
        return {Body::None, misuse(words[0].keyword() + u' ' + subject->usage)};
    return {expects && subject->block ? Body::Text : Body::None, {}};
}

} // namespace

const QList<CommandEntry>& allCommands()
{
    static const QList<CommandEntry> all =
        QList<CommandEntry>{{u"expect"_s, u"expect SUBJECT …"_s, 1, -1, Body::None, runExpect},
                            {u"print"_s, u"print SUBJECT …"_s, 1, -1, Body::None, runPrint},
                            {u"forget"_s, u"forget SUBJECT …"_s, 1, -1, Body::None, runForget}} +
        layoutCommands() + deviceCommands() + userCommands() + scriptCommands();
    return all;
}

Syntax syntaxOf(const QList<Word>& words)
{
    const QString name = words.isEmpty() || words[0].quoted ? QString() : words[0].keyword();
    const CommandEntry* command = commandNamed(name);
    if (command == nullptr)
        return {Body::None, u"there is no command \"%1\""_s.arg(name)};
    if (name == u"expect"_s || name == u"print"_s || name == u"forget"_s)
        return syntaxOfSubject(words, name == u"expect"_s);
    const qsizetype given = words.size() - 1;
    if (given < command->least || (command->most >= 0 && given > command->most))
        return {Body::None, misuse(command->usage)};
    if (name == u"file"_s)
        return {given > 1 && !words[2].quoted && words[2].keyword() == u"lines"_s ? Body::Text : Body::None, {}};
    return {command->body, {}};
}

Run::Run(const ScenarioFile& file, const RunOptions& options) : m_file(file), m_options(options)
{
    world.Made = [this](fake::FakeDesktop& made) {
        made.complaints.Report = [this](const QString& text) { note(text); };
    };
}

void Run::note(const QString& text)
{
    m_outcome.passed = false;
    const QString shown = world.made() ? world.shown(text) : text;
    m_outcome.texts += u"%1:%2: %3"_s.arg(m_file.name, QString::number(m_line), shown);
}

void Run::fail(const QString& text)
{
    if (m_stopped)
        return;
    m_stopped = true;
    note(text);
}

void Run::compare(const QString& subject, const QStringList& expected, const QStringList& actual)
{
    if (expected != actual) {
        note(u"%1 is not as expected (- expected, + found)"_s.arg(subject));
        for (const QString& line : difference(expected, actual))
            m_outcome.texts += u"    "_s + line;
    }
    if (m_options.printsAll)
        print(subject, actual);
}

void Run::print(const QString& subject, const QStringList& actual)
{
    m_outcome.texts += u"%1:%2: %3"_s.arg(m_file.name, QString::number(m_line), subject);
    for (const QString& line : actual)
        m_outcome.texts += u"    "_s + line;
}

Outcome Run::scenario(const Scenario& scenario)
{
    // What the machine is made with comes first, wherever it stands.
    QList<Command> first;
    QList<Command> rest;
    for (const Command& command : m_file.common + scenario.commands)
        (choosesTheMachine(command) ? first : rest) += command;
    execute(first);
    execute(rest);
    if (!m_stopped && world.made())
        desktop().complainOfUnused();
    return m_outcome;
}

void Run::execute(const QList<Command>& commands)
{
    for (const Command& command : commands) {
        if (m_stopped)
            return;
        m_line = command.line;
        commandNamed(command.words[0].keyword())->run(*this, command);
        m_line = command.line;
    }
}

QByteArray Run::bytes(const Command& command, qsizetype word)
{
    QString error;
    const std::optional<QByteArray> expanded = world.expanded(command.words[word], &error);
    if (!expanded)
        fail(error);
    return expanded.value_or(QByteArray());
}

QString Run::text(const Command& command, qsizetype word)
{
    return QString::fromUtf8(bytes(command, word));
}

QByteArray Run::path(const Command& command, qsizetype word)
{
    const QByteArray host = world.hostPath(bytes(command, word));
    if (host.isEmpty())
        fail(u"%1 lies on a drive that is not mapped"_s.arg(rendered(command.words[word])));
    return host;
}

qint64 Run::bigNumber(const Command& command, qsizetype word)
{
    bool isNumber = false;
    const qint64 value = text(command, word).toLongLong(&isNumber);
    if (!isNumber)
        fail(u"%1 is no number"_s.arg(rendered(command.words[word])));
    return value;
}

int Run::number(const Command& command, qsizetype word)
{
    return static_cast<int>(bigNumber(command, word));
}

int Run::choice(const Command& command, qsizetype word, const QStringList& choices)
{
    const auto found = static_cast<int>(choices.indexOf(command.words[word].keyword()));
    if (found < 0)
        fail(u"%1 is not one of: %2"_s.arg(rendered(command.words[word]), choices.join(u", "_s)));
    return found;
}

bool Run::needsProgram()
{
    if (!started)
        fail(u"the program has not been started"_s);
    else if (desktop().events().ended())
        fail(u"the program has ended"_s);
    return !m_stopped;
}

Form& Run::currentForm()
{
    return m_modal.isEmpty() ? static_cast<Form&>(root()) : *m_modal.last();
}

Form* Run::form(const QString& name)
{
    for (Form* modal : m_modal)
        if (modal->name == name)
            return modal;
    for (Form* one : formsOf(root()))
        if (one != nullptr && one->name == name)
            return one;
    fail(u"there is no form \"%1\""_s.arg(name));
    return nullptr;
}

Control* Run::control(const QString& name, Form** where)
{
    static const QRegularExpression pattern(u"^(?:([^.()]+)\\.)?([^.()]+)(?:\\((\\d+)\\))?$"_s);
    const QRegularExpressionMatch match = pattern.match(name);
    if (!match.hasMatch()) {
        fail(u"\"%1\" is no name of a control"_s.arg(name));
        return nullptr;
    }
    Form* in = match.captured(1).isEmpty() ? &currentForm() : form(match.captured(1));
    if (in == nullptr)
        return nullptr;
    const int index = match.captured(3).isEmpty() ? Control::NoIndex : match.captured(3).toInt();
    Control* found = in->controls.find(match.captured(2), index);
    // A name without a form that the foremost form does not have means Root's.
    if (found == nullptr && match.captured(1).isEmpty() && in != &root()) {
        in = &root();
        found = in->controls.find(match.captured(2), index);
    }
    if (found == nullptr)
        fail(u"there is no control \"%1\""_s.arg(name));
    if (where != nullptr)
        *where = in;
    return found;
}

ListView* Run::list(const QString& name)
{
    Control* found = control(name);
    auto* view = dynamic_cast<ListView*>(found);
    if (found != nullptr && view == nullptr)
        fail(u"\"%1\" is no list with rows"_s.arg(name));
    return view;
}

void Run::runModal(Form& form, const QList<Command>& body)
{
    m_modal += &form;
    execute(body);
    m_modal.removeLast();
    // After a mistake the form goes without a further word.
    if (m_stopped)
        desktop().forms().unload(form);
}

} // namespace orvantine::scenario
