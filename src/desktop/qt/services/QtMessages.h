#pragma once

#include "platform/Messages.h"

class QWidget;

namespace orvantine {

/// The window that a box or chooser stands over: the modal one in front, else the active one, else none.
[[nodiscard]] QWidget* frontWindow();

/// Message and input boxes with German buttons. Texts are plain, whatever they look like.
class QtMessages final : public Messages
{
public:
    Answer show(const QString& text, const QString& title, MessageIcon icon, MessageButtons buttons) override;
    QString input(const QString& prompt, const QString& title, const QString& defaultText) override;
    void beep() override;
};

} // namespace orvantine
