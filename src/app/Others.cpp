#include "app/Others.h"

#include "app/Registry.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

QString WindowsFolder(const Root& root)
{
    return root.services.folders.windows;
}

QString TempFolder(const Root& root)
{
    return root.services.folders.temp;
}

QString SpecialFolder(const Root& root, int csidl)
{
    switch (csidl) {
    case Csidl::Documents:
        return root.services.folders.documents;
    case Csidl::ApplicationData:
        return root.services.folders.applicationData;
    default:
        return {};
    }
}

QString chooserFolder(const Root& root, const QString& folder)
{
    if (!folder.isEmpty())
        return folder;
    // Required: the flag's value is taken as it stands.
    const QString view = readSetting(root, u"FolderView"_s).text();
    return view.isEmpty() ? SpecialFolder(root, Csidl::Documents) : view;
}

QString WinVersionen(const SystemVersion& version)
{
    if (version.platform == 0)
        return u"Windows 16bit mit 32bit-Erweiterung"_s;
    if (version.platform == 1) {
        switch (version.minor) {
        case 0:
            return u"95"_s;
        case 10:
            return u"98"_s;
        case 90:
            return u"Me"_s;
        default:
            return u"Unknown"_s;
        }
    }
    if (version.platform == 2 && version.major > 4)
        return u"XP"_s;
    return u"Unknown"_s;
}

void FontWinRegister(Root& root, const QString& path)
{
    root.services.fonts.registerFont(path);
}

} // namespace orvantine
