#include "app/Command.h"

#include "app/DisabledButtons.h"
#include "app/Quiet.h"
#include "app/Root.h"

#include <algorithm>
#include <utility>

namespace orvantine {

/// Open while events are served.
class Command::Door
{
public:
    explicit Door(Root& root) : m_commands(root.commands)
    {
        // Another command would change, and a failure of ours put back, what it has nothing to do with.
        Q_ASSERT_X(!root.files.inClosedChange(), "Command", "events are served inside a WholeChange");
        Q_ASSERT_X(!root.LListView1.holdsBackRows() && !root.LListView2.holdsBackRows(), "Command",
                   "events are served while rows are held back");
        ++m_commands.m_depth;
    }
    ~Door() { --m_commands.m_depth; }
    Door(const Door&) = delete;
    Door& operator=(const Door&) = delete;

private:
    RunningCommands& m_commands;
};

namespace {

/// What a person is asked stands beside lists as they are now.
void showLists(Root& root)
{
    root.LListView1.showNow();
    root.LListView2.showNow();
}

} // namespace

Command::Command(Root& root, Changes changes, const QString& name) : m_root(root)
{
    // One that is begun inside a door of another stands for itself.
    auto& running = m_root.commands.m_running;
    const bool ofItself = running.empty() || running.back().depth < m_root.commands.m_depth;
    if (ofItself)
        m_root.files.beginCommand();
    QString called = name;
    if (!running.empty() && !running.back().name.isEmpty() && (!ofItself || (running.back().inForm && name.isEmpty())))
        called = running.back().name;
    running.push_back({changes, m_root.commands.m_depth, called});
    m_root.files.nameCommand(called);
}

Command::~Command()
{
    if (m_wait)
        endWait();
    auto& running = m_root.commands.m_running;
    running.pop_back();
    m_root.files.nameCommand(running.empty() ? QString() : running.back().name);
    if (m_root.commands.idle())
        tellFault(m_root);
}

void Command::wait(Wait what, MousePointer pointer)
{
    if (!std::exchange(m_wait, what))
        ++m_root.commands.m_waits;
    if (what != Wait::Buttons)
        m_root.Pointer = pointer;
    m_root.LListView1.Enabled = false;
    m_root.LListView2.Enabled = false;
    if (what != Wait::Lists)
        DisabledButtons(m_root, 1);
}

void Command::endWait()
{
    const Wait what = m_wait.value_or(Wait::All);
    if (std::exchange(m_wait, std::nullopt))
        --m_root.commands.m_waits;
    if (what != Wait::Buttons)
        m_root.Pointer = MousePointer::Default;
    m_root.LListView1.Enabled = true;
    m_root.LListView2.Enabled = true;
    if (what != Wait::Lists)
        DisabledButtons(m_root, 0);
}

bool Command::ended() const
{
    return m_root.services.events.ended();
}

template <class Open>
auto Command::behindDoor(Open open) -> std::optional<decltype(open())>
{
    if (ended())
        return {};
    showLists(m_root);
    const Door door(m_root);
    auto result = open();
    return ended() ? std::nullopt : std::optional(std::move(result));
}

bool Command::yield()
{
    const Door door(m_root);
    m_root.services.events.yield();
    return !ended();
}

void Command::lastYield()
{
    (void)yield();
}

bool Command::pause(double seconds)
{
    constexpr double SecondsOfDay = 86400;
    constexpr std::chrono::milliseconds Longest{20};

    const Door door(m_root);
    Events& events = m_root.services.events;
    double start = events.secondsOfDay();
    for (;;) {
        const double now = events.secondsOfDay();
        if (now < start)
            start -= SecondsOfDay;
        const double left = seconds - (now - start);
        if (left <= 0 || ended())
            return !ended();
        const std::chrono::milliseconds rest{static_cast<int>(left * 1000) + 1};
        events.yield(std::min(rest, Longest));
    }
}

std::optional<Answer> Command::ask(const Message& message)
{
    return behindDoor([this, &message] {
        return m_root.services.messages.show(message.text, message.title, message.icon, message.buttons);
    });
}

void Command::tell(const Message& message)
{
    (void)ask(message);
}

std::optional<QString> Command::enter(const QString& prompt, const QString& title, const QString& defaultText)
{
    return behindDoor([&] { return m_root.services.messages.input(prompt, title, defaultText); });
}

bool Command::showModal(Form& form)
{
    if (ended())
        return false;
    showLists(m_root);
    const Door door(m_root);
    auto& running = m_root.commands.m_running;
    const std::size_t own = running.size() - 1;
    running[own].inForm = true;
    m_root.services.forms.showModal(form);
    running[own].inForm = false;
    return !ended();
}

std::optional<ChosenFile> Command::openFile(const FileRequest& request)
{
    return behindDoor([this, &request] { return m_root.services.choosers.openFile(request); }).value_or(std::nullopt);
}

std::optional<ChosenFile> Command::saveFile(const FileRequest& request)
{
    return behindDoor([this, &request] { return m_root.services.choosers.saveFile(request); }).value_or(std::nullopt);
}

QString Command::folder(const FolderRequest& request)
{
    return behindDoor([this, &request] { return m_root.services.choosers.folder(request); }).value_or(QString());
}

std::optional<FontChoice> Command::font(const FontChoice& present)
{
    return behindDoor([this, &present] { return m_root.services.choosers.font(present); }).value_or(std::nullopt);
}

bool isAdmitted(const Root& root, Changes changes)
{
    // While a list is read there are no tracks to change.
    const bool onTracks = changes == Changes::Tracks || changes == Changes::Both;
    return root.commands.admits(changes) && !(onTracks && root.trackList.content() == TrackList::Content::Reading);
}

void runCommand(Root& root, Changes changes, const std::function<void()>& run, const QString& name)
{
    if (!isAdmitted(root, changes))
        return;
    const Command command(root, changes, name);
    run();
}

} // namespace orvantine
