#pragma once

#include "app/Root.h"
#include "desktop/posix/PosixFiles.h"
#include "support/CallLog.h"
#include "support/Complaints.h"
#include "support/FakeArchive.h"
#include "support/FakeDevices.h"
#include "support/FakeForms.h"
#include "support/FakePlayer.h"
#include "support/FakeVersions.h"
#include "support/FakeWalks.h"
#include "support/LoggingFiles.h"
#include "support/MemoryFiles.h"
#include "support/MemorySettings.h"
#include "support/ScriptedChoosers.h"
#include "support/ScriptedMessages.h"
#include "support/VirtualEvents.h"

#include <QTemporaryDir>

#include <memory>
#include <optional>
#include <vector>

namespace orvantine::fake {

enum class DiskKind { Memory, TemporaryFolder };

struct DesktopOptions
{
    DiskKind disk = DiskKind::Memory;
    CodePage codePage;
    bool adoptsHostTexts = true;
    /// "C:" -> a folder of the host, or one below the desktop's base if it does not begin with "/"; a disk in memory
    /// has every drive anyway.
    QMap<QString, QString> drives;
    QDateTime now{QDate(2026, 11, 20), QTime(12, 0)};
};

/// The running program: what dies with it.
class FakeProcess
{
public:
    FakeProcess(Services processServices, std::unique_ptr<VirtualEvents> processEvents,
                std::unique_ptr<FakeForms> processForms, std::unique_ptr<FakeTray> processTray,
                std::unique_ptr<FakePlayer> player, std::unique_ptr<FakePlayer> infoPlayer,
                std::unique_ptr<ProfileStore> processProfiles);
    ~FakeProcess();

    std::unique_ptr<VirtualEvents> events;
    std::unique_ptr<FakeForms> forms;
    std::unique_ptr<FakeTray> tray;
    std::unique_ptr<FakePlayer> mediaplayer;
    std::unique_ptr<FakePlayer> mediaInfo;
    std::unique_ptr<ProfileStore> profiles;
    Services services;
    std::unique_ptr<Root> root;

private:
    /// What a window does when it comes up and when its state or size changes: it tells Form_Resize.
    void resized();

    bool m_resizing = false;
    std::vector<QPropertyNotifier> m_watches;
};

/// A whole machine for one user, with the program on it, and no desktop: every call to it passes `log`. The standard
/// folders stand side by side below `base`.
class FakeDesktop
{
public:
    explicit FakeDesktop(const DesktopOptions& options = {});
    ~FakeDesktop();

    CallLog log;
    Complaints complaints;

    /// The disk as the program sees it, and as the test lays it out: the test's own calls stand in no log.
    LoggingFiles& files() { return *m_loggingFiles; }
    Files& disk() { return *m_disk; }
    FakeArchive& zip() { return *m_zip; }
    /// Null on a real folder.
    FakeVersions* versions() { return m_fakeVersions; }
    /// Null on a real folder.
    MemoryFiles* memory() { return m_memory; }

    MemorySettings settings{log};
    ScriptedMessages messages{log, complaints};
    ScriptedChoosers choosers{log, complaints};
    FakeMixer mixer{log};
    FakeSound sound{log};
    FakeClipboard clipboard{log};
    FakeLauncher launcher{log};
    FakeVolumes volumes{log};
    FakeInstance instance{log};
    FakeFonts fonts{log};
    FakeScreen screen;
    FakeWalks walks{log};
    FakeTags tags{log};
    FakePriority priority{log};

    /// Where everything lies, without a trailing separator.
    QString base;
    StandardFolders folders;
    SystemVersion system;
    StartContext context;
    /// Whether a process that starts finds a tray.
    bool trayPresent = true;

    // The process. A new one has its timers, forms, tray item and player anew; disk, settings and clipboard stay.
    VirtualEvents& events() { return *m_process->events; }
    FakeForms& forms() { return *m_process->forms; }
    FakeTray& tray() { return *m_process->tray; }
    FakePlayer& mediaplayer() { return *m_process->mediaplayer; }
    FakePlayer& mediaInfo() { return *m_process->mediaInfo; }
    ProfileStore& profiles() { return *m_process->profiles; }
    Services& services() { return m_process->services; }
    Root& root() { return *m_process->root; }

    /// Ends the process without a word to it, as a power cut would, and makes a new one at the same time of day.
    void newProcess();
    /// Runs the process from its start with this command line.
    void start(const QString& command = {});

    /// Scripts that nothing asked for become complaints.
    void complainOfUnused();

private:
    void touch(const QString& path) { touch(path, events().now()); }
    void touch(const QString& path, const QDateTime& time);

    DesktopOptions m_options;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Files> m_disk;
    MemoryFiles* m_memory = nullptr;
    std::unique_ptr<LoggingFiles> m_loggingFiles;
    std::unique_ptr<FakeArchive> m_zip;
    std::unique_ptr<EarlierVersions> m_versions;
    FakeVersions* m_fakeVersions = nullptr;
    std::unique_ptr<FakeProcess> m_process;
};

} // namespace orvantine::fake
