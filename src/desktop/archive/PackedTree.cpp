#include "desktop/archive/PackedTree.h"

#include "desktop/posix/Descriptor.h"
#include "desktop/posix/HostFile.h"
#include "desktop/posix/JournalNotes.h"
#include "desktop/posix/NameLookup.h"
#include "platform/CaseFold.h"

#include <algorithm>
#include <utility>

#include <dirent.h>
#include <fcntl.h>

namespace orvantine {
namespace {

/// Nothing where the folder cannot be read.
std::optional<QByteArrayList> namesOf(const QByteArray& path)
{
    DIR* const folder = ::opendir(path.constData());
    if (folder == nullptr)
        return {};
    QByteArrayList names;
    while (const dirent* entry = ::readdir(folder)) {
        const QByteArray name(entry->d_name);
        if (name != "." && name != "..")
            names.append(name);
    }
    ::closedir(folder);
    std::sort(names.begin(), names.end());
    return names;
}

class Gathering
{
public:
    Gathering(bool foldersToo, std::function<bool(const QString& name)> takes, const struct stat* archive,
              PackedTree& tree)
        : m_foldersToo(foldersToo),
          m_takes(std::move(takes)),
          m_archive(archive),
          m_tree(tree),
          m_first(tree.files.size())
    {
    }

    void takeFolder(const QByteArray& path, const QString& below)
    {
        const std::optional<QByteArrayList> names = namesOf(path);
        if (!names) {
            m_tree.leftOut.append(below);
            return;
        }
        for (const QByteArray& name : *names)
            takeEntry(path + '/' + name, below + NameLookup::textOf(name));
    }

    void takeOne(const QByteArray& path, const QString& name)
    {
        struct stat info = {};
        if (::stat(path.constData(), &info) == 0 && S_ISREG(info.st_mode))
            takeFile(path, name, info);
        else
            m_tree.leftOut.append(name);
    }

private:
    void takeEntry(const QByteArray& path, const QString& name)
    {
        struct stat entry = {};
        struct stat info = {};
        if (isScratchName(path) || ::lstat(path.constData(), &entry) != 0 || ::stat(path.constData(), &info) != 0)
            return;
        if (S_ISDIR(entry.st_mode)) {
            const QString folder = name + u'/';
            if (m_foldersToo)
                take({path, folder, true, 0, info.st_mtim.tv_sec});
            takeFolder(path, folder);
        } else if (S_ISREG(info.st_mode)) {
            takeFile(path, name, info);
        }
    }

    void takeFile(const QByteArray& path, const QString& name, struct stat& info)
    {
        if (m_archive != nullptr && info.st_dev == m_archive->st_dev && info.st_ino == m_archive->st_ino)
            return;
        if ((m_takes && !m_takes(name)) || !openRegular(path, O_RDONLY, info).isOpen())
            m_tree.leftOut.append(name);
        else
            take({path, name, false, info.st_size, info.st_mtim.tv_sec});
    }

    void take(const PackedFile& file)
    {
        const QString key = entryKey(file.name);
        const auto place = m_tree.places.constFind(key);
        if (place == m_tree.places.constEnd()) {
            m_tree.places.insert(key, m_tree.files.size());
            m_tree.files.push_back(file);
        } else if (*place < m_first) {
            m_tree.files[*place] = file;
        } else if (!file.folder) {
            m_tree.leftOut.append(file.name);
        }
    }

    bool m_foldersToo;
    std::function<bool(const QString& name)> m_takes;
    const struct stat* m_archive;
    PackedTree& m_tree;
    /// What stands in front of it in the tree came of an earlier folder.
    std::size_t m_first;
};

} // namespace

QString entryKey(const QString& name)
{
    return folded(name.normalized(QString::NormalizationForm_C));
}

void addTree(const QByteArray& folder, bool foldersToo, const std::function<bool(const QString& name)>& takes,
             const struct stat* archive, PackedTree& tree)
{
    Gathering(foldersToo, takes, archive, tree).takeFolder(folder, {});
}

void addFile(const QByteArray& path, const QString& name, PackedTree& tree)
{
    Gathering(false, {}, nullptr, tree).takeOne(path, name);
}

} // namespace orvantine
