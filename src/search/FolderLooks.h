#pragma once

#include <QString>

#include <functional>
#include <map>

namespace orvantine {

struct Root;

/// Looks for many files from one look at each folder; only as long as no events are served.
class FolderLooks
{
public:
    explicit FolderLooks(const Root& root) : m_root(root) {}

    [[nodiscard]] bool exists(const QString& path);

private:
    const Root& m_root;
    std::map<QString, std::function<bool(const QString&)>> m_folders;
};

} // namespace orvantine
