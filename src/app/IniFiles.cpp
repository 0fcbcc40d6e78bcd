#include "app/IniFiles.h"

#include "app/DataFolder.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "platform/FileDirPath.h"

namespace orvantine::IniFiles {

namespace {

constexpr qsizetype LongestValue = 254;

/// What may be written of a database that could not be read is not known.
bool mayWrite(const Root& root, const QString& file)
{
    const bool isDatabase = FileDirPath::isSameFile(file, databaseFile(root));
    const bool may = !root.databaseDoubted || !isDatabase;
    if (!may) {
        root.files.noteFault(WriteFault::Disk);
        root.files.failWhole();
    }
    return may;
}

} // namespace

QString ReadValue(const Root& root, const QString& file, const QString& section, const QString& key)
{
    // Required: a longer value loses its end without any message.
    return cutTo(root.services.profiles.value(file, section, key), LongestValue);
}

bool WriteValue(Root& root, const QString& file, const QString& section, const QString& key, const QString& value)
{
    return mayWrite(root, file) && root.services.profiles.setValue(file, section, key, value);
}

bool DeleteKey(Root& root, const QString& file, const QString& section, const QString& key)
{
    return mayWrite(root, file) && root.services.profiles.removeKey(file, section, key);
}

bool DeleteSection(Root& root, const QString& file, const QString& section)
{
    return mayWrite(root, file) && root.services.profiles.removeSection(file, section);
}

} // namespace orvantine::IniFiles
