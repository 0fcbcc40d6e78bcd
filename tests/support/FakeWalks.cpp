#include "support/FakeWalks.h"

#include "desktop/posix/PosixFolderWalks.h"
#include "platform/FileDirPath.h"
#include "support/Quoting.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class ReadWalk final : public FolderWalk
{
public:
    ReadWalk(std::deque<WalkedFolder> folders, int hangsBehind)
        : m_folders(std::move(folders)), m_hangsBehind(hangsBehind)
    {
    }

    std::vector<WalkedFolder> take() override
    {
        if (m_folders.empty() || m_hangsBehind == 0)
            return {};
        --m_hangsBehind;
        std::vector<WalkedFolder> next{std::move(m_folders.front())};
        m_folders.pop_front();
        return next;
    }
    bool done() const override { return m_folders.empty(); }

private:
    std::deque<WalkedFolder> m_folders;
    int m_hangsBehind;
};

} // namespace

std::unique_ptr<FolderWalk> FakeWalks::begin(const QString& folder, const QString& patterns, int levels)
{
    std::deque<WalkedFolder> found;
    if (m_log.call(u"walks.begin %1 %2 %3"_s.arg(quoted(folder), patterns).arg(levels)) && m_read)
        found = m_read(folder, patterns, levels);
    return std::make_unique<ReadWalk>(std::move(found), hangsBehind);
}

void FakeWalks::readFrom(const Files& files)
{
    m_read = [&files](const QString& folder, const QString& patterns, int levels) {
        std::deque<WalkedFolder> found;
        if (!files.isFolder(folder))
            return found;
        found.push_back({folder, 0, files.list(folder, patterns)});
        for (std::size_t i = 0; i < found.size(); ++i) {
            const QString path = found[i].path;
            const int level = found[i].level + 1;
            if (level > levels)
                break;
            for (const QString& name : files.folders(path)) {
                const QString below = FileDirPath::join(path, name);
                found.push_back({below, level, files.list(below, patterns)});
            }
        }
        return found;
    };
}

void FakeWalks::readHost(const QMap<QString, QString>& drives)
{
    m_read = [drives](const QString& folder, const QString& patterns, int levels) {
        std::deque<WalkedFolder> found;
        walkFolders(drives, folder, patterns, levels, [&found](WalkedFolder walked) {
            found.push_back(std::move(walked));
            return true;
        });
        return found;
    };
}

} // namespace orvantine::fake
