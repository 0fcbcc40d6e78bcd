#include "metadata/TrackNames.h"

#include "app/IniFiles.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

QString storedTrackName(const Root& root, const QString& database, const QString& path)
{
    return IniFiles::ReadValue(root, database, u"TagInfo"_s, path);
}

void storeTrackName(Root& root, const QString& database, const QString& path, const QString& name)
{
    IniFiles::WriteValue(root, database, u"TagInfo"_s, path, name);
}

void forgetTrackName(Root& root, const QString& database, const QString& path)
{
    IniFiles::DeleteKey(root, database, u"TagInfo"_s, path);
}

QString nameByLabels(const Root& root)
{
    return root.sAnzeige[2].Caption.value() + u" - "_s + root.sAnzeige[1].Caption.value();
}

} // namespace orvantine
