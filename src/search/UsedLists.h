#pragma once

#include <QSet>
#include <QString>
#include <QStringList>

#include <optional>
#include <utility>

namespace orvantine {

struct Root;

/// The files that lists of the catalogue have: those of the section `Index` and those of the rows in sight, which may
/// not be saved yet. A file that a link leads to is the same file.
class UsedLists
{
public:
    /// Nothing where the database could not be read whole: then nobody knows which lists there are.
    [[nodiscard]] static std::optional<UsedLists> read(const Root& root);

    [[nodiscard]] bool contains(const Root& root, const QString& path) const;
    /// By the number in section `Index`, from 1; "" for none.
    [[nodiscard]] QString path(int number) const { return m_paths.value(number - 1); }

private:
    QStringList m_paths;
    QSet<QString> m_compared;
    /// Device and inode
    QSet<std::pair<quint64, quint64>> m_files;
};

} // namespace orvantine
