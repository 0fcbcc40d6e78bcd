#include "operations/mnuEditCopy.h"

#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "metadata/SelectedTrack.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool catalogueIsActive(const Root& root)
{
    return root.mnuEditCopy.Tag == u"1"_s;
}

bool tracksAreActive(const Root& root)
{
    return root.mnuEditCopy.Tag == u"2"_s;
}

} // namespace

void mnuEditCopy_Click(Root& root)
{
    if (!listIsActive(root))
        return;
    QString text;
    if (catalogueIsActive(root))
        text = selectedName(root);
    else if (tracksAreActive(root))
        text = selectedTrackPath(root);
    root.services.clipboard.setText(text);
}

void mnuEditKill_Click(Root& root)
{
    if (catalogueIsActive(root))
        root.mnuLöschen.press();
    else if (tracksAreActive(root))
        root.mnuFileKill.press();
}

bool listIsActive(const Root& root)
{
    return !root.mnuEditCopy.Tag.isEmpty();
}

void noteFocus(Root& root, int list)
{
    root.mnuEditCopy.Tag = QString::number(list);
}

} // namespace orvantine
