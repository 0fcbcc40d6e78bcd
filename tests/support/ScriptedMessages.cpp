#include "support/ScriptedMessages.h"

#include <algorithm>
#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// The buttons of a box, the refusing one last.
std::vector<Answer> buttonsOf(MessageButtons buttons)
{
    switch (buttons) {
    case MessageButtons::Ok:
        return {Answer::Ok};
    case MessageButtons::OkCancel:
        return {Answer::Ok, Answer::Cancel};
    case MessageButtons::AbortRetryIgnore:
        return {Answer::Retry, Answer::Ignore, Answer::Abort};
    case MessageButtons::YesNoCancel:
        return {Answer::Yes, Answer::No, Answer::Cancel};
    case MessageButtons::YesNo:
        return {Answer::Yes, Answer::No};
    case MessageButtons::RetryCancel:
        return {Answer::Retry, Answer::Cancel};
    }
    return {Answer::Ok};
}

} // namespace

Answer refusing(MessageButtons buttons)
{
    return buttonsOf(buttons).back();
}

bool offers(MessageButtons buttons, Answer answer)
{
    const std::vector<Answer> all = buttonsOf(buttons);
    return std::find(all.begin(), all.end(), answer) != all.end();
}

QString nameOf(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::None:
        return u"none"_s;
    case MessageIcon::Critical:
        return u"critical"_s;
    case MessageIcon::Question:
        return u"question"_s;
    case MessageIcon::Exclamation:
        return u"exclamation"_s;
    case MessageIcon::Information:
        return u"information"_s;
    }
    return u"?"_s;
}

QString nameOf(MessageButtons buttons)
{
    switch (buttons) {
    case MessageButtons::Ok:
        return u"ok"_s;
    case MessageButtons::OkCancel:
        return u"ok-cancel"_s;
    case MessageButtons::AbortRetryIgnore:
        return u"abort-retry-ignore"_s;
    case MessageButtons::YesNoCancel:
        return u"yes-no-cancel"_s;
    case MessageButtons::YesNo:
        return u"yes-no"_s;
    case MessageButtons::RetryCancel:
        return u"retry-cancel"_s;
    }
    return u"?"_s;
}

QString nameOf(Answer answer)
{
    switch (answer) {
    case Answer::Ok:
        return u"ok"_s;
    case Answer::Cancel:
        return u"cancel"_s;
    case Answer::Abort:
        return u"abort"_s;
    case Answer::Retry:
        return u"retry"_s;
    case Answer::Ignore:
        return u"ignore"_s;
    case Answer::Yes:
        return u"yes"_s;
    case Answer::No:
        return u"no"_s;
    }
    return u"?"_s;
}

ScriptedMessages::ScriptedMessages(CallLog& log, Complaints& complaints) : m_log(log), m_complaints(complaints) {}

void ScriptedMessages::check(const ScriptedAnswer& script, const QString& title, const QString& text)
{
    if (script.title && *script.title != title)
        m_complaints.add(
            u"a box with the title %1 came up, %2 was scripted"_s.arg(quoted(title), quoted(*script.title)));
    if (script.text && *script.text != text)
        m_complaints.add(u"a box with the text %1 came up, %2 was scripted"_s.arg(quoted(text), quoted(*script.text)));
}

std::optional<ScriptedAnswer> ScriptedMessages::next(const ShownMessage& message)
{
    std::optional<ScriptedAnswer> script = queue.pop();
    return script || !Unscripted ? script : Unscripted(message);
}

Answer ScriptedMessages::show(const QString& text, const QString& title, MessageIcon icon, MessageButtons buttons)
{
    m_log.call(u"messages.show %1 %2"_s.arg(quoted(title), quoted(text)));
    ShownMessage message{false, text, title, icon, buttons, refusing(buttons), {}, {}};
    const std::optional<ScriptedAnswer> script = next(message);
    if (!script) {
        m_complaints.add(u"a box came up that nobody scripted: title %1, text %2, icon %3, buttons %4"_s.arg(
            quoted(title), quoted(text), nameOf(icon), nameOf(buttons)));
    } else if (script->entered) {
        m_complaints.add(u"a text was scripted for an input box, but a message came up: title %1, text %2"_s.arg(
            quoted(title), quoted(text)));
    } else {
        check(*script, title, text);
        if (offers(buttons, script->answer))
            message.answer = script->answer;
        else
            m_complaints.add(u"the box %1 has no button %2"_s.arg(quoted(text), nameOf(script->answer)));
        if (script->meanwhile)
            script->meanwhile();
    }
    m_shown.push_back(message);
    return message.answer;
}

QString ScriptedMessages::input(const QString& prompt, const QString& title, const QString& defaultText)
{
    m_log.call(u"messages.input %1 %2"_s.arg(quoted(title), quoted(prompt)));
    ShownMessage message;
    message.input = true;
    message.text = prompt;
    message.title = title;
    message.defaultText = defaultText;
    const std::optional<ScriptedAnswer> script = next(message);
    if (!script) {
        m_complaints.add(u"an input box came up that nobody scripted: title %1, text %2, default %3"_s.arg(
            quoted(title), quoted(prompt), quoted(defaultText)));
    } else if (!script->entered) {
        m_complaints.add(
            u"a button was scripted, but an input box came up: title %1, text %2"_s.arg(quoted(title), quoted(prompt)));
    } else {
        check(*script, title, prompt);
        message.entered = *script->entered;
        if (script->meanwhile)
            script->meanwhile();
    }
    m_shown.push_back(message);
    return message.entered;
}

void ScriptedMessages::beep()
{
    m_log.call(u"messages.beep"_s);
}

std::vector<ShownMessage> ScriptedMessages::take()
{
    return std::exchange(m_shown, {});
}

void ScriptedMessages::complainOfUnused()
{
    for (const ScriptedAnswer& script : queue.waiting())
        m_complaints.add(script.entered ? u"no input box asked for the text %1"_s.arg(quoted(*script.entered))
                                        : u"no box asked for the answer %1"_s.arg(nameOf(script.answer)));
    queue.clear();
}

} // namespace orvantine::fake
