#include "runner/Run.h"

#include "shell/Menus.h"
#include "shell/Shutdown.h"

#include <algorithm>

namespace orvantine::scenario {

using namespace Qt::StringLiterals;

namespace {

void start(Run& run, const Command& command)
{
    QStringList arguments;
    for (qsizetype i = 1; i < command.words.size(); ++i)
        arguments += run.text(command, i);
    if (run.failed())
        return;
    if (run.started) {
        if (!run.desktop().events().ended())
            return run.fail(u"the program still runs: end it, or \"kill\" it"_s);
        run.desktop().newProcess();
    }
    run.started = true;
    run.desktop().start(arguments.join(u' '));
}

void kill(Run& run, const Command&)
{
    if (!run.needsProgram())
        return;
    run.desktop().newProcess();
    run.started = false;
}

void closeWindow(Run& run, const Command& command)
{
    if (!run.needsProgram())
        return;
    if (command.words.size() > 1) {
        Form* form = run.form(run.text(command, 1));
        if (form == nullptr)
            return;
        if (!form->Visible.value())
            return run.fail(u"the form %1 is not open"_s.arg(form->name));
        if (form != &run.root())
            return run.desktop().forms().unload(*form);
    }
    Form_QueryUnload(run.root());
}

/// Why a user could not reach the control at present; empty if he can.
QString obstacle(Run& run, Form& form, Control& control)
{
    if (!form.Visible.value())
        return u"the form %1 is not open"_s.arg(form.name);
    if (&form != &run.currentForm() && &run.currentForm() != &run.root())
        return u"the form %1 is open above it"_s.arg(run.currentForm().name);
    if (!control.Visible.value())
        return u"%1 is hidden"_s.arg(control.fullName());
    if (!control.Enabled.value())
        return u"%1 is disabled"_s.arg(control.fullName());
    auto* item = dynamic_cast<MenuItem*>(&control);
    if (item == nullptr)
        return {};
    if (!item->available())
        return u"%1 has no handler"_s.arg(control.fullName());
    std::vector<MenuItem*> above;
    for (const MenuEntry& entry : menuBar(run.root())) {
        above.resize(std::min(above.size(), static_cast<std::size_t>(entry.level)));
        if (entry.item == item)
            break;
        above.push_back(entry.item);
        if (entry.item == menuBar(run.root()).back().item)
            above.clear();
    }
    for (const MenuItem* menu : above)
        if (!menu->Visible.value() || !menu->Enabled.value())
            return u"the menu %1 above %2 is off"_s.arg(menu->fullName(), control.fullName());
    return {};
}

/// The control that a command names, if a user can reach it.
Control* reachable(Run& run, const Command& command, qsizetype word, bool force = false)
{
    if (!run.needsProgram())
        return nullptr;
    const QString name = run.text(command, word);
    if (run.failed())
        return nullptr;
    Form* form = nullptr;
    Control* control = run.control(name, &form);
    if (control == nullptr || force)
        return control;
    const QString reason = obstacle(run, *form, *control);
    if (reason.isEmpty())
        return control;
    run.fail(reason);
    return nullptr;
}

template <class C>
C* reachableAs(Run& run, const Command& command, qsizetype word, const QString& kind)
{
    Control* control = reachable(run, command, word);
    auto* wanted = dynamic_cast<C*>(control);
    if (control != nullptr && wanted == nullptr)
        run.fail(u"%1 is no %2"_s.arg(control->fullName(), kind));
    return wanted;
}

void call(const std::function<void()>& handler)
{
    if (handler)
        handler();
}

/// The handler that a press runs; null if pressing such a control means nothing.
const std::function<void()>* clickOf(Control& control)
{
    if (auto* item = dynamic_cast<MenuItem*>(&control))
        return &item->Click;
    if (auto* button = dynamic_cast<Button*>(&control))
        return &button->Click;
    if (auto* picture = dynamic_cast<PictureBox*>(&control))
        return &picture->Click;
    if (auto* label = dynamic_cast<Label*>(&control))
        return &label->Click;
    if (auto* box = dynamic_cast<CheckBox*>(&control))
        return &box->Click;
    return nullptr;
}

void pressControl(Run& run, Control& control)
{
    const std::function<void()>* click = clickOf(control);
    if (click == nullptr)
        return run.fail(u"%1 is nothing to press"_s.arg(control.fullName()));
    if (auto* option = dynamic_cast<OptionButton*>(&control))
        option->Value = true;
    else if (auto* box = dynamic_cast<CheckBox*>(&control))
        box->Value = !box->Value.value();
    else if (!*click)
        return run.fail(u"%1 has no handler"_s.arg(control.fullName()));
    call(*click);
}

void press(Run& run, const Command& command)
{
    if (Control* control = reachable(run, command, 1))
        pressControl(run, *control);
}

void force(Run& run, const Command& command)
{
    if (Control* control = reachable(run, command, 1, true))
        pressControl(run, *control);
}

/// The list of a command and its row; 0 where the command names none.
ListView* listAndRow(Run& run, const Command& command, int& row)
{
    auto* list = reachableAs<ListView>(run, command, 1, u"list with rows"_s);
    if (list == nullptr)
        return nullptr;
    row = command.words.size() > 2 ? run.number(command, 2) : 0;
    if (!run.failed() && row != 0 && !list->has(row))
        run.fail(u"%1 has no row %2"_s.arg(list->fullName(), QString::number(row)));
    return run.failed() ? nullptr : list;
}

void select(Run& run, const Command& command)
{
    int row = 0;
    if (ListView* list = listAndRow(run, command, row))
        list->select(row);
}

void clickList(ListView& list, int row)
{
    call(list.GotFocus);
    if (row != 0)
        list.select(row);
    call(list.Click);
}

void click(Run& run, const Command& command)
{
    if (dynamic_cast<ListView*>(run.needsProgram() ? run.control(run.text(command, 1)) : nullptr) == nullptr)
        return run.failed() || command.words.size() > 2 ? run.fail(u"only a list with rows has a row to click"_s)
                                                        : press(run, command);
    int row = 0;
    if (ListView* list = listAndRow(run, command, row))
        clickList(*list, row);
}

void doubleClick(Run& run, const Command& command)
{
    Control* control = reachable(run, command, 1);
    if (control == nullptr)
        return;
    if (auto* list = dynamic_cast<ListView*>(control)) {
        int row = 0;
        if (listAndRow(run, command, row) == nullptr)
            return;
        clickList(*list, row);
        // The first click may have disabled the list or emptied it.
        if (!run.failed() && !run.desktop().events().ended())
            call(list->DblClick);
    } else if (auto* picture = dynamic_cast<PictureBox*>(control)) {
        call(picture->Click);
        call(picture->DblClick);
    } else if (auto* label = dynamic_cast<Label*>(control)) {
        call(label->Click);
        call(label->DblClick);
    } else if (auto* lines = dynamic_cast<ListBox*>(control)) {
        call(lines->DblClick);
    } else {
        run.fail(u"%1 is nothing to double-click"_s.arg(control->fullName()));
    }
}

void columnClick(Run& run, const Command& command)
{
    auto* list = reachableAs<ListView>(run, command, 1, u"list with rows"_s);
    const int column = run.number(command, 2);
    if (list == nullptr || run.failed())
        return;
    if (column < 1 || column > list->columns())
        return run.fail(u"%1 has no column %2"_s.arg(list->fullName(), QString::number(column)));
    if (list->ColumnClick)
        list->ColumnClick(column);
}

void columnWidth(Run& run, const Command& command)
{
    auto* list = reachableAs<ListView>(run, command, 1, u"list with rows"_s);
    const int column = run.number(command, 2);
    const int width = run.number(command, 3);
    if (list == nullptr || run.failed())
        return;
    if (column < 1 || column > list->columns())
        return run.fail(u"%1 has no column %2"_s.arg(list->fullName(), QString::number(column)));
    list->noteColumnWidth(column, width);
}

void focus(Run& run, const Command& command)
{
    Control* control = reachable(run, command, 1);
    if (auto* list = dynamic_cast<ListView*>(control))
        call(list->GotFocus);
    else if (auto* field = dynamic_cast<TextBox*>(control))
        call(field->GotFocus);
    else if (control != nullptr)
        run.fail(u"%1 cannot be given the focus"_s.arg(control->fullName()));
}

/// "STRG+ALT" as a bit set; -1 for a word that is none.
int shiftWord(const QString& word)
{
    int shift = 0;
    for (const QString& part : word.split(u'+')) {
        const qsizetype place = QStringList{u"UMSCHALT"_s, u"STRG"_s, u"ALT"_s}.indexOf(part);
        if (place < 0)
            return -1;
        shift |= 1 << place;
    }
    return shift;
}

void key(Run& run, const Command& command)
{
    if (!run.needsProgram())
        return;
    const bool shifted = command.words.size() > 3;
    const int shift = shifted ? shiftWord(run.text(command, 2)) : 0;
    if (shift < 0)
        return run.fail(u"a shift word is made of UMSCHALT, STRG and ALT with \"+\" in between"_s);
    const int code = run.number(command, shifted ? 3 : 2);
    if (run.failed())
        return;
    const QString name = run.text(command, 1);
    for (Form* form : formsOf(run.root())) {
        if (form == nullptr || form->name != name || run.root().controls.find(name) != nullptr)
            continue;
        if (!form->Visible.value())
            return run.fail(u"the form %1 is not open"_s.arg(name));
        if (!form->KeyDown)
            return run.fail(u"the form %1 takes no keys"_s.arg(name));
        return form->KeyDown(code);
    }
    auto* list = reachableAs<ListView>(run, command, 1, u"list with rows or form"_s);
    if (list == nullptr)
        return;
    call(list->GotFocus);
    if (list->KeyDown)
        list->KeyDown(shift, code);
    else
        run.fail(u"%1 takes no keys"_s.arg(name));
}

void mousePress(Run& run, const Command& command)
{
    const int button = run.choice(command, 1, {u"left"_s, u"right"_s});
    auto* picture = reachableAs<PictureBox>(run, command, 2, u"picture"_s);
    if (picture == nullptr || run.failed())
        return;
    if (!picture->MouseDown)
        return run.fail(u"%1 takes no mouse press"_s.arg(picture->fullName()));
    picture->MouseDown(button == 0 ? MouseButton::Left : MouseButton::Right);
}

void drop(Run& run, const Command& command)
{
    auto* list = reachableAs<ListView>(run, command, 1, u"list with rows"_s);
    QStringList paths;
    for (qsizetype i = 2; i < command.words.size(); ++i)
        paths += run.text(command, i);
    if (list == nullptr || run.failed())
        return;
    if (!list->Drop)
        return run.fail(u"nothing can be dropped on %1"_s.arg(list->fullName()));
    list->Drop(paths);
}

void fill(Run& run, const Command& command)
{
    Control* control = reachable(run, command, 1);
    const QString text = run.text(command, 2);
    if (control == nullptr || run.failed())
        return;
    if (auto* field = dynamic_cast<TextBox*>(control)) {
        call(field->GotFocus);
        field->Text = text;
        call(field->Change);
    } else if (auto* combo = dynamic_cast<ComboBox*>(control)) {
        combo->Text = text;
        call(combo->Change);
    } else if (auto* tree = dynamic_cast<FolderTree*>(control)) {
        tree->SelectedFolder = text;
        call(tree->Change);
    } else {
        run.fail(u"%1 is no field to fill"_s.arg(control->fullName()));
    }
}

void type(Run& run, const Command& command)
{
    auto* field = reachableAs<TextBox>(run, command, 1, u"text field"_s);
    const QString text = run.text(command, 2);
    if (field == nullptr || run.failed())
        return;
    call(field->GotFocus);
    for (const QChar unit : text) {
        const int code = field->KeyPress ? field->KeyPress(unit.unicode()) : unit.unicode();
        if (code == 0)
            continue;
        field->Text = field->Text.value() + QChar(static_cast<char16_t>(code));
        call(field->Change);
    }
}

void leave(Run& run, const Command& command)
{
    auto* field = reachableAs<TextBox>(run, command, 1, u"text field"_s);
    if (field != nullptr && field->Validate)
        field->Validate();
}

void check(Run& run, const Command& command)
{
    auto* box = reachableAs<CheckBox>(run, command, 1, u"check box or option"_s);
    const bool on = run.onOff(command, 2);
    if (box == nullptr || run.failed() || box->Value.value() == on)
        return;
    box->Value = on;
    call(box->Click);
}

/// The 0-based line that a word names by its 1-based number or by its text.
int lineOf(Run& run, const ListBox& box, const Command& command, qsizetype word)
{
    const QStringList lines = box.List.value();
    const bool byText = command.words[word].quoted;
    const qsizetype line = byText ? lines.indexOf(run.text(command, word)) : run.number(command, word) - 1;
    if (!run.failed() && (line < 0 || line >= lines.size()))
        run.fail(u"%1 has no line %2"_s.arg(box.fullName(), rendered(command.words[word])));
    return static_cast<int>(line);
}

void pick(Run& run, const Command& command)
{
    auto* box = reachableAs<ListBox>(run, command, 1, u"list of lines"_s);
    if (box == nullptr)
        return;
    const int line = lineOf(run, *box, command, 2);
    if (run.failed())
        return;
    box->ListIndex = line;
    if (auto* combo = dynamic_cast<ComboBox*>(box))
        combo->Text = combo->List.value().at(line);
    call(box->Click);
}

void drag(Run& run, const Command& command)
{
    auto* box = reachableAs<DragListBox>(run, command, 1, u"list of lines that can be drawn"_s);
    if (box == nullptr)
        return;
    const int from = lineOf(run, *box, command, 2);
    const int to = lineOf(run, *box, command, 3);
    if (!run.failed())
        box->move(from, to);
}

void tick(Run& run, const Command& command)
{
    auto* box = reachableAs<ListBox>(run, command, 1, u"list of lines"_s);
    const bool on = run.onOff(command, 3);
    if (box == nullptr || run.failed())
        return;
    const int line = lineOf(run, *box, command, 2);
    if (run.failed())
        return;
    QList<bool> marks = box->Checked.value();
    marks.resize(box->List.value().size());
    marks[line] = on;
    box->Checked = marks;
}

void slide(Run& run, const Command& command)
{
    auto* slider = reachableAs<Slider>(run, command, 1, u"slider"_s);
    const int value = run.number(command, 2);
    if (slider == nullptr || run.failed())
        return;
    if (value < slider->Min.value() || value > slider->Max.value())
        return run.fail(u"%1 runs from %2 to %3"_s.arg(slider->fullName(), QString::number(slider->Min.value()),
                                                       QString::number(slider->Max.value())));
    call(slider->MouseDown);
    slider->Value = value;
    call(slider->Scroll);
    call(slider->Click);
}

void window(Run& run, const Command& command)
{
    const int what =
        run.choice(command, 1, {u"minimize"_s, u"maximize"_s, u"restore"_s, u"size"_s, u"move"_s, u"activate"_s});
    if (run.failed() || !run.needsProgram())
        return;
    if (command.words.size() != (what == 3 || what == 4 ? 4 : 2))
        return run.fail(u"the form is: window minimize|maximize|restore|activate or window size|move TWIPS TWIPS"_s);
    Root& root = run.root();
    if (what < 3) {
        root.State = what == 0 ? WindowState::Minimized : what == 1 ? WindowState::Maximized : WindowState::Normal;
    } else if (what == 3) {
        root.Width = run.number(command, 2);
        root.Height = run.number(command, 3);
    } else if (what == 4) {
        root.Left = run.number(command, 2);
        root.Top = run.number(command, 3);
    } else {
        run.desktop().instance.Activated();
    }
}

} // namespace

QList<CommandEntry> userCommands()
{
    return {
        {u"start"_s, u"start [ARGUMENT …]"_s, 0, -1, Body::None, start},
        {u"kill"_s, u"kill"_s, 0, 0, Body::None, kill},
        {u"close"_s, u"close [FORM]"_s, 0, 1, Body::None, closeWindow},
        {u"press"_s, u"press CONTROL"_s, 1, 1, Body::None, press},
        {u"force"_s, u"force CONTROL"_s, 1, 1, Body::None, force},
        {u"select"_s, u"select LIST ROW"_s, 2, 2, Body::None, select},
        {u"click"_s, u"click LIST [ROW] or click CONTROL"_s, 1, 2, Body::None, click},
        {u"dblclick"_s, u"dblclick LIST [ROW] or dblclick CONTROL"_s, 1, 2, Body::None, doubleClick},
        {u"columnclick"_s, u"columnclick LIST COLUMN"_s, 2, 2, Body::None, columnClick},
        {u"columnwidth"_s, u"columnwidth LIST COLUMN TWIPS"_s, 3, 3, Body::None, columnWidth},
        {u"focus"_s, u"focus CONTROL"_s, 1, 1, Body::None, focus},
        {u"key"_s, u"key LIST|FORM [SHIFT] CODE"_s, 2, 3, Body::None, key},
        {u"mouse"_s, u"mouse left|right PICTURE"_s, 2, 2, Body::None, mousePress},
        {u"drop"_s, u"drop LIST PATH …"_s, 2, -1, Body::None, drop},
        {u"fill"_s, u"fill FIELD \"TEXT\""_s, 2, 2, Body::None, fill},
        {u"type"_s, u"type FIELD \"TEXT\""_s, 2, 2, Body::None, type},
        {u"leave"_s, u"leave FIELD"_s, 1, 1, Body::None, leave},
        {u"check"_s, u"check BOX on|off"_s, 2, 2, Body::None, check},
        {u"pick"_s, u"pick LISTBOX NUMBER|\"LINE\""_s, 2, 2, Body::None, pick},
        {u"drag"_s, u"drag LISTBOX LINE PLACE"_s, 3, 3, Body::None, drag},
        {u"tick"_s, u"tick LISTBOX NUMBER|\"LINE\" on|off"_s, 3, 3, Body::None, tick},
        {u"slide"_s, u"slide SLIDER VALUE"_s, 2, 2, Body::None, slide},
        {u"window"_s, u"window minimize|maximize|restore|activate or window size|move TWIPS TWIPS"_s, 1, 3, Body::None,
         window},
    };
}

} // namespace orvantine::scenario
