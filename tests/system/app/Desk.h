#pragma once

#include <QByteArray>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRect>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>
#include <memory>
#include <optional>

namespace orvantine::desk {

/// Serves events until it holds; false if that did not come about for a very long time.
[[nodiscard]] bool await(const std::function<bool()>& holds);

/// A process that ends with its owner, and with the test program however that ends.
class Process : public QProcess
{
public:
    explicit Process(const QProcessEnvironment& environment);
    ~Process() override;

    /// Asks it to end (SIGTERM) and waits until it is gone.
    void end();
};

struct DeskOptions
{
    bool sessionBus = true;
    /// Settings of the window manager in its own form; its own ones where there are none.
    QByteArray windowManagerSettings;
    QByteArray screen = "1400x900x24";
};

/// A virtual display with a window manager, a session bus and a home folder, all of this test's own.
class Desk
{
public:
    explicit Desk(const DeskOptions& options = {});
    ~Desk();
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    /// Path of a name below the folder that holds all of it; "data", "config" and "state" are the XDG folders there.
    [[nodiscard]] QString path(const QString& name) const;
    /// The program's own folder below "data".
    [[nodiscard]] QString dataPath(const QString& name) const;
    /// Makes the folders on the way too.
    void write(const QString& path, const QByteArray& bytes) const;
    /// The bytes of a file; nothing if it cannot be read.
    [[nodiscard]] static QByteArray bytes(const QString& path);

    /// The settings of a user who has seen the program before, and the fonts that it asks for; the first playlist is
    /// open at the start. `moreSettings` are lines of the form "name"=value.
    void settle(const QStringList& moreSettings = {}) const;
    /// A catalogue of these playlists, called after their files.
    void writeCatalogue(const QStringList& playlists) const;

    /// What programs on this desk get; to be changed before they are started.
    QProcessEnvironment environment;

    /// Runs a tool on this desk; what it printed, or nothing if it failed.
    std::optional<QString> tool(const QString& program, const QStringList& arguments) const;

    /// Titles of the windows that are seen, without those of the desk itself.
    [[nodiscard]] QStringList windows() const;
    /// Number of the first seen window with that very title; "" if there is none.
    [[nodiscard]] QString window(const QString& title) const;
    [[nodiscard]] QString titleOfActiveWindow() const;
    /// Brings the window to the front and presses a key there, in xdotool's words.
    void press(const QString& windowTitle, const QString& key) const;
    void click(QPoint point) const;
    void doubleClick(QPoint point) const;

private:
    void startDisplay(const QByteArray& screen);
    void startBus();
    void startWindowManager(const QByteArray& settings);

    QTemporaryDir m_folder;
    std::unique_ptr<Process> m_display;
    std::unique_ptr<Process> m_bus;
    std::unique_ptr<Process> m_windowManager;
};

} // namespace orvantine::desk
