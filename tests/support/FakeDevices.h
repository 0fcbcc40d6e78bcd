#pragma once

#include "platform/Clipboard.h"
#include "platform/Controls.h"
#include "platform/Fonts.h"
#include "platform/Instance.h"
#include "platform/Launcher.h"
#include "platform/MixerDevice.h"
#include "platform/Priority.h"
#include "platform/Screen.h"
#include "platform/SoundOutput.h"
#include "platform/TagLibrary.h"
#include "platform/TrayIcon.h"
#include "platform/Volumes.h"
#include "support/CallLog.h"

#include <QMap>
#include <QSet>
#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace orvantine::fake {

/// A notification area that can be missing.
class FakeTray final : public TrayIcon
{
public:
    explicit FakeTray(CallLog& log) : m_log(log) {}

    bool add(const QString& tip) override;
    void remove() override;
    [[nodiscard]] bool stands() const override { return m_wanted && present; }
    /// The desktop's tray comes or goes while the program runs.
    void setPresent(bool comes);

    /// The user clicks the item; false if there is none to click.
    bool click(MouseButton button);
    [[nodiscard]] bool shown() const { return stands(); }
    [[nodiscard]] const QString& tip() const { return m_tip; }

    bool present = true;

private:
    CallLog& m_log;
    bool m_wanted = false;
    QString m_tip;
};

/// A mixer of the speakers' line (component type 4) from 0 to 65535; other lines can be added.
class FakeMixer final : public MixerDevice
{
public:
    explicit FakeMixer(CallLog& log) : m_log(log) {}

    [[nodiscard]] std::unique_ptr<MixerHandle> open() override;

    struct Line
    {
        MixerRange range;
        long level = 0;
    };
    QMap<int, Line> lines{{4, {{0, 65535}, 32000}}};
    /// Whether a sound server answers.
    bool present = true;
    /// How many handles are open.
    int handles = 0;

private:
    CallLog& m_log;
};

/// Plays nothing and writes every sound down: "cue.play READY 6", name and flags.
class FakeSound final : public SoundOutput
{
public:
    explicit FakeSound(CallLog& log) : m_log(log) {}

    [[nodiscard]] int deviceCount() const override { return devices; }
    void play(const QByteArray& wave, int flags) override;

    int devices = 1;
    /// What was played, oldest first; `name` is empty for an image that is no cue of the program.
    struct Played
    {
        QString name;
        QByteArray wave;
        int flags = 0;
    };
    QList<Played> played;

private:
    CallLog& m_log;
};

/// Writes down what is asked for: "priority.set 128".
class FakePriority final : public Priority
{
public:
    explicit FakePriority(CallLog& log) : m_log(log) {}

    void set(ProcessPriority priority) override;

    ProcessPriority now = ProcessPriority::Normal;

private:
    CallLog& m_log;
};

class FakeClipboard final : public Clipboard
{
public:
    explicit FakeClipboard(CallLog& log) : m_log(log) {}

    [[nodiscard]] QString text() const override { return content; }
    [[nodiscard]] QStringList files() const override { return copied; }
    void setText(const QString& text) override;

    QString content;
    /// Copied in a file manager.
    QStringList copied;

private:
    CallLog& m_log;
};

class FakeLauncher final : public Launcher
{
public:
    explicit FakeLauncher(CallLog& log) : m_log(log) {}

    bool start(const LaunchRequest& request) override;
    [[nodiscard]] std::unique_ptr<RunningProgram> run(const LaunchRequest& request) override;

    std::vector<LaunchRequest> started;
    /// What the started program does at once.
    std::function<void(const LaunchRequest& request)> Started = [](const LaunchRequest&) {};
    /// How a program that is watched ends; nothing while it runs. It does for the first few looks at it.
    std::function<std::optional<int>()> ExitCode = [] { return std::optional(0); };

private:
    CallLog& m_log;
};

[[nodiscard]] QString nameOf(LaunchKind kind);

/// Volumes as the test describes them; a path lies on the longest root that it begins with, ignoring case, else on its
/// drive ("C:\") or "/".
class FakeVolumes final : public Volumes
{
public:
    explicit FakeVolumes(CallLog& log) : m_log(log) {}

    [[nodiscard]] QString rootOf(const QString& path) const override;
    [[nodiscard]] QString fileSystem(const QString& root) const override;
    [[nodiscard]] std::optional<quint64> freeBytes(const QString& root) const override;
    [[nodiscard]] std::optional<quint64> totalBytes(const QString& root) const override;

    struct Volume
    {
        QString fileSystem = QStringLiteral("EXT4");
        quint64 free = quint64{100} << 30;
        quint64 total = quint64{200} << 30;
    };
    void set(const QString& root, const Volume& volume);

private:
    CallLog& m_log;
    std::vector<std::pair<QString, Volume>> m_volumes;
};

class FakeInstance final : public Instance
{
public:
    explicit FakeInstance(CallLog& log) : m_log(log) {}

    bool acquire(const QString& title) override;
    bool acquireFolder(const QString& folder) override;
    bool activateOther() override;
    bool awaitEnd() override;

    /// Another instance holds the lock.
    bool taken = false;
    /// One of another desktop works on the folder.
    bool folderTaken = false;
    /// The other instance answers.
    bool answers = true;
    /// It is just about to end.
    bool ends = false;

private:
    CallLog& m_log;
};

class FakeFonts final : public Fonts
{
public:
    explicit FakeFonts(CallLog& log) : m_log(log) {}

    [[nodiscard]] bool known(const QString& family) const override { return families.contains(family); }
    bool registerFont(const QString& path) override;
    bool provide(const QString& family, const QString& path) override;

    /// Whether fonts can be made of the files that the program ships.
    bool readable = true;
    QSet<QString> families{QStringLiteral("Maiandra GD"), QStringLiteral("OCR B")};

private:
    CallLog& m_log;
};

class FakeScreen final : public Screen
{
public:
    [[nodiscard]] std::vector<DesktopScreen> screens() const override { return all; }
    /// One screen of this size, without panels.
    void setOnly(Twips width, Twips height)
    {
        const ScreenArea area{0, 0, width, height};
        all = {{area, area}};
    }

    std::vector<DesktopScreen> all{{{0, 0, 28800, 16200}, {0, 0, 28800, 16200}}};
};

/// What a track's tag and head say.
struct FakeTrack
{
    QString title, artist, album, year, comment;
    int track = 0;
    int bitRate = 128;
    int seconds = 60;
};

/// A tag library that can read the tracks that the test names, and no other file.
class FakeTags final : public TagLibrary
{
public:
    explicit FakeTags(CallLog& log) : m_log(log) {}

    void Mp3FileInfo(const QString& path, Mp3Record& record) override;
    bool WriteID3V1(const QString& path, const Mp3Record& record) override;
    bool EraseID3V2(const QString& path) override;

    /// By path, letter by letter.
    QMap<QString, FakeTrack> tracks;
    /// The records that were to be written, oldest first.
    QList<Mp3Record> written;

private:
    CallLog& m_log;
};

} // namespace orvantine::fake
