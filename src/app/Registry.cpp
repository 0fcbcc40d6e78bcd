#include "app/Registry.h"

#include "app/Root.h"
#include "app/TextLimits.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QByteArray littleEndian(qint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

} // namespace

bool Registry::KeyExists(const Root& root, Hive hive, const QString& path)
{
    return root.services.settings.keyExists(hive, path);
}

bool Registry::CreateKey(Root& root, Hive hive, const QString& path)
{
    return root.services.settings.createKey(hive, path);
}

bool Registry::ReadValue(const Root& root, Hive hive, const QString& path, const QString& name, SettingVariant& value)
{
    const std::optional<SettingValue> stored = root.services.settings.value(hive, path, name);
    if (!stored)
        return false;
    switch (stored->type) {
    case SettingType::String:
    case SettingType::ExpandString:
    case SettingType::MultiString:
        value = stored->text + QChar(u'\0') + u' ';
        break;
    case SettingType::Binary:
    case SettingType::Dword:
        // Required: more than four bytes do not fit the number that is asked for, and the value counts as absent.
        if (stored->bytes.size() > 4)
            return false;
        value = qFromLittleEndian<qint32>(stored->bytes.leftJustified(4, '\0', true).constData());
        break;
    case SettingType::None:
        break;
    }
    return true;
}

bool Registry::WriteValue(Root& root, Hive hive, const QString& path, const QString& name, const SettingVariant& value)
{
    if (!root.services.settings.keyExists(hive, path))
        return false;
    SettingValue stored;
    if (const auto* word = std::get_if<qint16>(&value)) {
        stored.type = SettingType::Dword;
        stored.bytes = littleEndian(*word);
    } else if (const auto* number = std::get_if<qint32>(&value)) {
        // Required: binary, not a double word.
        stored.type = SettingType::Binary;
        stored.bytes = littleEndian(*number);
    } else if (const auto* text = std::get_if<QString>(&value)) {
        const bool lines = text->contains(u'\r');
        stored.type = lines ? SettingType::MultiString : SettingType::String;
        stored.text = lines && !text->endsWith(u"\r\n"_s) ? *text + u"\r\n"_s : *text;
    } else {
        return true;
    }
    return root.services.settings.setValue(hive, path, name, stored);
}

bool Registry::DeleteValue(Root& root, Hive hive, const QString& path, const QString& name)
{
    return root.services.settings.removeValue(hive, path, name);
}

bool Setting::is(int wanted) const
{
    return hasValue() && number() == wanted;
}

bool Setting::hasValue() const
{
    return present && !std::holds_alternative<std::monostate>(value);
}

int Setting::whole() const
{
    using Limits = std::numeric_limits<int>;
    return static_cast<int>(std::clamp<double>(number(), Limits::min(), Limits::max()));
}

QString Setting::text() const
{
    if (const auto* stored = std::get_if<QString>(&value))
        return cutAtNul(*stored);
    return std::holds_alternative<std::monostate>(value) ? QString() : QString::number(qRound64(number()));
}

double Setting::number() const
{
    if (const auto* stored = std::get_if<QString>(&value))
        return leadingNumber(cutAtNul(*stored));
    if (const auto* stored = std::get_if<qint16>(&value))
        return *stored;
    if (const auto* stored = std::get_if<qint32>(&value))
        return *stored;
    if (const auto* stored = std::get_if<double>(&value))
        return *stored;
    return 0;
}

bool Setting::isNumber() const
{
    const auto* const stored = std::get_if<QString>(&value);
    if (stored == nullptr)
        return hasValue();
    const QString text = cutAtNul(*stored).trimmed();
    // "nan" and "1e3" are numbers of a form that `number` does not read.
    const auto isPart = [](QChar c) { return (c >= u'0' && c <= u'9') || c == u'.' || c == u'-' || c == u'+'; };
    bool number = false;
    (void)text.toDouble(&number);
    return number && std::all_of(text.begin(), text.end(), isPart);
}

QString settingsKey()
{
    return u"Software\\Verdanis\\Orvant Manager"_s;
}

Setting readSetting(const Root& root, const QString& name)
{
    Setting setting;
    setting.present = Registry::ReadValue(root, Hive::CurrentUser, settingsKey(), name, setting.value);
    return setting;
}

std::optional<Setting> readForCertain(const Root& root, const QString& name)
{
    const Setting setting = readSetting(root, name);
    if (setting.present)
        return setting;
    // The key was made when the program started.
    if (!Registry::KeyExists(root, Hive::CurrentUser, settingsKey()))
        return {};
    // The read that found nothing may have failed alone.
    return readSetting(root, name);
}

void writeSetting(Root& root, const QString& name, const SettingVariant& value)
{
    Registry::WriteValue(root, Hive::CurrentUser, settingsKey(), name, value);
}

} // namespace orvantine
