#pragma once

#include "platform/Bindings.h"
#include "platform/Forms.h"

#include <QDialog>
#include <QHash>
#include <QPointer>
#include <QSet>

#include <functional>
#include <initializer_list>

class QCheckBox;
class QComboBox;
class QHBoxLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QVBoxLayout;

namespace orvantine {

class SortList;
class FolderTreeView;

/// The window of a form: title, pointer, keys and closing are the form's. A builder fills it with the widgets of the
/// form's controls; each widget carries its control's name, follows it, and hands on what the user does.
///
/// Escape and the window's close button press the cancel button; without one they unload the form. While that button is
/// disabled the form cannot be closed, unless it is one that has nothing to cancel then.
///
/// A field that checks its text is asked before the focus moves on to a control that causes validation, and before such
/// a button is pressed by key or mouse; while it refuses, it keeps the focus and the button does nothing. Another
/// window can always be gone to.
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
    /// What becomes of the form that is closed while its cancel button is disabled.
    enum class NoCancel { Stays, Goes };
    /// The button that Escape presses.
    void setCancel(QPushButton* button, NoCancel disabled = NoCancel::Stays)
    {
        m_cancel = button;
        m_noCancel = disabled;
    }

    // Widgets of controls
    QLabel* addLabel(Label& control);
    /// A label whose mnemonic leads to the widget.
    QLabel* addLabel(Label& control, QWidget* buddy);
    QLineEdit* addTextBox(TextBox& control, const QString& accessibleName);
    /// Says why the field keeps the focus, until another text is typed.
    QLabel* addRefusal(QLineEdit* field, const QString& text);
    QPushButton* addButton(Button& control);
    QCheckBox* addCheckBox(CheckBox& control);
    /// Options in one parent widget uncheck one another.
    QRadioButton* addOption(OptionButton& control, QWidget* parent);
    /// With or without a field for texts that are not in its list.
    QComboBox* addComboBox(ComboBox& control, const QString& accessibleName, bool textEntry);
    /// A label whose changes a screen reader tells.
    QLabel* addStatus(Label& control);
    QListWidget* addListBox(ListBox& control, const QString& accessibleName);
    SortList* addSortList(DragListBox& control, const QString& accessibleName);
    FolderTreeView* addFolderTree(FolderTree& control);
    /// A widget of the caller's own that shows the control.
    void addControl(Control& control, QWidget* widget, const QString& accessibleName);

    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A text field and what it asks of its user.
    struct Field
    {
        TextBox* control = nullptr;
        std::function<void()> select;
    };

    /// Name, visibility, enabling, tip and focus.
    void follow(Control& control, QWidget* widget);
    void followLines(ListBox& control, QListWidget* list, const QString& accessibleName);

    /// True if the focus may leave the field that is still to be checked; otherwise it has the focus again.
    bool leaveUnchecked();
    /// The focus goes from one of the form's widgets; true if it was kept.
    bool keepsFocus();
    void enter(QObject* widget, const Field& field);
    /// True if the field's filter has dealt with the key.
    bool filterKey(QObject* widget, const Field& field, const QKeyEvent& event);
    /// The same for what an input method hands over.
    bool filterText(QObject* widget, const Field& field, const QString& text);

    Form& m_form;
    Forms& m_forms;
    QVBoxLayout* m_content;
    QHBoxLayout* m_buttons;
    QPushButton* m_cancel = nullptr;
    NoCancel m_noCancel = NoCancel::Stays;
    QHash<QObject*, Field> m_fields;
    QHash<QObject*, QLabel*> m_refusals;
    /// Widgets that can be gone to without a check.
    QSet<const QObject*> m_unasked;
    /// The field that had the focus and was not checked since.
    QPointer<QLineEdit> m_unchecked;
    Bindings m_bindings;
};

} // namespace orvantine
