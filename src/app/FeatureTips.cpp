#include "app/FeatureTips.h"

#include "app/Command.h"
#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Direkthilfe.h"
#include "app/IniFiles.h"
#include "app/Registry.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The file of the tips, or what somebody has put in its place: one of that size is none.
bool isThere(const Root& root, const QString& tips)
{
    constexpr qint64 LargestFile = qint64{1} << 20;
    return Dateiexistenz::FileExists(root, tips) && root.files.size(tips).value_or(0) <= LargestFile;
}

} // namespace

bool ShowFeatureTip(Root& root, int id)
{
    return ShowFeatureTip(root, id, id);
}

bool ShowFeatureTip(Root& root, int gate, int shown)
{
    Direkthilfe& form = *root.direkthilfe;
    const QString tips = programFile(root, root.services.start.stem + u".tip"_s);
    // The start clicks commands as a user would. A tip that is up keeps its texts.
    if (!root.loaded || form.Visible.value() || !isThere(root, tips) || DirektHilfen(root, gate) != 1)
        return !root.services.events.ended();
    const auto text = [&root, &tips, shown](QChar key) {
        return IniFiles::ReadValue(root, tips, u"Tips"_s, QString::number(shown) + key);
    };
    form.RHelpID.Caption = QString::number(shown);
    form.Caption = u"Orvanten Manager\r"_s + text(u'a');
    form.RText.Caption = text(u'b') + u"\n\n"_s + text(u'c');
    return Command(root).showModal(form);
}

int DirektHilfen(const Root& root, int id)
{
    int result = 0;
    const Setting own = readSetting(root, QString::number(id));
    if (!own.present || own.is(0))
        result = 1;
    if (readSetting(root, u"HelpDirekt"_s).is(1))
        result = 0;
    return result;
}

} // namespace orvantine
