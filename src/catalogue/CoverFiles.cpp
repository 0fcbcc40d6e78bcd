#include "catalogue/CoverFiles.h"

#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/FileDirPath.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

QString coverFile(const Root& root, const QString& playlistName)
{
    QString cover;
    if (!FileDirPath::canBeFileName(playlistName))
        return cover;
    for (const QString& extension : {u".jpg"_s, u".gif"_s, u".bmp"_s}) {
        const QString candidate = resourceFile(root, playlistName + extension);
        if (Dateiexistenz::FileExists(root, candidate))
            cover = candidate;
    }
    return cover;
}

QString takeCover(Root& root, const QString& picture, const QString& playlistName)
{
    constexpr int ExtensionWithPoint = 4;
    const QString name = playlistName + FileDirPath::FileNameOf(picture).right(ExtensionWithPoint);
    if (!FileDirPath::canBeFileName(name))
        return {};
    const QString cover = resourceFile(root, name);
    const WholeChange together(root.files);
    if (Dateiexistenz::FileExists(root, picture))
        root.files.copy(picture, cover);
    return Dateiexistenz::FileExists(root, cover) ? cover : QString();
}

} // namespace orvantine
