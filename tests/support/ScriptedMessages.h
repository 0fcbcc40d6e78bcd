#pragma once

#include "platform/Messages.h"
#include "support/CallLog.h"
#include "support/Complaints.h"
#include "support/ScriptQueue.h"

#include <functional>
#include <vector>

namespace orvantine::fake {

/// A box that came up.
struct ShownMessage
{
    bool input = false;
    QString text;
    QString title;
    MessageIcon icon = MessageIcon::None;
    MessageButtons buttons = MessageButtons::Ok;
    Answer answer = Answer::Ok;
    /// Of an input box.
    QString defaultText;
    QString entered;
};

/// The answer to the box that comes next; what is given of title and text must be what the box shows.
struct ScriptedAnswer
{
    Answer answer = Answer::Ok;
    std::optional<QString> entered;
    std::optional<QString> title;
    std::optional<QString> text;
    /// What happens while the box is up.
    std::function<void()> meanwhile;
};

/// Answers boxes in the order of the script. A box that nobody scripted is a complaint; it gets the refusing button.
class ScriptedMessages final : public Messages
{
public:
    ScriptedMessages(CallLog& log, Complaints& complaints);

    Answer show(const QString& text, const QString& title, MessageIcon icon, MessageButtons buttons) override;
    QString input(const QString& prompt, const QString& title, const QString& defaultText = {}) override;
    /// Stands in the log.
    void beep() override;

    void script(ScriptedAnswer answer) { queue.push(std::move(answer)); }
    void answer(Answer answer) { script({answer, {}, {}, {}, {}}); }
    void answer(Answer answer, const QString& title, const QString& text) { script({answer, {}, title, text, {}}); }
    /// Text for an input box; "" is its Cancel.
    void enter(const QString& text) { script({Answer::Ok, text, {}, {}, {}}); }

    [[nodiscard]] const std::vector<ShownMessage>& shown() const { return m_shown; }
    std::vector<ShownMessage> take();
    /// Complains of answers that no box asked for.
    void complainOfUnused();

    ScriptQueue<ScriptedAnswer> queue;
    /// Answers the boxes that no script waits for, in the place of a complaint.
    std::function<ScriptedAnswer(const ShownMessage& message)> Unscripted;

private:
    std::optional<ScriptedAnswer> next(const ShownMessage& message);
    void check(const ScriptedAnswer& script, const QString& title, const QString& text);

    CallLog& m_log;
    Complaints& m_complaints;
    std::vector<ShownMessage> m_shown;
};

[[nodiscard]] QString nameOf(MessageIcon icon);
[[nodiscard]] QString nameOf(MessageButtons buttons);
[[nodiscard]] QString nameOf(Answer answer);
/// The button that closing the box counts as.
[[nodiscard]] Answer refusing(MessageButtons buttons);
[[nodiscard]] bool offers(MessageButtons buttons, Answer answer);

} // namespace orvantine::fake
