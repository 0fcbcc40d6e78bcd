#include "desktop/qt/widgets/FolderTreeView.h"

#include "desktop/qt/widgets/Theme.h"
#include "platform/Controls.h"

#include <QCoreApplication>
#include <QFile>
#include <QHash>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QTreeWidgetItemIterator>

#include <mutex>
#include <thread>
#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int PathRole = Qt::UserRole;
constexpr int StateRole = Qt::UserRole + 1;

enum ReadState : int { Unread, Reading, Read };

QTreeWidgetItem* makeItem(const QString& text, const QByteArray& path, const QString& icon)
{
    auto* const item = new QTreeWidgetItem({text});
    item->setData(0, PathRole, path);
    item->setIcon(0, Theme::icon(icon));
    if (!path.isEmpty()) {
        item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
        item->setToolTip(0, folderText(path));
    }
    return item;
}

QByteArray joined(const QByteArray& folder, const QByteArray& name)
{
    return folder.endsWith('/') ? folder + name : folder + '/' + name;
}

bool isBelow(const QByteArray& path, const QByteArray& folder)
{
    return path == folder || path.startsWith(joined(folder, {}));
}

/// The path as the items bear it, in which one separator follows a name: a level more would never be reached.
QByteArray plain(const QByteArray& path)
{
    QByteArray result;
    result.reserve(path.size());
    for (const char byte : path)
        if (byte != '/' || !result.endsWith('/'))
            result += byte;
    if (result.size() > 1 && result.endsWith('/'))
        result.chop(1);
    return result;
}

QTreeWidgetItem* childOf(const QTreeWidgetItem& item, const QByteArray& path)
{
    for (int i = 0; i < item.childCount(); ++i)
        if (FolderTreeView::pathOf(*item.child(i)) == path)
            return item.child(i);
    return nullptr;
}

void stateOf(QTreeWidgetItem& item, ReadState state)
{
    item.setData(0, StateRole, static_cast<int>(state));
}

} // namespace

/// Where the threads leave what they have read. It outlives the tree, for a thread may come back much later.
class FolderTreeView::Mailbox
{
public:
    explicit Mailbox(FolderTreeView& tree) : m_tree(&tree) {}

    void close()
    {
        const std::lock_guard guard(m_lock);
        m_tree = nullptr;
    }

    void deliver(const QByteArray& path, FolderListing listing)
    {
        const std::lock_guard guard(m_lock);
        if (m_tree != nullptr)
            QMetaObject::invokeMethod(
                m_tree, [tree = m_tree, path, listing = std::move(listing)] { tree->fill(path, listing); },
                Qt::QueuedConnection);
    }

private:
    std::mutex m_lock;
    FolderTreeView* m_tree;
};

FolderTreeView::FolderTreeView(FolderTree& control, QWidget* parent, const std::vector<TreePlace>& places,
                               FolderReader reader)
    : QTreeWidget(parent),
      m_control(control),
      m_reader(std::move(reader)),
      m_mailbox(std::make_shared<Mailbox>(*this)),
      m_root(makeItem({}, {}, u"computer"_s))
{
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setAutoExpandDelay(-1);
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    setAccessibleName(u"Ordner"_s);

    addTopLevelItem(m_root);
    QTreeWidgetItem* network = nullptr;
    for (const TreePlace& place : places) {
        if (place.network && network == nullptr) {
            network = makeItem(u"Netzwerk"_s, {}, u"network-workgroup"_s);
            m_root->addChild(network);
        }
        addPlace(place.network ? *network : *m_root, place);
    }
    m_root->setExpanded(true);
    if (network != nullptr)
        network->setExpanded(true);

    connect(this, &QTreeWidget::itemExpanded, this, &FolderTreeView::open);
    connect(this, &QTreeWidget::currentItemChanged, this, &FolderTreeView::take);
    m_bindings.follow(control.RootCaption, [this](const QString& caption) { m_root->setText(0, caption); });
    m_bindings.follow(control.SelectedFolder, [this](const QString& folder) { reveal(folder); });
}

FolderTreeView::~FolderTreeView()
{
    m_mailbox->close();
}

QByteArray FolderTreeView::pathOf(const QTreeWidgetItem& item)
{
    return item.data(0, PathRole).toByteArray();
}

QTreeWidgetItem* FolderTreeView::addPlace(QTreeWidgetItem& above, const TreePlace& place)
{
    QTreeWidgetItem* const item = makeItem(place.name, place.path, place.icon);
    above.addChild(item);
    return item;
}

