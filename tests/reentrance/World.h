#pragma once

#include "support/FakeDesktop.h"

#include <QMap>
#include <QStringList>

namespace orvantine::fake {

/// A small catalogue whose user answers every box with its accepting button: "Alpha" with three tracks, "Beta" and
/// "Gamma" with two. "Alpha" is open, lists are saved locally, and each list has its description.
class World
{
public:
    World();

    Root& root() { return desktop.root(); }
    [[nodiscard]] QString data() const;
    [[nodiscard]] QString listPath(const QString& name) const;
    [[nodiscard]] QByteArray bytes(const QString& path);
    /// Entries of a list's file, in their order; nothing for a file that is not there.
    [[nodiscard]] std::optional<QStringList> entries(const QString& name);
    /// Paths of the section `Index`, in the order of their numbers.
    [[nodiscard]] QStringList storedPaths();
    /// Description by path.
    [[nodiscard]] QMap<QString, QString> descriptions();

    void click(int row);

    /// Runs in the box, chooser or modal form of that number, counted from now on.
    void atBox(int number, std::function<void()> action);
    [[nodiscard]] int boxes() const { return m_boxes; }

    /// What a look at the world finds wrong, a line each.
    [[nodiscard]] QStringList faults();

    /// What the commands of this run may do.
    bool removesTrack = false;
    bool removesList = false;
    bool addsTrack = false;
    bool renames = false;

    FakeDesktop desktop;

private:
    void put(const QString& path, const QByteArray& bytes);
    void box();

    int m_boxes = 0;
    QMap<int, std::function<void()>> m_atBox;
};

} // namespace orvantine::fake
