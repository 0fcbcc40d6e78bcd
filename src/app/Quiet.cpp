#include "app/Quiet.h"

#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

QString reasonOf(WriteFault fault)
{
    switch (fault) {
    case WriteFault::NoRoom:
        return u"Der Datenträger ist voll."_s;
    case WriteFault::ReadOnlyDisk:
        return u"Der Datenträger ist schreibgeschützt."_s;
    case WriteFault::NoRights:
        return u"Die Datei ist schreibgeschützt, oder es fehlen die Rechte."_s;
    case WriteFault::Disk:
        return u"Der Datenträger meldet einen Fehler."_s;
    case WriteFault::NoSuchPlace:
        return u"Unter diesem Namen lässt sich keine Datei anlegen."_s;
    case WriteFault::NoSafePlace:
        return u"Die bisherige Fassung kann nicht aufbewahrt werden."_s;
    }
    return {};
}

void tellFault(Root& root)
{
    if (const std::optional<WriteFault> fault = root.files.takeFault())
        showQuietly(root, u"Nicht gespeichert: "_s + reasonOf(*fault));
}

void showQuietly(Root& root, const QString& text)
{
    root.quietLine.Caption = text;
    root.quietLine.Visible = !text.isEmpty();
    // A line that follows another one gets its whole time.
    root.quietTimer.Enabled = false;
    root.quietTimer.Enabled = !text.isEmpty();
}

void quietTimer_Tick(Root& root)
{
    showQuietly(root, {});
}

} // namespace orvantine
