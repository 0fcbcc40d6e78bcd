#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/FolderTreeView.h"
#include "transfer/FolderDialogs.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

void buildFolderDialog(FormWindow& window)
{
    auto& form = static_cast<FolderDialog&>(window.form());
    FolderTreeView* const tree = window.addFolderTree(form.LTreeview);
    tree->setMinimumSize(360, 320);
    window.content().addWidget(tree, 1);

    QPushButton* const ready = window.addButton(form.BReady);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    ready->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({}, {ready, cancel});
    tree->setFocus();
}

} // namespace orvantine
