#pragma once

#include "platform/Controls.h"

namespace orvantine {

enum class WindowState : int { Normal = 0, Minimized = 1, Maximized = 2 };

/// A window: its controls and what becomes of it. Widgets for it live with the desktop and hold no truth.
struct Form
{
    explicit Form(QString formName) : name(std::move(formName)) {}
    virtual ~Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const QString name;
    ControlSet controls;

    QProperty<QString> Caption;
    QProperty<bool> Visible{false};
    QProperty<MousePointer> Pointer{MousePointer::Default};
    QProperty<WindowState> State{WindowState::Normal};
    /// The place and size of the normal window.
    QProperty<Twips> Left{0}, Top{0}, Width{0}, Height{0};
    QString Tag;

    /// Runs when the form comes up, before it is seen.
    std::function<void()> Load;
    /// Runs when the form goes, by whatever way.
    std::function<void()> Unload;
    /// The key's code (13 Enter, 27 Esc, 112 F1); pressed anywhere in the form.
    std::function<void(int)> KeyDown;
};

} // namespace orvantine
