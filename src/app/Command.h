#pragma once

#include "app/RunningCommands.h"
#include "platform/Choosers.h"
#include "platform/Controls.h"
#include "platform/Messages.h"

#include <functional>
#include <optional>

namespace orvantine {

struct Form;
struct Root;

/// What a wait takes away. It comes back when the wait ends.
enum class Wait {
    /// Menus, lists and play buttons, as DisabledButtons has it.
    Buttons,
    /// The two lists, under the pointer of a wait.
    Lists,
    /// All of these.
    All
};

/// One command at work, or a routine of one. Whatever serves events goes through its doors: yields, pauses, boxes,
/// choosers and modal forms. Each of them tells whether the program goes on, and the compiler asks for that answer:
/// after the end of the program no later step may run. A wait that was entered ends with the command, on whatever way.
///
/// Behind a door another list may be in sight, a row may have moved or gone: a routine that goes on looks again (see
/// TrackList::Hold). No rows are held back from a view across a door, and no WholeChange is open but one that says that
/// its steps yield.
class Command
{
public:
    /// A routine that is a part of a command names no changes of its own. `name` is what the user calls it: the reason
    /// for which old bytes are kept. A routine, and what is done in a form of a command, goes by the command's name.
    explicit Command(Root& root, Changes changes = Changes::Nothing, const QString& name = {});
    ~Command();
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;

    void wait(Wait what = Wait::All, MousePointer pointer = MousePointer::Hourglass);
    /// Required: pointer, lists and buttons are on again, also where nothing was entered, and where a command further
    /// up still waits.
    void endWait();

    /// The program has ended: no door opens any more.
    [[nodiscard]] bool ended() const;

    // Doors. False or nothing: the program has ended.

    [[nodiscard]] bool yield();
    /// The yield that ends a routine: no step follows that would have to know.
    void lastYield();
    /// Serves events until the seconds have gone by; the clock's wrap at midnight does no harm.
    [[nodiscard]] bool pause(double seconds);
    [[nodiscard]] std::optional<Answer> ask(const Message& message);
    /// A box with nothing to choose, as the last thing of a routine.
    void tell(const Message& message);
    /// "" on Cancel.
    [[nodiscard]] std::optional<QString> enter(const QString& prompt, const QString& title,
                                               const QString& defaultText = {});
    /// What a handler of the form asks for lies inside this door: it calls routines, since a command that changes the
    /// same as this one would be passed over.
    [[nodiscard]] bool showModal(Form& form);

    // Choosers: nothing on Cancel as well.

    [[nodiscard]] std::optional<ChosenFile> openFile(const FileRequest& request);
    [[nodiscard]] std::optional<ChosenFile> saveFile(const FileRequest& request);
    /// "" on Cancel.
    [[nodiscard]] QString folder(const FolderRequest& request);
    [[nodiscard]] std::optional<FontChoice> font(const FontChoice& present);

private:
    class Door;

    /// What `open` gives, behind a door; nothing after the end.
    template <class Open>
    auto behindDoor(Open open) -> std::optional<decltype(open())>;

    Root& m_root;
    std::optional<Wait> m_wait;
};

/// A command that a user asks for may run: none that changes the same waits, and if it changes tracks, no list is being
/// read.
[[nodiscard]] bool isAdmitted(const Root& root, Changes changes);

/// Runs a command that a user asked for, unless one that changes the same waits, or a list is read whose tracks it
/// would change: then it is passed over silently.
void runCommand(Root& root, Changes changes, const std::function<void()>& run, const QString& name = {});

} // namespace orvantine
