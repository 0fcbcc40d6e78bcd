#include "desktop/posix/PosixFolderWalks.h"

#include "desktop/posix/NameLookup.h"
#include "platform/CaseFold.h"
#include "platform/FileDirPath.h"
#include "platform/NamePattern.h"

#include <algorithm>
#include <atomic>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace orvantine {

namespace {

using Identity = std::pair<dev_t, ino_t>;

struct Waiting
{
    QByteArray native;
    QString path;
    int level = 0;
    /// The folders that it lies in.
    std::vector<Identity> above;
};

struct Name
{
    QString key;
    QString text;
    QByteArray native;
};

void sort(std::vector<Name>& names)
{
    std::sort(names.begin(), names.end(), [](const Name& left, const Name& right) {
        return std::tie(left.key, left.text) < std::tie(right.key, right.text);
    });
}

enum class Kind { File, Folder, Other };

Kind kindOf(const dirent& entry, int folder)
{
    if (entry.d_type == DT_REG)
        return Kind::File;
    if (entry.d_type == DT_DIR)
        return Kind::Folder;
    if (entry.d_type != DT_LNK && entry.d_type != DT_UNKNOWN)
        return Kind::Other;
    struct stat info = {};
    if (::fstatat(folder, entry.d_name, &info, 0) != 0)
        return Kind::Other;
    return S_ISREG(info.st_mode) ? Kind::File : S_ISDIR(info.st_mode) ? Kind::Folder : Kind::Other;
}

/// Reads one folder; adds those in it to `below`. Nothing where it cannot be read.
std::optional<WalkedFolder> readFolder(const Waiting& waiting, const QString& patterns, std::deque<Waiting>* below)
{
    DIR* const folder = ::opendir(waiting.native.constData());
    if (folder == nullptr)
        return {};
    struct stat info = {};
    const int descriptor = ::dirfd(folder);
    const bool known = ::fstat(descriptor, &info) == 0;
    const Identity self{info.st_dev, info.st_ino};
    if (!known || std::find(waiting.above.begin(), waiting.above.end(), self) != waiting.above.end()) {
        ::closedir(folder);
        return {};
    }
    std::vector<Name> files;
    std::vector<Name> folders;
    while (const dirent* entry = ::readdir(folder)) {
        if (entry->d_name[0] == '.')
            continue;
        const Kind kind = kindOf(*entry, descriptor);
        if (kind == Kind::Other || (kind == Kind::Folder && below == nullptr))
            continue;
        const QByteArray native(entry->d_name);
        const QString text = NameLookup::textOf(native);
        if (kind == Kind::Folder)
            folders.push_back({folded(text), text, native});
        else if (matchesAnyPattern(text, patterns))
            files.push_back({folded(text), text, {}});
    }
    ::closedir(folder);
    sort(files);
    sort(folders);

    WalkedFolder walked{.path = waiting.path, .level = waiting.level, .files = {}};
    walked.files.reserve(static_cast<qsizetype>(files.size()));
    for (Name& name : files)
        walked.files.append(std::move(name.text));
    std::vector<Identity> above = waiting.above;
    above.push_back(self);
    const QByteArray base = waiting.native.endsWith('/') ? waiting.native : waiting.native + '/';
    for (const Name& name : folders)
        below->push_back({base + name.native, FileDirPath::join(waiting.path, name.text), waiting.level + 1, above});
    return walked;
}

/// What the thread and the walk share; whichever of them is left last drops it.
struct Mailbox
{
    std::mutex lock;
    std::vector<WalkedFolder> found;
    std::atomic<bool> done = false;
    std::atomic<bool> stopped = false;
};

class ThreadWalk final : public FolderWalk
{
public:
    explicit ThreadWalk(std::shared_ptr<Mailbox> mailbox) : m_mailbox(std::move(mailbox)) {}
    ~ThreadWalk() override { m_mailbox->stopped = true; }
    ThreadWalk(const ThreadWalk&) = delete;
    ThreadWalk& operator=(const ThreadWalk&) = delete;

    std::vector<WalkedFolder> take() override
    {
        const std::scoped_lock locked(m_mailbox->lock);
        return std::exchange(m_mailbox->found, {});
    }
    bool done() const override
    {
        if (!m_mailbox->done)
            return false;
        const std::scoped_lock locked(m_mailbox->lock);
        return m_mailbox->found.empty();
    }

private:
    std::shared_ptr<Mailbox> m_mailbox;
};

} // namespace

void walkFolders(const QMap<QString, QString>& drives, const QString& folder, const QString& patterns, int levels,
                 const std::function<bool(WalkedFolder)>& found)
{
    const NameLookup names(drives);
    const NameLookup::Found start = names.find(folder);
    if (start.error != 0)
        return;
    std::deque<Waiting> waiting{{start.path, folder, 0, {}}};
    while (!waiting.empty()) {
        const Waiting next = std::move(waiting.front());
        waiting.pop_front();
        std::optional<WalkedFolder> walked = readFolder(next, patterns, next.level < levels ? &waiting : nullptr);
        if (walked && !found(*std::move(walked)))
            return;
    }
}

std::unique_ptr<FolderWalk> PosixFolderWalks::begin(const QString& folder, const QString& patterns, int levels)
{
    auto mailbox = std::make_shared<Mailbox>();
    std::thread([mailbox, drives = m_drives, folder, patterns, levels] {
        walkFolders(drives, folder, patterns, levels, [&mailbox](WalkedFolder walked) {
            const std::scoped_lock locked(mailbox->lock);
            mailbox->found.push_back(std::move(walked));
            return !mailbox->stopped;
        });
        mailbox->done = true;
    }).detach();
    return std::make_unique<ThreadWalk>(std::move(mailbox));
}

} // namespace orvantine
