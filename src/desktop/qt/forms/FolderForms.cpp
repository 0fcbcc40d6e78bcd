#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/FolderTreeView.h"
#include "transfer/FolderDialogs.h"

#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// A path that is typed is the quickest way to a folder that is known.
QLineEdit* makePathField(FormWindow& window, FolderTree& tree)
{
    auto* const field = new QLineEdit(&window);
    field->setObjectName(u"pathField"_s);
    field->setAccessibleName(u"Pfad des Ordners"_s);
    field->setPlaceholderText(u"Pfad des Ordners"_s);
    window.bindings().follow(tree.SelectedFolder, [field](const QString& folder) {
        if (field->text() != folder)
            field->setText(folder);
    });
    const auto go = [field, &tree] {
        if (field->text() == tree.SelectedFolder.value() || field->text().isEmpty())
            return;
        tree.SelectedFolder = field->text();
        if (tree.Change)
            tree.Change();
    };
    QObject::connect(field, &QLineEdit::editingFinished, field, go);
    return field;
}

} // namespace

void buildFolderDialog(FormWindow& window)
{
    auto& form = static_cast<FolderDialog&>(window.form());
    FolderTreeView* const tree = window.addFolderTree(form.LTreeview);
    tree->setMinimumSize(360, 320);
    window.content().addWidget(makePathField(window, form.LTreeview));
    window.content().addWidget(tree, 1);

    QPushButton* const ready = window.addButton(form.BReady);
    QPushButton* const cancel = window.addButton(form.bAbbrechen);
    ready->setDefault(true);
    window.setCancel(cancel);
    window.addButtons({}, {ready, cancel});
    tree->setFocus();
}

} // namespace orvantine
