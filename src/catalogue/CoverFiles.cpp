#include "catalogue/CoverFiles.h"

#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Root.h"
#include "platform/FileDirPath.h"

#include <QStringList>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int EndingWithPoint = 4;

QStringList coverEndings()
{
    return {u".jpg"_s, u".gif"_s, u".bmp"_s};
}

bool movePicture(Root& root, const QString& picture, const QString& moved)
{
    if (!root.files.copy(picture, moved))
        return false;
    // Required: the picture of a playlist that gets the name that it has goes. Names that differ in case alone are
    // one file, which stays.
    if (picture == moved || !FileDirPath::isSameFile(picture, moved))
        root.files.remove(picture);
    return true;
}

} // namespace

QString coverFile(const Root& root, const QString& playlistName)
{
    QString cover;
    if (!FileDirPath::canBeFileName(playlistName))
        return cover;
    for (const QString& ending : coverEndings()) {
        const QString candidate = resourceFile(root, playlistName + ending);
        if (Dateiexistenz::FileExists(root, candidate))
            cover = candidate;
    }
    return cover;
}

QString takeCover(Root& root, const QString& picture, const QString& playlistName)
{
    const QString name = playlistName + FileDirPath::FileNameOf(picture).right(EndingWithPoint);
    if (!FileDirPath::canBeFileName(name))
        return {};
    const QString cover = resourceFile(root, name);
    const WholeChange together(root.files);
    if (Dateiexistenz::FileExists(root, picture))
        root.files.copy(picture, cover);
    return Dateiexistenz::FileExists(root, cover) ? cover : QString();
}

bool renameCover(Root& root, const QString& from, const QString& to)
{
    const QString cover = coverFile(root, from);
    const QString name = to + cover.right(EndingWithPoint);
    return !cover.isEmpty() && FileDirPath::canBeFileName(name) && movePicture(root, cover, resourceFile(root, name));
}

void renameCovers(Root& root, const QString& from, const QString& to)
{
    if (!FileDirPath::canBeFileName(from) || !FileDirPath::canBeFileName(to))
        return;
    for (const QString& ending : coverEndings()) {
        const QString picture = resourceFile(root, from + ending);
        if (Dateiexistenz::FileExists(root, picture))
            movePicture(root, picture, resourceFile(root, to + ending));
    }
}

} // namespace orvantine
