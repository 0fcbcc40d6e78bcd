#include "desktop/archive/PackedTree.h"

#include "desktop/posix/Descriptor.h"
#include "desktop/posix/HostFile.h"
#include "desktop/posix/JournalNotes.h"
#include "desktop/posix/NameLookup.h"
#include "platform/CaseFold.h"

#include <algorithm>
#include <cerrno>
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
    errno = 0;
    while (const dirent* entry = ::readdir(folder)) {
        const QByteArray name(entry->d_name);
        if (name != "." && name != "..")
            names.append(name);
        errno = 0;
    }
    const bool whole = errno == 0;
    ::closedir(folder);
    if (!whole)
        return {};
    std::sort(names.begin(), names.end());
    return names;
}

class Gathering
{
public:
    Gathering(const TreeRules& rules, PackedTree& tree) : m_rules(rules), m_tree(tree), m_first(tree.files.size()) {}

    void takeFolder(const QByteArray& path, const QString& below)
    {
        const std::optional<QByteArrayList> names = namesOf(path);
        if (!names) {
            m_tree.leftOut.append(below.isEmpty() ? nameOf(path) : below);
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
    static QString nameOf(const QByteArray& folder)
    {
        const QByteArray path = folder.endsWith('/') ? folder.chopped(1) : folder;
        return NameLookup::textOf(path.mid(path.lastIndexOf('/') + 1)) + u'/';
    }

    [[nodiscard]] bool isTaken(const QString& name) const { return !m_rules.takes || m_rules.takes(name); }

    void takeEntry(const QByteArray& path, const QString& name)
    {
        struct stat entry = {};
        struct stat info = {};
        if (isScratchName(path))
            return;
        if (::lstat(path.constData(), &entry) != 0) {
            if (!isMissing(errno))
                m_tree.leftOut.append(name);
            return;
        }
        if (S_ISLNK(entry.st_mode) && !m_rules.followsLinks)
            m_tree.leftOut.append(name);
        else if (S_ISDIR(entry.st_mode))
            takeFolderEntry(path, name + u'/', entry);
        else if (::stat(path.constData(), &info) == 0 && S_ISREG(info.st_mode))
            takeFile(path, name, info);
    }

    void takeFolderEntry(const QByteArray& path, const QString& name, const struct stat& info)
    {
        if (!isTaken(name)) {
            m_tree.leftOut.append(name);
            return;
        }
        if (m_rules.foldersToo)
            take({path, name, true, 0, info.st_mtim.tv_sec});
        takeFolder(path, name);
    }

    void takeFile(const QByteArray& path, const QString& name, struct stat& info)
    {
        const struct stat* const archive = m_rules.archive;
        if (archive != nullptr && info.st_dev == archive->st_dev && info.st_ino == archive->st_ino)
            return;
        if (!isTaken(name) || !openRegular(path, O_RDONLY, info).isOpen())
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

    const TreeRules& m_rules;
    PackedTree& m_tree;
    /// What stands in front of it in the tree came of an earlier folder.
    std::size_t m_first;
};

} // namespace

QString entryKey(const QString& name)
{
    return folded(name.normalized(QString::NormalizationForm_C));
}

void addTree(const QByteArray& folder, const TreeRules& rules, PackedTree& tree)
{
    Gathering(rules, tree).takeFolder(folder, {});
}

void addFile(const QByteArray& path, const QString& name, PackedTree& tree)
{
    const TreeRules all;
    Gathering(all, tree).takeOne(path, name);
}

} // namespace orvantine
