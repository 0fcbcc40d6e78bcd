#include "desktop/qt/forms/FormWindow.h"

#include "desktop/qt/widgets/FolderTreeView.h"
#include "desktop/qt/widgets/Keys.h"
#include "desktop/qt/widgets/SortList.h"
#include "desktop/qt/widgets/Theme.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QCompleter>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int FormMargin = 16;
constexpr int RowGap = 10;

void call(const std::function<void()>& handler)
{
    if (handler)
        handler();
}

/// Lines of a list box, with boxes before them where the control keeps marks.
void showLines(QListWidget& widget, ListBox& control)
{
    const QSignalBlocker quiet(widget);
    const QStringList& lines = control.List.value();
    const QList<bool>& marks = control.Checked.value();
    while (widget.count() > lines.size())
        delete widget.takeItem(widget.count() - 1);
    for (int row = 0; row < lines.size(); ++row) {
        if (row == widget.count())
            widget.addItem(QString());
        widget.item(row)->setText(lines[row]);
        if (row < marks.size())
            widget.item(row)->setCheckState(marks[row] ? Qt::Checked : Qt::Unchecked);
    }
    widget.setCurrentRow(control.ListIndex.value());
}

/// A title of two lines, as the tips have one.
QString inOneLine(const QString& caption)
{
    const QString second = caption.section(u'\r', 1);
    return second.isEmpty() ? caption.section(u'\r', 0, 0) : caption.section(u'\r', 0, 0) + u" – "_s + second;
}

bool isTypedWithAltAlone(const QKeyEvent& event)
{
    return event.modifiers().testFlag(Qt::AltModifier) && !event.modifiers().testFlag(Qt::ControlModifier) &&
           !event.text().isEmpty() && event.text().front().isPrint();
}

} // namespace

FormWindow::FormWindow(Form& form, Forms& forms, QWidget* parent) : QDialog(parent), m_form(form), m_forms(forms)
{
    setObjectName(form.name);
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(FormMargin, FormMargin, FormMargin, FormMargin);
    layout->setSpacing(FormMargin);
    m_content = new QVBoxLayout;
    m_content->setSpacing(RowGap);
    m_buttons = new QHBoxLayout;
    m_buttons->setSpacing(RowGap);
    layout->addLayout(m_content, 1);
    layout->addLayout(m_buttons);

    m_bindings.follow(form.Caption, [this](const QString& caption) { setWindowTitle(inOneLine(caption)); });
    m_bindings.follow(form.Pointer, [this](MousePointer pointer) {
        setCursor(pointer == MousePointer::Default     ? Qt::ArrowCursor
                  : pointer == MousePointer::Hourglass ? Qt::WaitCursor
                                                       : Qt::BusyCursor);
    });
    m_bindings.watch(form.Visible, [this] { setVisible(m_form.Visible.value()); });
    QApplication::instance()->installEventFilter(this);
}

FormWindow::~FormWindow() = default;

void FormWindow::addButtons(std::initializer_list<QWidget*> left, std::initializer_list<QWidget*> right)
{
    for (QWidget* button : left)
        m_buttons->addWidget(button);
    m_buttons->addStretch();
    for (QWidget* button : right)
        m_buttons->addWidget(button);
}

void FormWindow::follow(Control& control, QWidget* widget)
{
    widget->setObjectName(control.fullName());
    m_bindings.follow(control.Visible, [widget](bool visible) { widget->setVisible(visible); });
    m_bindings.follow(control.Enabled, [widget](bool enabled) { widget->setEnabled(enabled); });
    m_bindings.follow(control.ToolTipText, [widget](const QString& tip) { widget->setToolTip(tip); });
    control.SetFocus = [target = QPointer<QWidget>(widget)] {
        if (target)
            target->setFocus(Qt::OtherFocusReason);
    };
    if (!control.CausesValidation)
        m_unasked.insert(widget);
}

