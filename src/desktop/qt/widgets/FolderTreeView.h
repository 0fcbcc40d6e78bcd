#pragma once

#include "desktop/qt/widgets/TreePlaces.h"
#include "platform/Bindings.h"

#include <QTreeWidget>

#include <memory>

namespace orvantine {

struct FolderTree;

/// Shows the folders of the machine below a root with the control's caption, and tells the control which one the user
/// selects. A folder is read when it is opened, in a thread of its own: one that does not answer holds up nobody.
/// A folder that the logic selects is shown at once, with those above it, before any of them has been read.
class FolderTreeView final : public QTreeWidget
{
public:
    FolderTreeView(FolderTree& control, QWidget* parent, const std::vector<TreePlace>& places = treePlaces(),
                   FolderReader reader = readFolder);
    ~FolderTreeView() override;

    /// The folder of an item; "" for the root and the headings.
    [[nodiscard]] static QByteArray pathOf(const QTreeWidgetItem& item);

private:
    class Mailbox;

    QTreeWidgetItem* addPlace(QTreeWidgetItem& above, const TreePlace& place);
    void open(QTreeWidgetItem* item);
    void fill(const QByteArray& path, const FolderListing& listing);
    void fillItem(QTreeWidgetItem& item, const FolderListing& listing);
    void reveal(const QString& folder);
    [[nodiscard]] QTreeWidgetItem* placeFor(const QByteArray& path) const;
    [[nodiscard]] QByteArray hostPath(const QString& folder) const;
    void take(QTreeWidgetItem* item);

    FolderTree& m_control;
    FolderReader m_reader;
    std::shared_ptr<Mailbox> m_mailbox;
    QTreeWidgetItem* m_root;
    bool m_revealing = false;
    /// The folder that the logic selected is kept in sight until the user goes to another one.
    bool m_following = false;
    Bindings m_bindings;
};

} // namespace orvantine
