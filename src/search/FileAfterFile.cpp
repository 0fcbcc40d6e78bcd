#include "search/FileAfterFile.h"

#include "app/Registry.h"
#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString DoublesSetting = u"CheckEntrys"_s;

} // namespace

bool changeAlone(Root& root, const std::function<bool()>& steps)
{
    bool done = false;
    std::optional<WriteFault> fault;
    {
        const PartChange alone(root.files);
        if (!steps())
            root.files.failWhole();
        done = !root.files.wholeFailed();
        fault = root.files.takeFault();
    }
    if (fault)
        root.files.noteFault(*fault);
    return done;
}

QString backupOfList(const QString& path)
{
    constexpr int Ending = 3;
    return path.size() < Ending ? QString() : path.chopped(Ending) + u"bak"_s;
}

DoublesUnasked::DoublesUnasked(Root& root)
    : m_root(root), m_before(root.services.settings.value(Hive::CurrentUser, settingsKey(), DoublesSetting))
{
    writeSetting(root, DoublesSetting, qint16{0});
}

DoublesUnasked::~DoublesUnasked()
{
    SettingsStore& settings = m_root.services.settings;
    if (m_before)
        settings.setValue(Hive::CurrentUser, settingsKey(), DoublesSetting, *m_before);
    else
        settings.removeValue(Hive::CurrentUser, settingsKey(), DoublesSetting);
}

} // namespace orvantine