QLabel* FormWindow::addLabel(Label& control)
{
    auto* const label = new QLabel(this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    follow(control, label);
    m_bindings.follow(control.Caption, [label](const QString& caption) { label->setText(caption); });
    m_bindings.follow(control.ForeColor, [label](Color color) {
        label->setPalette(QPalette());
        if (color == Color::ButtonText)
            return;
        QPalette own = label->palette();
        own.setColor(QPalette::WindowText, Theme::textColor(color, own));
        label->setPalette(own);
    });
    return label;
}

QLabel* FormWindow::addLabel(Label& control, QWidget* buddy)
{
    QLabel* const label = addLabel(control);
    label->setWordWrap(false);
    label->setBuddy(buddy);
    return label;
}

QLineEdit* FormWindow::addTextBox(TextBox& control, const QString& accessibleName)
{
    auto* const field = new QLineEdit(this);
    field->setAccessibleName(accessibleName);
    follow(control, field);
    m_bindings.follow(control.Text, [field](const QString& text) {
        if (field->text() != text)
            field->setText(text);
    });
    connect(field, &QLineEdit::textEdited, this, [&control](const QString& text) {
        control.Text = text;
        call(control.Change);
    });
    const auto select = [field, &control] { field->setSelection(control.SelStart, control.SelLength); };
    m_bindings.watch(control.SelStart, select);
    m_bindings.watch(control.SelLength, select);
    control.SendTab = [target = QPointer<QWidget>(field)] {
        if (!target)
            return;
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QApplication::sendEvent(target, &tab);
    };
    m_fields.insert(field, {&control, select});
    return field;
}

QLabel* FormWindow::addRefusal(QLineEdit* field, const QString& text)
{
    auto* const label = new QLabel(text, this);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setVisible(false);
    QPalette own = label->palette();
    own.setColor(QPalette::WindowText, Theme::textColor(Color::DarkRed, own));
    label->setPalette(own);
    connect(field, &QLineEdit::textChanged, label, [label] { label->setVisible(false); });
    m_refusals.insert(field, label);
    return label;
}

QPushButton* FormWindow::addButton(Button& control)
{
    auto* const button = new QPushButton(this);
    follow(control, button);
    m_bindings.follow(control.Caption, [button](const QString& caption) { button->setText(caption); });
    connect(button, &QPushButton::clicked, this, [this, button, &control] {
        // A mnemonic presses the button and leaves the focus where it is.
        if (m_unasked.contains(button) || leaveUnchecked())
            call(control.Click);
    });
    return button;
}

QCheckBox* FormWindow::addCheckBox(CheckBox& control)
{
    auto* const box = new QCheckBox(this);
    follow(control, box);
    m_bindings.follow(control.Caption, [box](const QString& caption) { box->setText(caption.trimmed()); });
    m_bindings.follow(control.Value, [box](bool on) { box->setChecked(on); });
    connect(box, &QCheckBox::clicked, this, [&control](bool on) {
        control.Value = on;
        call(control.Click);
    });
    return box;
}

QRadioButton* FormWindow::addOption(OptionButton& control, QWidget* parent)
{
    auto* const option = new QRadioButton(parent);
    follow(control, option);
    m_bindings.follow(control.Caption, [option](const QString& caption) { option->setText(caption.trimmed()); });
    m_bindings.follow(control.Value, [option](bool on) { option->setChecked(on); });
    connect(option, &QRadioButton::toggled, this, [&control](bool on) { control.Value = on; });
    connect(option, &QRadioButton::clicked, this, [&control] { call(control.Click); });
    return option;
}

QComboBox* FormWindow::addComboBox(ComboBox& control, const QString& accessibleName, bool textEntry)
{
    auto* const box = new QComboBox(this);
    box->setAccessibleName(accessibleName);
    box->setEditable(textEntry);
    box->setInsertPolicy(QComboBox::NoInsert);
    if (textEntry)
        // What is typed is searched for as it stands.
        box->setCompleter(nullptr);
    follow(control, box);
    const auto showText = [box, &control, textEntry] {
        const QSignalBlocker quiet(box);
        if (textEntry && box->currentText() != control.Text.value())
            box->setEditText(control.Text);
    };
    const auto show = [box, &control, showText] {
        const QSignalBlocker quiet(box);
        box->clear();
        box->addItems(control.List);
        box->setCurrentIndex(control.ListIndex);
        showText();
    };
    show();
    m_bindings.watch(control.List, show);
    m_bindings.watch(control.ListIndex, [box, &control, showText] {
        const QSignalBlocker quiet(box);
        box->setCurrentIndex(control.ListIndex);
        showText();
    });
    m_bindings.watch(control.Text, showText);
    connect(box, &QComboBox::activated, this, [&control](int line) {
        control.ListIndex = line;
        control.Text = control.List.value().value(line);
        call(control.Click);
    });
    if (textEntry)
        connect(box->lineEdit(), &QLineEdit::textEdited, this, [&control](const QString& text) {
            control.Text = text;
            call(control.Change);
        });
    return box;
}

QLabel* FormWindow::addStatus(Label& control)
{
    QLabel* const label = addLabel(control);
    m_bindings.watch(control.Caption, [label] {
        if (label->text().isEmpty() || !label->isVisible())
            return;
        QAccessibleEvent told(label, QAccessible::Alert);
        QAccessible::updateAccessibility(&told);
    });
    return label;
}

QListWidget* FormWindow::addListBox(ListBox& control, const QString& accessibleName)
{
    auto* const list = new QListWidget(this);
    followLines(control, list, accessibleName);
    return list;
}

SortList* FormWindow::addSortList(DragListBox& control, const QString& accessibleName)
{
    auto* const list = new SortList(this);
    list->Moved = [&control](int from, int to) { control.move(from, to); };
    followLines(control, list, accessibleName);
    return list;
}

void FormWindow::followLines(ListBox& control, QListWidget* list, const QString& accessibleName)
{
    list->setAccessibleName(accessibleName);
    list->setUniformItemSizes(true);
    follow(control, list);
    showLines(*list, control);
    m_bindings.watch(control.List, [list, &control] { showLines(*list, control); });
    m_bindings.watch(control.Checked, [list, &control] { showLines(*list, control); });
    m_bindings.watch(control.ListIndex, [list, &control] {
        const QSignalBlocker quiet(list);
        list->setCurrentRow(control.ListIndex.value());
    });
    connect(list, &QListWidget::currentRowChanged, this, [&control](int row) {
        if (row == control.ListIndex.value())
            return;
        control.ListIndex = row;
        call(control.Click);
    });
    connect(list, &QListWidget::itemChanged, this, [list, &control](QListWidgetItem* item) {
        QList<bool> marks = control.Checked.value();
        const int row = list->row(item);
        if (row < 0 || row >= marks.size())
            return;
        marks[row] = item->checkState() == Qt::Checked;
        control.Checked = marks;
        control.ListIndex = row;
        call(control.Click);
    });
    connect(list, &QListWidget::itemDoubleClicked, this, [&control] { call(control.DblClick); });
}

FolderTreeView* FormWindow::addFolderTree(FolderTree& control)
{
    auto* const tree = new FolderTreeView(control, this);
    follow(control, tree);
    return tree;
}

void FormWindow::addControl(Control& control, QWidget* widget, const QString& accessibleName)
{
    widget->setAccessibleName(accessibleName);
    follow(control, widget);
}

void FormWindow::reject()
{
    if (m_cancel != nullptr && m_cancel->isEnabled())
        m_cancel->click();
    else if (m_cancel == nullptr || m_noCancel == NoCancel::Goes)
        m_forms.unload(m_form);
}

void FormWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    reject();
}

