#pragma once

#include "platform/Forms.h"
#include "platform/qt/Bindings.h"

#include <QDialog>
#include <QHash>

#include <functional>
#include <initializer_list>

class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;
class QProgressBar;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace orvantine {

class SortList;

/// The window of a form: title, pointer, keys and closing are the form's. A builder fills it with the widgets of the
/// form's controls; each widget carries its control's name, follows it, and hands on what the user does.
///
/// Escape and the window's close button press the cancel button; without one they unload the form.
class FormWindow final : public QDialog
{
public:
    FormWindow(Form& form, Forms& forms, QWidget* parent);
    ~FormWindow() override;

    [[nodiscard]] Form& form() const { return m_form; }
    [[nodiscard]] Bindings& bindings() { return m_bindings; }
    /// Where the form's content goes, above the buttons.
    [[nodiscard]] QVBoxLayout& content() const { return *m_content; }
    /// The row of buttons at the lower edge: the first few to the left, then after the gap the others.
    void addButtons(std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right);
    /// The button that Escape presses.
    void setCancel(QPushButton* button) { m_cancel = button; }

    // Widgets of controls
    QLabel* addLabel(Label& control);
    /// A label whose mnemonic leads to the widget.
    QLabel* addLabel(Label& control, QWidget* buddy);
    QLineEdit* addTextBox(TextBox& control, const QString& accessibleName);
    QPushButton* addButton(Button& control);
    QCheckBox* addCheckBox(CheckBox& control);
    QRadioButton* addOption(OptionButton& control);
    QListWidget* addListBox(ListBox& control, const QString& accessibleName);
    SortList* addSortList(DragListBox& control, const QString& accessibleName);
    QComboBox* addComboBox(ComboBox& control, const QString& accessibleName);
    QProgressBar* addProgress(ProgressBar& control, const QString& accessibleName);

    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Name, visibility, enabling, tip and focus.
    void follow(Control& control, QWidget* widget);
    void followLines(ListBox& control, QListWidget* list, const QString& accessibleName);

    Form& m_form;
    Forms& m_forms;
    QVBoxLayout* m_content;
    QHBoxLayout* m_buttons;
    QPushButton* m_cancel = nullptr;
    /// What a text field does when it gets the focus.
    QHash<QObject*, std::function<void()>> m_gotFocus;
    Bindings m_bindings;
};

} // namespace orvantine