void FolderTreeView::open(QTreeWidgetItem* item)
{
    const QByteArray path = pathOf(*item);
    if (path.isEmpty() || item->data(0, StateRole).toInt() != Unread)
        return;
    stateOf(*item, Reading);
    std::thread([mailbox = m_mailbox, reader = m_reader, path] { mailbox->deliver(path, reader(path)); }).detach();
}

void FolderTreeView::fill(const QByteArray& path, const FolderListing& listing)
{
    const QScopedValueRollback quiet(m_revealing, true);
    for (QTreeWidgetItemIterator item(this); *item != nullptr; ++item)
        if (pathOf(**item) == path && (*item)->data(0, StateRole).toInt() == Reading)
            fillItem(**item, listing);
    // What came in above it pushed the selected folder down.
    if (m_following && currentItem() != nullptr)
        scrollToItem(currentItem(), QAbstractItemView::PositionAtCenter);
}

void FolderTreeView::fillItem(QTreeWidgetItem& item, const FolderListing& listing)
{
    stateOf(item, Read);
    const QByteArray path = pathOf(item);
    // The way down to the selected folder stands already, be it hidden or not: the others come in around it.
    QHash<QByteArray, QTreeWidgetItem*> shown;
    for (int i = 0; i < item.childCount(); ++i)
        shown.insert(pathOf(*item.child(i)), item.child(i));
    QList<QTreeWidgetItem*> waiting;
    for (const FolderEntry& entry : listing.folders) {
        const QByteArray childPath = joined(path, entry.name);
        QTreeWidgetItem* child = shown.value(childPath);
        if (child != nullptr) {
            item.insertChildren(item.indexOfChild(child), std::exchange(waiting, {}));
        } else {
            child = makeItem(folderText(entry.name), childPath, u"folder"_s);
            waiting.append(child);
        }
        if (entry.loop && child->childCount() == 0) {
            child->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
            stateOf(*child, Read);
        }
    }
    item.addChildren(waiting);
    item.setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicatorWhenChildless);
    if (!listing.readable)
        item.setToolTip(0, folderText(path) + u"\nDer Ordner kann nicht gelesen werden."_s);
}

QTreeWidgetItem* FolderTreeView::placeFor(const QByteArray& path) const
{
    QTreeWidgetItem* best = nullptr;
    const auto consider = [&](QTreeWidgetItem* item) {
        const QByteArray place = pathOf(*item);
        if (!place.isEmpty() && isBelow(path, place) && (best == nullptr || place.size() > pathOf(*best).size()))
            best = item;
    };
    for (int i = 0; i < m_root->childCount(); ++i) {
        consider(m_root->child(i));
        if (pathOf(*m_root->child(i)).isEmpty())
            for (int j = 0; j < m_root->child(i)->childCount(); ++j)
                consider(m_root->child(i)->child(j));
    }
    return best;
}

void FolderTreeView::reveal(const QString& folder)
{
    if (m_revealing)
        return;
    const QScopedValueRollback quiet(m_revealing, true);
    const QByteArray path = plain(hostPath(folder));
    QTreeWidgetItem* item = path.startsWith('/') ? placeFor(path) : nullptr;
    if (item == nullptr) {
        setCurrentItem(m_root);
        return;
    }
    while (pathOf(*item) != path) {
        const QByteArray above = joined(pathOf(*item), {});
        const qsizetype slash = path.indexOf('/', above.size());
        const QByteArray next = slash < 0 ? path : path.left(slash);
        QTreeWidgetItem* child = childOf(*item, next);
        if (child == nullptr) {
            child = makeItem(folderText(next.mid(above.size())), next, u"folder"_s);
            item->addChild(child);
        }
        item->setExpanded(true);
        open(item);
        item = child;
    }
    m_following = true;
    setCurrentItem(item);
    scrollToItem(item, QAbstractItemView::PositionAtCenter);
}

/// The text stays the control's; a folder has one place in the tree, whatever text led to it.
QByteArray FolderTreeView::hostPath(const QString& folder) const
{
    if (const auto& native = m_control.NativePath)
        if (const std::optional<QByteArray> found = native(folder))
            return *found;
    return QFile::encodeName(folder).replace('\\', '/');
}

void FolderTreeView::take(QTreeWidgetItem* item)
{
    if (m_revealing || item == nullptr)
        return;
    const QScopedValueRollback quiet(m_revealing, true);
    m_following = false;
    m_control.SelectedFolder = folderText(pathOf(*item));
    if (m_control.Change)
        m_control.Change();
}

} // namespace orvantine
