#include "operations/mnuBeschriftung.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Root.h"
#include "catalogue/CatalogueEntry.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/CoverFiles.h"
#include "catalogue/PlaylistTexts.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The description of the row: what the label shows where it tells of that row, else what is stored. "" for a hint.
QString descriptionOf(const Root& root, int row)
{
    const QString text = labelsTellOf(root, row)
                             ? root.LSoundCaption.Caption.value()
                             : indexValue(root, databaseFile(root), numberOf(root, row), EntryKey::Description);
    return isHint(text) ? QString() : text;
}

bool isSelected(const Root& root, int row, const RowIdentity& playlist)
{
    return root.LListView1.selectedRow() == row && identityOf(root, row) == playlist;
}

/// Asks whether the description is to go; takes it away.
void removeDescription(Root& root, Command& command, int row)
{
    const RowIdentity playlist = identityOf(root, row);
    const std::optional<Answer> answer =
        command.ask({.text = u"Möchten Sie die Beschreibung der Playliste wirklich löschen ?   "_s,
                     .title = u" Beschreibung entfernen"_s,
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::YesNo});
    if (!answer || answer == Answer::No || identityOf(root, row) != playlist)
        return;
    deleteIndexValue(root, databaseFile(root), numberOf(root, row), EntryKey::Description);
    // The label tells of the row that the sequence has gone on to.
    if (isSelected(root, row, playlist))
        showHintForDescription(root);
}

} // namespace

void mnuBeschriftung_Click(Root& root)
{
    const int row = root.LListView1.selectedRow();
    if (row == 0)
        return;

    const RowIdentity playlist = identityOf(root, row);
    const QString present = descriptionOf(root, row);
    Command command(root);
    const std::optional<QString> entered = command.enter(
        u"Geben Sie bitte eine Beschreibung für die Wiedergabeliste ein:"_s, u" Beschreibung der Playliste"_s, present);
    // While the box was up the sequence may have gone on to another row.
    if (!entered || !isSelected(root, row, playlist))
        return;

    if (entered->isEmpty() && !present.isEmpty())
        return removeDescription(root, command, row);
    if (entered->isEmpty())
        return showHintForDescription(root);

    writeIndexValue(root, databaseFile(root), numberOf(root, row), EntryKey::Description, *entered);
    root.LSoundCaption.Caption = *entered;
    root.LSoundCaption.Tag = u"1"_s;

    if (coverFile(root, playlist.name).isEmpty() &&
        command.ask({.text = u"Möchten Sie zu dem Album ein CD-Cover hinzufügen ?   "_s,
                     .title = u" Beschreibung der Playliste"_s,
                     .icon = MessageIcon::Question,
                     .buttons = MessageButtons::YesNo}) == Answer::Yes &&
        isSelected(root, row, playlist))
        root.pCovers.Click();
}

} // namespace orvantine
