#include "shell/SaveOptions.h"

#include "app/ColumnWidths.h"
#include "app/Command.h"
#include "app/PlayButtons.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "playback/PlaybackState.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

void writeFlag(Root& root, const QString& name, bool flag)
{
    writeSetting(root, name, static_cast<qint16>(flag ? 1 : 0));
}

void writeFlag(Root& root, const QString& name, const MenuItem& item)
{
    writeFlag(root, name, item.Checked.value());
}

void writeGeometry(Root& root)
{
    writeSetting(root, u"Maximized"_s, QString::number(static_cast<int>(root.State.value())));
    if (root.State.value() == WindowState::Minimized)
        root.State = WindowState::Normal;
    if (root.State.value() == WindowState::Maximized)
        return;
    writeSetting(root, u"Height"_s, QString::number(root.Height.value()));
    writeSetting(root, u"Width"_s, QString::number(root.Width.value()));
    writeSetting(root, u"Left"_s, QString::number(root.Left.value()));
    writeSetting(root, u"Top"_s, QString::number(root.Top.value()));
}

/// Until the user has chosen a font, the lists follow that of the desktop.
void writeFont(Root& root)
{
    const ListView& list = root.LListView1;
    if (list.FontName.value().isEmpty() || list.FontSize.value() <= 0)
        return;
    writeSetting(root, u"Fontname"_s, list.FontName.value());
    writeSetting(root, u"Fontsize"_s, QString::number(list.FontSize.value()));
}

void writeRepeatMode(Root& root)
{
    if (const int mode = repeatOf(root); mode > 0)
        writeSetting(root, u"ReCall"_s, static_cast<qint16>(mode));
}

} // namespace

void SaveOptions(Root& root)
{
    Command command(root);
    stopIfRunning(root);
    if (!command.yield())
        return;
    root.services.mediaplayer.close();
    root.pAnimation.stop();
    root.services.tray.remove();
    root.Tag = u"1"_s;
    if (!command.yield())
        return;
    stopIfRunning(root);

    writeGeometry(root);
    writeFont(root);
    saveColumnWidths(root);
    // A walk over the catalogue selects rows that nobody chose, and holds back what it would tell.
    if (root.LListView1.selectedRow() > 0)
        writeSetting(root, u"Index"_s,
                     static_cast<qint32>(root.indexToKeep.value_or(numberOf(root, root.LListView1.selectedRow()))));
    writeFlag(root, u"Suche"_s, root.mnuSuchDialog);
    writeFlag(root, u"Position"_s, root.mnuPositionen);
    writeRepeatMode(root);
    writeFlag(root, u"ShowFiles"_s, root.mnuOrvmenu[2]);
    writeFlag(root, u"Lokal"_s, root.mnuLokalePlayliste);
    writeFlag(root, u"Error"_s, root.errorsToKeep.value_or(root.mnuErrorDisplay.Checked.value()));
    writeFlag(root, u"Volume"_s, root.mnuLautstärke);
}

} // namespace orvantine
