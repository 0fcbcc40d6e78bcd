#pragma once

#include "platform/Twips.h"

#include <QByteArray>
#include <QProperty>
#include <QString>
#include <QStringList>

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <vector>

namespace orvantine {

class ControlSet;

/// Colour as 0xBBGGRR. ButtonText stands for the palette's text colour, whatever theme is on.
enum class Color : quint32 { ButtonText = 0x80000012, DarkRed = 0xC0 };

/// What the mouse pointer shows over the window.
enum class MousePointer : int { Default = 0, Hourglass = 11, ArrowHourglass = 13 };

enum class MouseButton : int { Left = 1, Right = 2 };

/// Plain data that a view can watch: the logic writes, the desktop draws. Every control knows its name (and its
/// index, if it belongs to an array) and stands in the set of its form, so commands can be reached by name.
struct Control
{
    static constexpr int NoIndex = -1;

    Control(ControlSet& owner, QStringView controlName, int controlIndex = NoIndex);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    /// "mnuLaden", or "mnuHandling(7)" for a member of an array.
    [[nodiscard]] QString fullName() const;

    const QString name;
    const int index;
    QProperty<bool> Visible{true};
    QProperty<bool> Enabled{true};
    QString Tag;
    QProperty<QString> ToolTipText;
    /// Twips; a view is free to lay a control out by itself and to leave these alone.
    QProperty<Twips> Left{0}, Top{0}, Width{0}, Height{0};
    /// The view is asked to give the control the focus.
    std::function<void()> SetFocus = [] {};
    /// False for a control that can be gone to, or pressed, while a field still holds a text that it would refuse.
    bool CausesValidation = true;
};

/// The controls of one form in the order of their declaration. Does not own them.
class ControlSet
{
public:
    [[nodiscard]] const std::vector<Control*>& all() const { return m_controls; }

    /// Null where the form has no such control. Members of arrays are found by name and index.
    [[nodiscard]] Control* find(const QString& name, int index = Control::NoIndex) const;

private:
    friend struct Control;
    std::vector<Control*> m_controls;
};

/// The members of a control array under the indexes they are told with: ControlArray<MenuItem, 1, 7>.
template <class C, int First, int Last>
class ControlArray
{
public:
    ControlArray(ControlSet& owner, QStringView name)
    {
        m_members.reserve(Last - First + 1);
        for (int index = First; index <= Last; ++index)
            m_members.push_back(std::make_unique<C>(owner, name, index));
    }

    static constexpr int first = First;
    static constexpr int last = Last;

    [[nodiscard]] C& operator[](int index) { return *m_members.at(static_cast<std::size_t>(index - First)); }
    [[nodiscard]] const C& operator[](int index) const
    {
        return *m_members.at(static_cast<std::size_t>(index - First));
    }

    auto begin() { return m_members.begin(); }
    auto end() { return m_members.end(); }

private:
    std::vector<std::unique_ptr<C>> m_members;
};

/// A command of a menu, a submenu (it has no Click) or a separator (its caption is "-").
struct MenuItem : Control
{
    using Control::Control;

    /// A command without a handler cannot be pressed, whatever Enabled says, nor can a twin of one that is off.
    [[nodiscard]] bool available() const
    {
        return Enabled.value() && Click && (Twin == nullptr || Twin->Enabled.value());
    }
    /// As a user would: false, and nothing happens, where it is not available.
    bool press() const
    {
        if (!available())
            return false;
        Click();
        return true;
    }

    QProperty<QString> Caption;
    QProperty<bool> Checked{false};
    /// Portable text, "Ctrl+N"; empty for none.
    QString Shortcut;
    /// The command of the menu bar that this one stands for; null for none.
    MenuItem* Twin = nullptr;
    std::function<void()> Click;
};

struct Label : Control
{
    using Control::Control;

    QProperty<QString> Caption;
    QProperty<Color> ForeColor{Color::ButtonText};
    std::function<void()> Click;
    std::function<void()> DblClick;
};

/// A text field. The hidden ones serve as named pieces of state.
struct TextBox : Control
{
    using Control::Control;

