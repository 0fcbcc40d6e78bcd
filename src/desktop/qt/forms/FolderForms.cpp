#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/FolderTreeView.h"
#include "platform/FileDirPath.h"
#include "transfer/FolderDialogs.h"

#include <QDir>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// A path that is typed is the quickest way to a folder that is known. Enter goes there; once it is shown, Enter takes
/// it. A text that names no folder leads nowhere.
class PathField final : public QLineEdit
{
public:
    PathField(FormWindow& window, FolderTree& tree) : QLineEdit(&window), m_tree(tree)
    {
        setObjectName(u"pathField"_s);
        setAccessibleName(u"Pfad des Ordners"_s);
        setPlaceholderText(u"Pfad des Ordners"_s);
        window.bindings().follow(tree.SelectedFolder, [this](const QString& folder) { setText(folder); });
        connect(this, &QLineEdit::editingFinished, this, [this] { go(); });
    }

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (!enter || text() == m_tree.SelectedFolder.value())
            return QLineEdit::keyPressEvent(event);
        go();
        event->accept();
    }

private:
    void go()
    {
        if (text() == m_tree.SelectedFolder.value())
            return;
        const QString folder = text().startsWith(u'/') ? QDir::cleanPath(text()) : text();
        const bool known = FileDirPath::isAbsolute(folder) &&
                           (QDir(folder).exists() || (m_tree.NativePath && m_tree.NativePath(folder)));
        if (!known) {
            setText(m_tree.SelectedFolder.value());
            return;
        }
        m_tree.SelectedFolder = folder;
        setText(folder);
        if (m_tree.Change)
            m_tree.Change();
    }

    FolderTree& m_tree;
};

} // namespace

void buildFolderDialog(FormWindow& window)
{
    auto& form = static_cast<FolderDialog&>(window.form());
    FolderTreeView* const tree = window.addFolderTree(form.LTreeview);
    tree->setMinimumSize(360, 320);
    window.content().addWidget(new PathField(window, form.LTreeview));
    window.content().addWidget(tree, 1);

    QPushButton* const ready = window.addButton(form.BReady);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    ready->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({}, {ready, cancel});
    tree->setFocus();
}

} // namespace orvantine
