#pragma once

#include "catalogue/CatalogueEntry.h"
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
    /// Entries of a list's file, in their order; nothing for a file that is not there.
    [[nodiscard]] std::optional<QStringList> entries(const QString& name);
    /// What the section `Index` holds, in the order of the numbers.
    [[nodiscard]] QList<CatalogueEntry> stored();

    void click(int row);

    /// A tip stands in front of the next command, and counts as a box; the user goes on from it.
    void tip();

    /// Runs in the box, chooser or modal form of that number, counted from now on.
    void atBox(int number, std::function<void()> action);
    [[nodiscard]] int boxes() const { return m_boxes; }

    /// What a look at the world finds wrong, a line each.
    [[nodiscard]] QStringList faults();

    /// What the commands of this run may do.
    bool removesTrack = false;
    bool removesList = false;
    /// A text that the user gives comes to one of the lists.
    bool describes = false;
    /// Tracks in "/m" may be told to lie in "/n".
    bool remaps = false;
    /// The new track may come to the list that is in sight now.
    void addsTrack();

    FakeDesktop desktop;

private:
    void put(const QString& path, const QByteArray& bytes);
    void box();

    int m_boxes = 0;
    QStringList m_addsTo;
    QMap<int, std::function<void()>> m_atBox;
};

} // namespace orvantine::fake
