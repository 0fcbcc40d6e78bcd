#include "runner/Run.h"

namespace orvantine::scenario {

using namespace Qt::StringLiterals;

namespace {

/// [title "…"] [text "…"] from a word on.
void takeConditions(Run& run, const Command& command, qsizetype word, fake::ScriptedAnswer& script)
{
    for (; word < command.words.size() && !run.failed(); word += 2) {
        const int what = run.choice(command, word, {u"title"_s, u"text"_s});
        if (run.failed())
            return;
        if (word + 1 == command.words.size())
            return run.fail(u"a text is missing at the end of the line"_s);
        (what == 0 ? script.title : script.text) = run.text(command, word + 1);
    }
}

fake::ScriptedAnswer answerOf(Run& run, const Command& command, qsizetype word)
{
    const int button =
        run.choice(command, word, {u"ok"_s, u"cancel"_s, u"abort"_s, u"retry"_s, u"ignore"_s, u"yes"_s, u"no"_s});
    fake::ScriptedAnswer script;
    script.answer = static_cast<Answer>(button + 1);
    takeConditions(run, command, word + 1, script);
    return script;
}

void answer(Run& run, const Command& command)
{
    const fake::ScriptedAnswer script = answerOf(run, command, 1);
    if (!run.failed())
        run.desktop().messages.script(script);
}

void enter(Run& run, const Command& command)
{
    fake::ScriptedAnswer script;
    script.entered = run.text(command, 1);
    takeConditions(run, command, 2, script);
    if (!run.failed())
        run.desktop().messages.script(script);
}

void choose(Run& run, const Command& command)
{
    const int kind = run.choice(command, 1, {u"open"_s, u"save"_s, u"folder"_s, u"font"_s});
    if (run.failed())
        return;
    fake::ScriptedChoosers& choosers = run.desktop().choosers;
    const bool cancelled = !command.words[2].quoted && command.words[2].keyword() == u"cancel"_s;
    if (command.words.size() != (kind == 3 && !cancelled ? 4 : 3))
        return run.fail(
            u"the form is: choose open|save|folder PATH, choose font \"FAMILY\" SIZE, or cancel in place of it"_s);
    if (cancelled)
        return choosers.cancel(static_cast<fake::ChooserKind>(kind));
    const QString chosen = run.text(command, 2);
    if (run.failed())
        return;
    if (kind == 0)
        choosers.open(chosen);
    else if (kind == 1)
        choosers.save(chosen);
    else if (kind == 2)
        choosers.chooseFolder(chosen);
    else
        choosers.chooseFont({chosen, run.text(command, 3).toDouble()});
}

/// Runs the block in a scope of its own: what it scripts comes before what was scripted earlier.
void runNested(Run& run, const QList<Command>& body)
{
    fake::FakeForms& forms = run.desktop().forms();
    forms.queue.enter();
    forms.Nested(true);
    run.execute(body);
    forms.Nested(false);
    forms.queue.leave();
}

void whileBlock(Run& run, const Command& command)
{
    const int what = run.choice(command, 1, {u"modal"_s, u"box"_s});
    if (run.failed())
        return;
    const QList<Command> body = command.body;
    if (what == 0) {
        if (command.words.size() != 3)
            return run.fail(u"the form is: while modal FORM"_s);
        const QString name = run.text(command, 2);
        run.desktop().forms().whileModal(name, [&run, body](Form& form) { run.runModal(form, body); });
        return;
    }
    fake::ScriptedAnswer script = answerOf(run, command, 2);
    script.meanwhile = [&run, body] { runNested(run, body); };
    if (!run.failed())
        run.desktop().messages.script(script);
}

std::optional<std::chrono::milliseconds> duration(Run& run, const Command& command)
{
    const int value = run.number(command, 1);
    const int unit = command.words.size() > 2 ? run.choice(command, 2, {u"ms"_s, u"s"_s}) : 0;
    if (run.failed())
        return std::nullopt;
    return std::chrono::milliseconds{unit == 1 ? value * 1000 : value};
}

void wait(Run& run, const Command& command)
{
    if (const auto time = duration(run, command))
        run.desktop().events().run(*time);
}

void after(Run& run, const Command& command)
{
    const QList<Command> body = command.body;
    if (const auto time = duration(run, command))
        run.desktop().events().after(*time, [&run, body] { run.execute(body); });
}

} // namespace

QList<CommandEntry> scriptCommands()
{
    return {
        {u"answer"_s, u"answer BUTTON [title \"TEXT\"] [text \"TEXT\"]"_s, 1, 5, Body::None, answer},
        {u"enter"_s, u"enter \"TEXT\" [title \"TEXT\"] [text \"TEXT\"]"_s, 1, 5, Body::None, enter},
        {u"choose"_s, u"choose open|save|folder PATH|cancel, choose font \"FAMILY\" SIZE"_s, 2, 3, Body::None, choose},
        {u"while"_s, u"while modal FORM … end or while box BUTTON … end"_s, 2, 6, Body::Commands, whileBlock},
        {u"wait"_s, u"wait NUMBER [ms|s]"_s, 1, 2, Body::None, wait},
        {u"after"_s, u"after NUMBER [ms|s] … end"_s, 1, 2, Body::Commands, after},
    };
}

} // namespace orvantine::scenario
