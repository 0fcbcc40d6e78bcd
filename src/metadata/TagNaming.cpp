#include "metadata/TagNaming.h"

#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/IniFiles.h"
#include "app/Root.h"
#include "metadata/TrackInformation.h"
#include "shell/FeatureTips.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Stores what the labels say of the selected track as its name.
void nameByTag(Root& root)
{
    ListView& tracks = root.LListView2;
    const QString artist = root.sAnzeige[2].Caption;
    if (artist.isEmpty())
        return;
    const QString name = artist + u" - "_s + root.sAnzeige[1].Caption.value();
    const int row = tracks.selectedRow();
    IniFiles::WriteValue(root, databaseFile(root), u"TagInfo"_s, tracks.subItem(row, 3), name);
    tracks.setSubItem(row, 2, name);
}

} // namespace

void mnuSetTagName_Click(Root& root)
{
    if (root.mnuSpeichern.Tag != u"1"_s)
        ShowFeatureTip(root, 410);
    const QString dataFolder = root.tDatenbank.Text;
    if (Dateiexistenz::FileExists(root, databaseFile(root))) {
        // The next save takes the extras from the copy: half of one would lose them.
        const WholeChange whole(root.files);
        root.files.copy(dataFolder + u"Orvantine.dat"_s, dataFolder + u"Orvantine.bak"_s);
    }

    if (root.sAnzeige[2].Caption.value().isEmpty())
        return;
    ListView& tracks = root.LListView2;
    const ListView::Batch together(tracks);
    nameByTag(root);

    const int remembered = tracks.selectedRow();
    for (int row = 1; row <= tracks.count(); ++row) {
        if (root.services.events.ended())
            return;
        tracks.select(row);
        // Required: a row that cannot be read leaves the labels alone and gets the name of the row before it.
        ShowTrackInfo(root, row, 1);
        nameByTag(root);
    }
    tracks.select(remembered);
    ShowTrackInfo(root, remembered, 1);
}

void mnuSetFileName_Click(Root& root)
{
    ListView& tracks = root.LListView2;
    const int row = tracks.selectedRow();
    const QString path = tracks.subItem(row, 3);
    IniFiles::DeleteKey(root, databaseFile(root), u"TagInfo"_s, path);
    tracks.setSubItem(row, 2, FileDirPath::without(FileDirPath::FileNameOf(path), 4));
}

void mnuGetIDTag_Click(Root& root)
{
    ShowFeatureTip(root, 411);
    LoadMp3TagID(root);
}

void mnuDateiEigenschaften_Click(Root& root)
{
    ShowFeatureTip(root, 715);
    ShowProperties(root, root.LListView2.subItem(root.LListView2.selectedRow(), 3));
}

} // namespace orvantine
