#pragma once

#include <QString>

namespace orvantine {

enum class MessageIcon : int { None = 0, Critical = 16, Question = 32, Exclamation = 48, Information = 64 };

enum class MessageButtons : int {
    Ok = 0,
    OkCancel = 1,
    AbortRetryIgnore = 2,
    YesNoCancel = 3,
    YesNo = 4,
    RetryCancel = 5
};

enum class Answer : int { Ok = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };

struct Message
{
    /// Line feeds break lines.
    QString text;
    QString title;
    MessageIcon icon = MessageIcon::None;
    MessageButtons buttons = MessageButtons::Ok;
};

/// Modal boxes. Line feeds in a text break lines.
class Messages
{
public:
    virtual ~Messages() = default;

    /// Closing the box counts as its Cancel, or as its only or refusing button.
    virtual Answer show(const QString& text, const QString& title, MessageIcon icon, MessageButtons buttons) = 0;
    /// The text entered; "" on Cancel.
    virtual QString input(const QString& prompt, const QString& title, const QString& defaultText = {}) = 0;
    /// The short sound of a key that is refused.
    virtual void beep() = 0;
};

} // namespace orvantine
