#include "support/MemorySettings.h"

#include "platform/CaseFold.h"

#include <QtEndian>

#include <algorithm>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

QString nameOf(Hive hive)
{
    return hive == Hive::CurrentUser ? u"HKCU"_s : u"HKLM"_s;
}

template <class Values>
auto find(Values& values, const QString& name)
{
    return std::find_if(values.begin(), values.end(),
                        [&](const auto& entry) { return folded(entry.first) == folded(name); });
}

QByteArray fourBytes(qint32 number)
{
    QByteArray bytes(4, '\0');
    qToLittleEndian(number, bytes.data());
    return bytes;
}

} // namespace

QString MemorySettings::place(Hive hive, const QString& key)
{
    return nameOf(hive) + u'\\' + folded(key);
}

bool MemorySettings::keyExists(Hive hive, const QString& key) const
{
    return m_log.call(u"settings.keyExists %1 %2"_s.arg(nameOf(hive), quoted(key))) &&
           m_keys.contains(place(hive, key));
}

bool MemorySettings::createKey(Hive hive, const QString& key)
{
    if (!m_log.call(u"settings.createKey %1 %2"_s.arg(nameOf(hive), quoted(key))) || hive == Hive::LocalMachine ||
        m_keys.contains(place(hive, key)))
        return false;
    QString path = key;
    while (!path.isEmpty()) {
        if (!m_keys.contains(place(hive, path)))
            m_keys.insert(place(hive, path), {});
        path.truncate(std::max<qsizetype>(path.lastIndexOf(u'\\'), 0));
    }
    return true;
}

std::optional<SettingValue> MemorySettings::value(Hive hive, const QString& key, const QString& name) const
{
    if (!m_log.call(u"settings.value %1 %2 %3"_s.arg(nameOf(hive), quoted(key), quoted(name))))
        return std::nullopt;
    return peek(hive, key, name);
}

std::optional<SettingValue> MemorySettings::peek(Hive hive, const QString& key, const QString& name) const
{
    const auto values = m_keys.constFind(place(hive, key));
    if (values == m_keys.constEnd())
        return std::nullopt;
    const auto entry = find(*values, name);
    if (entry == values->end())
        return std::nullopt;
    return entry->second;
}

bool MemorySettings::setValue(Hive hive, const QString& key, const QString& name, const SettingValue& value)
{
    if (!m_log.call(
            u"settings.setValue %1 %2 %3 %4"_s.arg(nameOf(hive), quoted(key), quoted(name), described(value))) ||
        hive == Hive::LocalMachine || !m_keys.contains(place(hive, key)))
        return false;
    Values& values = m_keys[place(hive, key)];
    const auto entry = find(values, name);
    if (entry == values.end())
        values.emplace_back(name, value);
    else
        entry->second = value;
    return true;
}

bool MemorySettings::removeValue(Hive hive, const QString& key, const QString& name)
{
    if (!m_log.call(u"settings.removeValue %1 %2 %3"_s.arg(nameOf(hive), quoted(key), quoted(name))) ||
        hive == Hive::LocalMachine || !m_keys.contains(place(hive, key)))
        return false;
    Values& values = m_keys[place(hive, key)];
    const auto entry = find(values, name);
    if (entry == values.end())
        return false;
    values.erase(entry);
    return true;
}

QStringList MemorySettings::names(Hive hive, const QString& key) const
{
    QStringList all;
    for (const auto& entry : m_keys.value(place(hive, key)))
        all += entry.first;
    return all;
}

void MemorySettings::put(Hive hive, const QString& key, const QString& name, const SettingValue& value)
{
    QString path = key;
    while (!path.isEmpty()) {
        if (!m_keys.contains(place(hive, path)))
            m_keys.insert(place(hive, path), {});
        path.truncate(std::max<qsizetype>(path.lastIndexOf(u'\\'), 0));
    }
    Values& values = m_keys[place(hive, key)];
    const auto entry = find(values, name);
    if (entry == values.end())
        values.emplace_back(name, value);
    else
        entry->second = value;
}

void MemorySettings::drop(Hive hive, const QString& key, const QString& name)
{
    const auto values = m_keys.find(place(hive, key));
    if (values == m_keys.end())
        return;
    const auto entry = find(*values, name);
    if (entry != values->end())
        values->erase(entry);
}

SettingValue stringSetting(const QString& text)
{
    return {SettingType::String, text, {}};
}
SettingValue dwordSetting(qint32 number)
{
    return {SettingType::Dword, {}, fourBytes(number)};
}
SettingValue binarySetting(qint32 number)
{
    return {SettingType::Binary, {}, fourBytes(number)};
}

QString described(const SettingValue& value)
{
    switch (value.type) {
    case SettingType::None:
        return u"none"_s;
    case SettingType::String:
        return u"sz "_s + quoted(value.text);
    case SettingType::ExpandString:
        return u"expand-sz "_s + quoted(value.text);
    case SettingType::MultiString:
        return u"multi-sz "_s + quoted(value.text);
    case SettingType::Dword:
        if (value.bytes.size() == 4)
            return u"dword %1"_s.arg(qFromLittleEndian<qint32>(value.bytes.constData()));
        return u"dword bytes "_s + QString::fromLatin1(value.bytes.toHex(' '));
    case SettingType::Binary:
        return u"binary "_s + QString::fromLatin1(value.bytes.toHex(' '));
    }
    return u"unknown type %1"_s.arg(static_cast<int>(value.type));
}

} // namespace orvantine::fake
