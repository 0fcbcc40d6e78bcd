#include "support/FakeDesktop.h"

#include "app/FormResize.h"
#include "desktop/posix/KeptVersions.h"
#include "shell/Assemble.h"
#include "shell/FormLoad.h"
#include "shell/MainWindow.h"

#include <QDir>

#include <fcntl.h>
#include <sys/stat.h>

#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

FakeProcess::FakeProcess(Services processServices, std::unique_ptr<VirtualEvents> processEvents,
                         std::unique_ptr<FakeForms> processForms, std::unique_ptr<FakeTray> processTray,
                         std::unique_ptr<FakePlayer> player, std::unique_ptr<FakePlayer> infoPlayer,
                         std::unique_ptr<ProfileStore> processProfiles)
    : events(std::move(processEvents)),
      forms(std::move(processForms)),
      tray(std::move(processTray)),
      mediaplayer(std::move(player)),
      mediaInfo(std::move(infoPlayer)),
      profiles(std::move(processProfiles)),
      services(std::move(processServices)),
      root(std::make_unique<Root>(services))
{
    assemble(*root);
    m_watches.push_back(root->Visible.addNotifier([this] { resized(); }));
    m_watches.push_back(root->State.addNotifier([this] { resized(); }));
    m_watches.push_back(root->Width.addNotifier([this] { resized(); }));
    m_watches.push_back(root->Height.addNotifier([this] { resized(); }));
}

void FakeProcess::resized()
{
    if (m_resizing || !root->Visible.value())
        return;
    m_resizing = true;
    Form_Resize(*root);
    m_resizing = false;
}

FakeProcess::~FakeProcess() = default;

FakeDesktop::FakeDesktop(const DesktopOptions& options) : m_options(options)
{
    if (m_options.disk == DiskKind::Memory) {
        auto memory = std::make_unique<MemoryFiles>(MemoryFilesOptions{m_options.codePage, m_options.adoptsHostTexts});
        memory->Clock = [this] { return m_process ? events().now() : m_options.now; };
        m_memory = memory.get();
        auto versions = std::make_unique<FakeVersions>(*memory);
        m_fakeVersions = versions.get();
        m_versions = std::move(versions);
        m_disk = std::move(memory);
        base = u"/orvantine"_s;
    } else {
        m_folder = std::make_unique<QTemporaryDir>();
        base = m_folder->path();
        PosixFilesOptions posix;
        posix.codePage = m_options.codePage;
        for (auto drive = m_options.drives.begin(); drive != m_options.drives.end(); ++drive) {
            if (!drive->startsWith(u'/'))
                *drive = base + u'/' + *drive;
            QDir().mkpath(*drive);
        }
        posix.drives = m_options.drives;
        posix.adoptsHostTexts = m_options.adoptsHostTexts;
        posix.recoveryFolder = base + u"/recovery"_s;
        m_disk = std::make_unique<PosixFiles>(posix);
        m_versions = std::make_unique<KeptVersions>(posix.recoveryFolder);
    }
    if (m_folder)
        walks.readHost(m_options.drives);
    else
        walks.readFrom(*m_disk);
    m_loggingFiles = std::make_unique<LoggingFiles>(*m_disk, log);
    if (m_folder)
        m_loggingFiles->Written = [this](const QString& path) { touch(path); };
    m_zip = std::make_unique<FakeArchive>(log, *m_disk, base + u"/staging"_s);
    m_zip->SetModified = [this](const QString& path, const QDateTime& time) {
        if (m_memory != nullptr)
            m_memory->setModified(path, time);
        else
            touch(path, time);
    };

    folders.program = base + u"/program"_s;
    folders.applicationData = base + u"/appdata"_s;
    folders.documents = base + u"/documents"_s;
    folders.music = base + u"/music"_s;
    folders.windows = base + u"/windows"_s;
    folders.temp = base + u"/tmp"_s;
    if (m_memory != nullptr)
        m_memory->putFolder(base);
    for (const QString& folder : {folders.program, folders.applicationData, folders.documents, folders.music,
                                  folders.windows, folders.windows + u"/FONTS"_s, folders.temp})
        m_disk->makeFolder(folder);
    // A build installs it: without it every look at a track would be met with a message.
    m_disk->writeBytes(folders.program + u"/Orvantine.dll"_s, {});
    volumes.set(base, {});

    newProcess();
}

FakeDesktop::~FakeDesktop() = default;

void FakeDesktop::newProcess()
{
    const QDateTime now = m_process ? events().now() : m_options.now;
    m_process.reset();

    auto newEvents = std::make_unique<VirtualEvents>(log, complaints);
    newEvents->setNow(now);
    auto newForms = std::make_unique<FakeForms>(log, complaints);
    newForms->Nested = [this](bool begins) {
        if (begins) {
            messages.queue.enter();
            choosers.queue.enter();
        } else {
            messages.queue.leave();
            choosers.queue.leave();
        }
    };
    auto newTray = std::make_unique<FakeTray>(log);
    newTray->present = trayPresent;
    const auto note = [this](const QString& line) { return log.call(line); };
    auto player = std::make_unique<FakePlayer>(*m_disk, note);
    auto infoPlayer = std::make_unique<FakePlayer>(*m_disk, note, u"MediaInfo"_s);
    auto profiles = std::make_unique<ProfileStore>(*m_loggingFiles);
    Services services{*m_loggingFiles, *profiles,   settings, messages, choosers, *newForms, *newEvents,
                      *player,         *infoPlayer, mixer,    sound,    tags,     *newTray,  clipboard,
                      launcher,        volumes,     instance, fonts,    screen,   walks,     priority,
                      *m_zip,          *m_versions, folders,  system,   context};
    m_process = std::make_unique<FakeProcess>(std::move(services), std::move(newEvents), std::move(newForms),
                                              std::move(newTray), std::move(player), std::move(infoPlayer),
                                              std::move(profiles));
}

void FakeDesktop::start(const QString& command)
{
    services().start.command = command;
    Form_Load(root());
}

void FakeDesktop::complainOfUnused()
{
    messages.complainOfUnused();
    choosers.complainOfUnused();
    forms().complainOfUnused();
}

/// Files on the real disk get the virtual clock's time, so that a date that the program compares is the test's own.
void FakeDesktop::touch(const QString& path, const QDateTime& time)
{
    const std::optional<QByteArray> native = m_disk->nativePath(path);
    if (!native)
        return;
    const qint64 milliseconds = time.toMSecsSinceEpoch();
    timespec times[2] = {};
    times[0].tv_nsec = UTIME_OMIT;
    times[1].tv_sec = milliseconds / 1000;
    times[1].tv_nsec = (milliseconds % 1000) * 1'000'000;
    ::utimensat(AT_FDCWD, native->constData(), times, 0);
}

} // namespace orvantine::fake