bool FormWindow::eventFilter(QObject* watched, QEvent* event)
{
    // A key that nobody takes travels up from the widget with the focus: the form hears of it once.
    if (event->type() == QEvent::KeyPress && isActiveWindow() && m_form.KeyDown &&
        watched == (focusWidget() != nullptr ? focusWidget() : this)) {
        if (const int code = keyCodeOf(*static_cast<QKeyEvent*>(event)); code != 0)
            m_form.KeyDown(code);
    }
    if (event->type() == QEvent::FocusOut && watched->isWidgetType() &&
        isAncestorOf(static_cast<const QWidget*>(watched)) && keepsFocus())
        return true;
    // A mnemonic that no control has is no letter.
    if (event->type() == QEvent::KeyPress && qobject_cast<QLineEdit*>(watched) != nullptr &&
        isAncestorOf(static_cast<const QWidget*>(watched)) && isTypedWithAltAlone(*static_cast<QKeyEvent*>(event)))
        return true;
    if (const auto field = m_fields.constFind(watched); field != m_fields.cend()) {
        if (event->type() == QEvent::FocusIn && static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason)
            enter(watched, *field);
        if (event->type() == QEvent::KeyPress && filterKey(watched, *field, *static_cast<QKeyEvent*>(event)))
            return true;
        if (event->type() == QEvent::InputMethod &&
            filterText(watched, *field, static_cast<QInputMethodEvent*>(event)->commitString()))
            return true;
    }
    return QDialog::eventFilter(watched, event);
}

bool FormWindow::leaveUnchecked()
{
    QLineEdit* const field = m_unchecked;
    if (field == nullptr)
        return true;
    QLabel* const refusal = m_refusals.value(field);
    if (m_fields.value(field).control->Validate()) {
        field->setFocus(Qt::OtherFocusReason);
        if (refusal != nullptr)
            refusal->setVisible(true);
        return false;
    }
    if (refusal != nullptr)
        refusal->setVisible(false);
    // A button's mnemonic leaves the focus in the field, which can still be changed.
    if (QApplication::focusWidget() != field)
        m_unchecked = nullptr;
    return true;
}

bool FormWindow::keepsFocus()
{
    const QWidget* const next = QApplication::focusWidget();
    // A form that goes takes its focus along unasked, and so does another window.
    if (!m_form.Visible.value() || next == nullptr || next == m_unchecked || !isAncestorOf(next) ||
        m_unasked.contains(next))
        return false;
    return !leaveUnchecked();
}

void FormWindow::enter(QObject* widget, const Field& field)
{
    if (field.control->Validate)
        m_unchecked = static_cast<QLineEdit*>(widget);
    call(field.control->GotFocus);
    // Behind what the widget itself selects when it gets the focus.
    if (field.control->GotFocus)
        QTimer::singleShot(0, widget, field.select);
}

bool FormWindow::filterKey(QObject* widget, const Field& field, const QKeyEvent& event)
{
    if (!field.control->KeyPress)
        return false;
    const int code = characterCodeOf(event);
    if (code == 0)
        return false;
    if (code < u' ')
        return field.control->KeyPress(code) == 0;
    return filterText(widget, field, event.text());
}

bool FormWindow::filterText(QObject* widget, const Field& field, const QString& text)
{
    if (!field.control->KeyPress || text.isEmpty())
        return false;
    QString typed;
    for (const QChar unit : text)
        if (const int code = field.control->KeyPress(unit.unicode()); code != 0)
            typed += QChar(static_cast<char16_t>(code));
    if (typed == text)
        return false;
    auto* const edit = static_cast<QLineEdit*>(widget);
    if (!typed.isEmpty()) {
        edit->insert(typed);
        Q_EMIT edit->textEdited(edit->text());
    }
    return true;
}

} // namespace orvantine
