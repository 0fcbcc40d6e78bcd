#include "app/IniFiles.h"

#include "app/Root.h"
#include "app/TextLimits.h"

namespace orvantine::IniFiles {

namespace {

constexpr qsizetype LongestValue = 254;

} // namespace

QString ReadValue(const Root& root, const QString& file, const QString& section, const QString& key)
{
    // Required: a longer value loses its end without any message.
    return cutTo(root.services.profiles.value(file, section, key), LongestValue);
}

bool WriteValue(Root& root, const QString& file, const QString& section, const QString& key, const QString& value)
{
    return root.services.profiles.setValue(file, section, key, value);
}

bool DeleteKey(Root& root, const QString& file, const QString& section, const QString& key)
{
    return root.services.profiles.removeKey(file, section, key);
}

bool DeleteSection(Root& root, const QString& file, const QString& section)
{
    return root.services.profiles.removeSection(file, section);
}

} // namespace orvantine::IniFiles
