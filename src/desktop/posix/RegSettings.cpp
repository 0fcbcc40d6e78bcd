#include "desktop/posix/RegSettings.h"

#include "desktop/posix/AtomicFile.h"
#include "desktop/posix/Autostart.h"
#include "desktop/posix/Descriptor.h"
#include "platform/CaseFold.h"

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <utility>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

constexpr auto userHive = "HKEY_CURRENT_USER"_L1;
constexpr auto runKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Run"_L1;
constexpr auto runValue = "Orvantinen"_L1;
constexpr auto shellKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders"_L1;
constexpr auto userShellKey = "Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\User Shell Folders"_L1;

QString withoutEnd(const QString& key)
{
    QString result = key;
    while (result.endsWith(u'\\'))
        result.chop(1);
    return result;
}

QString pathOf(const QString& key)
{
    const QString rest = withoutEnd(key);
    return rest.isEmpty() ? QString(userHive) : userHive + u'\\' + rest;
}

bool sameText(const QString& a, QLatin1StringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

bool isShellKey(const QString& key)
{
    return sameText(withoutEnd(key), shellKey) || sameText(withoutEnd(key), userShellKey);
}

bool isAutostart(const QString& key, const QString& name)
{
    return sameText(withoutEnd(key), runKey) && sameText(name, runValue);
}

// Also for the keys above the one that is there.
bool reaches(const QString& there, const QString& wanted)
{
    return there == wanted || there.startsWith(wanted + u'\\');
}

SettingValue textValue(const QString& text)
{
    return {SettingType::String, text, {}};
}

bool sameStamp(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino && a.st_size == b.st_size &&
           a.st_mtim.tv_sec == b.st_mtim.tv_sec && a.st_mtim.tv_nsec == b.st_mtim.tv_nsec &&
           a.st_ctim.tv_sec == b.st_ctim.tv_sec && a.st_ctim.tv_nsec == b.st_ctim.tv_nsec;
}

// A file that changed within the last seconds can change once more under the same time.
bool isSettled(const struct stat& info)
{
    timespec now = {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return now.tv_sec > info.st_mtim.tv_sec + 3 || now.tv_sec + 3 < info.st_mtim.tv_sec;
}

// What was damaged stays beside the new file, under the first free number.
bool putAside(const QByteArray& path)
{
    // The file itself, not a link that leads to it.
    const QByteArray real = realPath(path);
    for (int number = 1; number < 1000; ++number) {
        const QByteArray aside = path + u".beschädigt-"_s.toUtf8() + QByteArray::number(number);
        struct stat info = {};
        if (::lstat(aside.constData(), &info) == 0)
            continue;
        QByteArray bytes;
        return ::link(real.constData(), aside.constData()) == 0 ||
               (readSmallFile(path, bytes) && writeAtomically(aside, bytes));
    }
    return false;
}

} // namespace

RegSettings::RegSettings(RegSettingsOptions options) : m_options(std::move(options)) {}

bool RegSettings::load() const
{
    const QByteArray path = m_options.file.toUtf8();
    struct stat info = {};
    if (::stat(path.constData(), &info) != 0) {
        m_known = false;
        m_text = RegText();
        return errno == ENOENT || errno == ENOTDIR;
    }
    if (m_known && sameStamp(info, m_stamp))
        return true;
    QByteArray bytes;
    if (!readSmallFile(path, bytes)) {
        m_known = false;
        m_text = RegText();
        return false;
    }
    m_text = RegText::parse(bytes);
    m_stamp = info;
    m_known = isSettled(info);
    return true;
}

bool RegSettings::save(const RegText& fresh)
{
    const QByteArray path = m_options.file.toUtf8();
    struct stat info = {};
    const bool worthKeeping = m_text.damaged && ::stat(path.constData(), &info) == 0 && info.st_size > 0;
    if (worthKeeping && !putAside(path))
        return false;
    m_known = false;
    return writeAtomically(path, fresh.print());
}

bool RegSettings::keyExists(Hive hive, const QString& key) const
{
    if (hive != Hive::CurrentUser)
        return false;
    const QString wanted = folded(pathOf(key));
    if (wanted == folded(QString(userHive)) || isShellKey(key))
        return true;
    for (const QLatin1StringView there : {runKey, shellKey, userShellKey}) {
        if (reaches(folded(pathOf(there)), wanted))
            return true;
    }
    static_cast<void>(load());
    return std::any_of(m_text.keys.begin(), m_text.keys.end(),
                       [&wanted](const RegKey& there) { return reaches(folded(there.path), wanted); });
}

bool RegSettings::createKey(Hive hive, const QString& key)
{
    const QString path = pathOf(key);
    if (hive != Hive::CurrentUser || !RegText::canHold(path) || keyExists(hive, key) || !load())
        return false;
    RegText fresh = m_text;
    fresh.keys.push_back({path, {}});
    return save(fresh);
}

std::optional<SettingValue> RegSettings::value(Hive hive, const QString& key, const QString& name) const
{
    if (hive != Hive::CurrentUser)
        return std::nullopt;
    if (isShellKey(key)) {
        for (auto folder = m_options.shellFolders.cbegin(); folder != m_options.shellFolders.cend(); ++folder) {
            if (folded(folder.key()) == folded(name) && !folder.value().isEmpty())
                return textValue(folder.value());
        }
        return std::nullopt;
    }
    if (isAutostart(key, name)) {
        const std::optional<QString> command = Autostart(m_options.autostartFolder, m_options.program).command();
        return command ? std::optional(textValue(*command)) : std::nullopt;
    }
    static_cast<void>(load());
    const RegKey* const found = std::as_const(m_text).key(pathOf(key));
    const RegValue* const value = found != nullptr ? findValue(*found, name) : nullptr;
    return value != nullptr ? std::optional(value->value) : std::nullopt;
}

bool RegSettings::setValue(Hive hive, const QString& key, const QString& name, const SettingValue& value)
{
    if (hive != Hive::CurrentUser || isShellKey(key))
        return false;
    if (isAutostart(key, name))
        return Autostart(m_options.autostartFolder, m_options.program).setCommand(value.text);
    if (!RegText::canHold(name) || !keyExists(hive, key) || !load())
        return false;
    RegText fresh = m_text;
    const QString path = pathOf(key);
    if (fresh.key(path) == nullptr) // one above a stored key, or one of the desktop's
        fresh.keys.push_back({path, {}});
    RegKey& target = *fresh.key(path);
    if (RegValue* const known = findValue(target, name)) {
        if (known->value == value)
            return true;
        known->value = value;
    } else {
        target.values.push_back({name, value});
    }
    return save(fresh);
}

bool RegSettings::removeValue(Hive hive, const QString& key, const QString& name)
{
    if (hive != Hive::CurrentUser || isShellKey(key))
        return false;
    if (isAutostart(key, name))
        return Autostart(m_options.autostartFolder, m_options.program).remove();
    if (!load())
        return false;
    RegText fresh = m_text;
    RegKey* const target = fresh.key(pathOf(key));
    const RegValue* const value = target != nullptr ? findValue(std::as_const(*target), name) : nullptr;
    if (value == nullptr)
        return false;
    target->values.erase(target->values.begin() + (value - target->values.data()));
    return save(fresh);
}

QStringList RegSettings::names(Hive hive, const QString& key) const
{
    if (hive != Hive::CurrentUser)
        return {};
    if (isShellKey(key))
        return m_options.shellFolders.keys();
    QStringList result;
    if (value(hive, key, runValue) && isAutostart(key, runValue))
        result += runValue;
    static_cast<void>(load());
    if (const RegKey* const found = std::as_const(m_text).key(pathOf(key))) {
        for (const RegValue& value : found->values)
            result += value.name;
    }
    return result;
}

} // namespace orvantine
