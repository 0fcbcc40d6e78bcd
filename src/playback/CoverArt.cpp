#include "playback/CoverArt.h"

#include "app/Command.h"
#include "app/FeatureTips.h"
#include "app/Others.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "catalogue/CoverFiles.h"
#include "catalogue/NewPlayliste.h"
#include "metadata/SelectedTrack.h"
#include "platform/FileDirPath.h"
#include "platform/Pictures.h"
#include "playback/CoverPane.h"

#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Loads the file anew even if one of its name is shown already: its content may be another.
void showPicture(Root& root, const QString& file)
{
    root.pCovers.Picture = QString();
    root.pCovers.Picture = file;
}

} // namespace

void mnuCoverShow_Click(Root& root)
{
    if (root.mnuCoverShow.Checked.value()) {
        showCoverPane(root, false);
        root.mnuCoverShow.Checked = false;
        return;
    }
    if (root.LListView1.count() == 0)
        return;
    if (coverFile(root, selectedName(root)).isEmpty()) {
        root.pCovers.Click();
        return;
    }
    showCoverPane(root, true);
    root.mnuCoverShow.Checked = true;
}

void pCovers_Click(Root& root)
{
    // Without a playlist there is nothing that a cover could belong to.
    const QString name = selectedName(root);
    if (name.isEmpty())
        return;
    if (!ShowFeatureTip(root, 313))
        return;
    Command command(root);
    // Required: the guard of the commands that add playlists, although nothing is added here.
    if (!mayAddRow(root, command) && command.ended())
        return;
    const std::optional<ChosenFile> chosen =
        command.openFile({.title = u" CD-Coverdatei auswählen"_s,
                          .folder = chooserFolder(root, FileDirPath::FolderOf(selectedTrackPath(root))),
                          .fileName = {},
                          .filter = CoverFilter.toString(),
                          .defaultExtension = u"*.jpg"_s});
    // The folder of a file at the top of the file system is "".
    if (!chosen || chosen->fileName.isEmpty())
        return;
    const QString copy = takeCover(root, FileDirPath::join(chosen->folder, chosen->fileName), name);
    // While the chooser was up the sequence may have gone on to another row.
    if (copy.isEmpty() || selectedName(root) != name)
        return;
    showPicture(root, copy);
    showCoverPane(root, true);
    root.mnuCoverShow.Checked = true;
}

void HelpDblClick(Root& root)
{
    root.pCovers.Click();
}

void pCovers_MouseDown(Root& root, MouseButton button)
{
    const QString name = selectedName(root);
    if (button != MouseButton::Right || name.isEmpty())
        return;
    Command command(root);
    if (command.ask({.text = u"Möchten Sie das CD-Cover für diese Wiedergabeliste wirklich löschen ?   "_s,
                     .title = u" CD-Cover löschen"_s,
                     .icon = MessageIcon::Exclamation,
                     .buttons = MessageButtons::YesNo}) != Answer::Yes)
        return;

    const QString cover = coverFile(root, name);

    // The picture of a row that the sequence has gone on to stays.
    if (selectedName(root) == name) {
        root.pCovers.Picture = QString();
        // Required: the width of the description and the check stay.
        root.pCoverBack.Visible = false;
    }
    root.files.remove(cover);
}

void FindPicture(Root& root, const QString& folder)
{
    const QString path = std::exchange(root.LMp3Files.Path, folder);
    const QString pattern = std::exchange(root.LMp3Files.Pattern, FolderPictures.toString());
    const QStringList pictures = root.files.list(root.LMp3Files.Path, root.LMp3Files.Pattern);

    if (!pictures.isEmpty()) {
        const QString picture = FileDirPath::join(folder, pictures.front());
        showPicture(root, takeCover(root, picture, selectedName(root)));
        // Required: the pane comes up even if the picture could not be taken over.
        showCoverPane(root, true);
        root.mnuCoverShow.Checked = true;
    } else if (root.mnuCoverShow.Checked.value()) {
        root.mnuCoverShow.Click();
    }

    root.LMp3Files.Path = path;
    root.LMp3Files.Pattern = pattern;
}

void GetPicture(Root& root, const QString& format, int id)
{
    // Required: the resources are numbered from 21 on.
    constexpr int FirstNumber = 20;
    const QByteArray picture = pictureResource(format, id + FirstNumber);
    if (picture.isEmpty())
        return;

    const QString file = u"Temp."_s + format;
    root.files.writeBytes(file, picture);

    root.pTrayicon.Picture = QString();
    root.pTrayicon.Picture = file;

    root.files.remove(file);
}

void LoadGIF(Root& root, int id)
{
    GetPicture(root, u"GIF"_s, id);
}

void LoadJPG(Root& root, int id)
{
    GetPicture(root, u"JPG"_s, id);
}

void Command1_Click(Root& root)
{
    if (root.pPausePlayer.Enabled.value())
        LoadJPG(root, 1);
}

} // namespace orvantine
