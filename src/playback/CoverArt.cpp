#include "playback/CoverArt.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Others.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueDatabase.h"
#include "catalogue/NewPlaylist.h"
#include "shell/FeatureTips.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString resourceFile(const Root& root, const QString& name)
{
    return FileDirPath::join(root.tDatenbank.Text.value() + u"Resource"_s, name);
}

QString selectedName(const Root& root)
{
    return root.LListView1.subItem(root.LListView1.selectedRow(), 1);
}

QString startFolder(const Root& root)
{
    QString folder = FileDirPath::FolderOf(root.LListView2.subItem(root.LListView2.selectedRow(), 3));
    // Required: the flag's value is taken as it stands.
    if (folder.isEmpty())
        folder = readSetting(root, u"FolderView"_s).text();
    return folder.isEmpty() ? SpecialFolder(root, 5) : folder;
}

} // namespace

QString coverFile(const Root& root, const QString& playlistName)
{
    QString cover;
    for (const QString& extension : {u".jpg"_s, u".gif"_s, u".bmp"_s}) {
        const QString candidate = resourceFile(root, playlistName + extension);
        if (Dateiexistenz::FileExists(root, candidate))
            cover = candidate;
    }
    return cover;
}

void showCoverPane(Root& root, bool on)
{
    constexpr Twips Margin = 855;
    root.pCoverBack.Visible = on;
    root.LSoundCaption.Width = root.xpFrame1.Width.value() - (on ? Margin + root.pCoverBack.Width.value() : Margin);
}

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
        pCovers_Click(root);
        return;
    }
    showCoverPane(root, true);
    root.mnuCoverShow.Checked = true;
}

void pCovers_Click(Root& root)
{
    ShowFeatureTip(root, 313);
    // Required: the guard of the commands that add playlists, although nothing is added here.
    if (root.LListView1.count() >= MostPlaylists)
        tellLimit(root);
    const QString name = selectedName(root);
    const std::optional<ChosenFile> chosen =
        root.services.choosers.openFile({.title = u" CD-Coverdatei auswählen"_s,
                                         .folder = startFolder(root),
                                         .fileName = {},
                                         .filter = u"Bilddateien|*.bmp; *.gif; *.jpg|Alle Dateitypen|*.*"_s,
                                         .defaultExtension = u"*.jpg"_s});
    if (!chosen || chosen->folder.isEmpty() || chosen->fileName.isEmpty())
        return;
    const QString copy = resourceFile(root, name + chosen->fileName.right(4));
    root.files.copy(FileDirPath::join(chosen->folder, chosen->fileName), copy);
    if (!Dateiexistenz::FileExists(root, copy) || selectedName(root) != name)
        return;
    root.pCovers.Picture = copy;
    showCoverPane(root, true);
    root.mnuCoverShow.Checked = true;
}

} // namespace orvantine
