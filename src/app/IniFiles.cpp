#include "app/IniFiles.h"

#include "app/DataFolder.h"
#include "app/Dateiexistenz.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "platform/FileDirPath.h"

namespace orvantine::IniFiles {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype LongestValue = 254;

/// A write of `section`, unless it is known that what stands there must stay.
template <class Write>
bool written(Root& root, const QString& file, const QString& section, Write write)
{
    const bool isDatabase = FileDirPath::isSameFile(file, databaseFile(root));
    if (isDatabase && root.databaseDoubted) {
        root.files.noteFault(WriteFault::Disk);
        root.files.failWhole();
        return false;
    }
    const bool foreign = isDatabase && isForeign(root);
    // Its numbers are not those of the rows.
    if (foreign && section == u"Index"_s) {
        root.files.noteFault(WriteFault::Disk);
        root.files.failWhole();
        return false;
    }
    const bool done = write(root.services.profiles);
    // To take a key out of a file that is missing makes none.
    if (done && isDatabase && !foreign && root.databaseAwaited)
        root.databaseAwaited = !Dateiexistenz::FileExists(root, file);
    return done;
}

} // namespace

bool isForeign(const Root& root)
{
    return root.databaseAwaited && Dateiexistenz::FileExists(root, databaseFile(root));
}

QString ReadValue(const Root& root, const QString& file, const QString& section, const QString& key)
{
    // Required: a longer value loses its end without any message.
    return cutTo(root.services.profiles.value(file, section, key), LongestValue);
}

bool WriteValue(Root& root, const QString& file, const QString& section, const QString& key, const QString& value)
{
    return written(root, file, section,
                   [&](ProfileStore& profiles) { return profiles.setValue(file, section, key, value); });
}

bool DeleteKey(Root& root, const QString& file, const QString& section, const QString& key)
{
    return written(root, file, section, [&](ProfileStore& profiles) { return profiles.removeKey(file, section, key); });
}

bool DeleteSection(Root& root, const QString& file, const QString& section)
{
    return written(root, file, section, [&](ProfileStore& profiles) { return profiles.removeSection(file, section); });
}

} // namespace orvantine::IniFiles