    QProperty<QString> Text;
    QProperty<int> SelStart{0}, SelLength{0};
    std::function<void()> Change;
    std::function<void()> GotFocus;
    /// Takes the character's code (1 to 26 with the control key, 8 backspace, 13 Enter), gives the code to be typed in
    /// its place, 0 for none.
    std::function<int(int)> KeyPress;
    /// Asked before the focus goes to another control of the form, or a button is pressed; true keeps the focus here.
    std::function<bool()> Validate;
    /// The view is asked to do what the Tab key does in the field.
    std::function<void()> SendTab = [] {};
};

struct Button : Control
{
    using Control::Control;

    QProperty<QString> Caption;
    std::function<void()> Click;
};

/// A picture box, used as a picture, a button or a panel.
struct PictureBox : Control
{
    using Control::Control;

    /// Path of the picture file as the Files service names it; empty for no picture.
    QProperty<QString> Picture;
    QProperty<quint32> BackColor{0};
    /// As a user would: false, and nothing happens, where it is off or has no handler.
    bool press() const
    {
        if (!Enabled.value() || !Click)
            return false;
        Click();
        return true;
    }

    std::function<void()> Click;
    std::function<void()> DblClick;
    std::function<void(MouseButton)> MouseDown;
    /// X in twips, as the notification area's callback gives it.
    std::function<void(int)> MouseMove;
};

struct CheckBox : Control
{
    using Control::Control;

    QProperty<QString> Caption;
    QProperty<bool> Value{false};
    std::function<void()> Click;
};

/// One of the options of a form; the view unchecks the others.
struct OptionButton : CheckBox
{
    using CheckBox::CheckBox;
};

/// A list of lines; ListIndex is 0-based, -1 for none. Checked runs in step with List.
struct ListBox : Control
{
    using Control::Control;

    QProperty<QStringList> List;
    QProperty<int> ListIndex{-1};
    QProperty<QList<bool>> Checked;
    std::function<void()> Click;
    std::function<void()> DblClick;
};

/// A list whose lines can be put into another order.
struct DragListBox : ListBox
{
    using ListBox::ListBox;

    /// Moves a line to another place; those in between close up. The moved line is the selected one. A place that does
    /// not exist changes nothing.
    void move(int from, int to);
};

/// A list of lines with or without text entry.
struct ComboBox : ListBox
{
    using ListBox::ListBox;

    QProperty<QString> Text;
    std::function<void()> Change;
};

struct Slider : Control
{
    using Control::Control;

    QProperty<int> Min{0}, Max{10}, Value{0};
    /// Shown beside the thumb while it is dragged.
    QProperty<QString> Text;
    std::function<void()> Scroll;
    std::function<void()> Click;
    std::function<void()> MouseDown;
    /// What it shows may have been changed elsewhere: asked for before it is moved by a step.
    std::function<void()> Refresh;
};

struct ProgressBar : Control
{
    using Control::Control;

    QProperty<int> Min{0}, Max{100}, Value{0};
};

/// A moving picture that is shown while a command works.
struct Animation : Control
{
    using Control::Control;

    QProperty<bool> Running{false};
    /// Where the picture comes from, and its number there. A view without such a file draws its own.
    QString File;
    int Resource = 0;
    void play() { Running = true; }
    void stop() { Running = false; }
};

/// Calls Tick on the GUI thread every Interval while it is enabled. Off until the events service is told of it.
struct Timer : Control
{
    Timer(ControlSet& owner, QStringView timerName, std::chrono::milliseconds period)
        : Control(owner, timerName), Interval(period)
    {
        Enabled = false;
    }

    const std::chrono::milliseconds Interval;
    std::function<void()> Tick;
};

/// A hidden list of the files of a folder: Files::list reads it, Pattern is "*.mp3;*.wma".
struct FileList : Control
{
    using Control::Control;

    QString Path;
    QString Pattern = QStringLiteral("*.*");
};

/// A tree of the file system below a root of its own caption.
struct FolderTree : Control
{
    using Control::Control;

    QProperty<QString> RootCaption;
    /// Without a trailing separator, except for the root of a file system; "" while no folder is selected.
    QProperty<QString> SelectedFolder;
    /// The host's bytes for the selected folder, whose text may name a drive or differ in case; nothing where it names
    /// no folder.
    std::function<std::optional<QByteArray>(const QString& folder)> NativePath;
    /// The user selected another folder.
    std::function<void()> Change;
};

} // namespace orvantine
