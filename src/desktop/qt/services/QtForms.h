#pragma once

#include "platform/Forms.h"

#include <QPointer>
#include <QWidget>

#include <map>

namespace orvantine {

class FormWindow;

/// Makes a window for a form when it comes up, by the builder of its name, and drops it when the form is unloaded.
class QtForms final : public Forms
{
public:
    QtForms();
    ~QtForms() override;

    /// The window that stands for this form and that the others stand over. Null takes it back.
    void setMainWindow(Form* form, QWidget* window);
    /// Drops every window, without a word to the forms.
    void dropAll();

    void showModal(Form& form) override;
    void show(Form& form) override;
    void unload(Form& form) override;
    void toFront(Form& form) override;

private:
    /// Null for a form that nobody builds.
    FormWindow* load(Form& form);

    Form* m_mainForm = nullptr;
    QWidget* m_mainWindow = nullptr;
    /// A window goes with the one that it stands over.
    std::map<Form*, QPointer<QWidget>> m_windows;
};

} // namespace orvantine
