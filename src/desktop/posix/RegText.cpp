#include "desktop/posix/RegText.h"

#include "platform/CaseFold.h"
#include "platform/CodePage.h"

#include <QList>
#include <QStringDecoder>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

constexpr auto headLine = "Windows Registry Editor Version 5.00"_L1;

QString escaped(const QString& text)
{
    QString result = text;
    return result.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
}

// A quoted text at the beginning of `rest`, which is cut behind it.
std::optional<QString> takeQuoted(QStringView& rest)
{
    if (!rest.startsWith(u'"'))
        return std::nullopt;
    QString text;
    for (qsizetype i = 1; i < rest.size(); ++i) {
        if (rest[i] == u'"') {
            rest = rest.sliced(i + 1);
            return text;
        }
        if (rest[i] == u'\\' && ++i == rest.size())
            break;
        text += rest[i];
    }
    return std::nullopt;
}

// Texts with line ends or controls stand as bytes, UTF-16 with a terminator.
QByteArray utf16Bytes(const QString& text)
{
    QByteArray bytes;
    for (const QChar unit : text + QChar(u'\0')) {
        bytes += static_cast<char>(unit.cell());
        bytes += static_cast<char>(unit.row());
    }
    return bytes;
}

QString textOfUtf16(const QByteArray& bytes)
{
    QString text;
    for (qsizetype i = 0; i + 1 < bytes.size(); i += 2)
        text += QChar(static_cast<uchar>(bytes[i]), static_cast<uchar>(bytes[i + 1]));
    return text;
}

bool isPlain(const QString& text)
{
    const bool printable =
        std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() >= 0x20 || unit == u'\t'; });
    return printable && QString::fromUtf8(text.toUtf8()) == text;
}

std::optional<QByteArray> parseHex(QStringView digits)
{
    QByteArray bytes;
    for (const QStringView part : digits.split(u',', Qt::SkipEmptyParts)) {
        bool valid = false;
        const uint byte = part.trimmed().toUInt(&valid, 16);
        if (!valid || byte > 0xff)
            return std::nullopt;
        bytes += static_cast<char>(byte);
    }
    return bytes;
}

SettingValue fromBytes(int type, const QByteArray& bytes)
{
    SettingValue value;
    value.type = static_cast<SettingType>(type);
    const bool multiple = value.type == SettingType::MultiString;
    if (!multiple && value.type != SettingType::String && value.type != SettingType::ExpandString) {
        value.bytes = bytes;
        return value;
    }
    value.text = textOfUtf16(bytes);
    while (value.text.endsWith(QChar(u'\0'))) {
        value.text.chop(1);
        if (!multiple)
            break;
    }
    if (multiple)
        value.text.replace(QChar(u'\0'), u"\r\n"_s);
    return value;
}

std::optional<SettingValue> parseValue(QStringView text)
{
    SettingValue value;
    if (text.startsWith(u'"')) {
        const std::optional<QString> quoted = takeQuoted(text);
        if (!quoted || !text.trimmed().isEmpty())
            return std::nullopt;
        value.type = SettingType::String;
        value.text = *quoted;
        return value;
    }
    bool valid = false;
    if (text.startsWith("dword:"_L1, Qt::CaseInsensitive)) {
        const uint number = text.sliced(6).trimmed().toUInt(&valid, 16);
        if (!valid)
            return std::nullopt;
        value.type = SettingType::Dword;
        for (uint shift = 0; shift < 32; shift += 8)
            value.bytes += static_cast<char>((number >> shift) & 0xffU);
        return value;
    }
    if (!text.startsWith("hex"_L1, Qt::CaseInsensitive))
        return std::nullopt;
    const qsizetype colon = text.indexOf(u':');
    if (colon < 3)
        return std::nullopt;
    int type = static_cast<int>(SettingType::Binary);
    const QStringView kind = text.sliced(3, colon - 3);
    if (!kind.isEmpty()) {
        if (kind.size() < 3 || kind.front() != u'(' || kind.back() != u')')
            return std::nullopt;
        type = kind.sliced(1, kind.size() - 2).toInt(&valid, 16);
        if (!valid)
            return std::nullopt;
    }
    const std::optional<QByteArray> bytes = parseHex(text.sliced(colon + 1));
    if (!bytes)
        return std::nullopt;
    return fromBytes(type, *bytes);
}

QString printHex(const SettingValue& value, const QByteArray& bytes)
{
    const QString kind = value.type == SettingType::Binary
                             ? u"hex:"_s
                             : u"hex("_s + QString::number(static_cast<int>(value.type), 16) + u"):"_s;
    return kind + QString::fromLatin1(bytes.toHex(','));
}

QString printValue(const SettingValue& value)
{
    switch (value.type) {
    case SettingType::String:
        return isPlain(value.text) ? u'"' + escaped(value.text) + u'"' : printHex(value, utf16Bytes(value.text));
    case SettingType::ExpandString:
        return printHex(value, utf16Bytes(value.text));
    case SettingType::MultiString:
        return printHex(value, utf16Bytes(value.text + QChar(u'\0')));
    case SettingType::Dword:
        if (value.bytes.size() == 4) {
            QByteArray highestFirst = value.bytes;
            std::reverse(highestFirst.begin(), highestFirst.end());
            return u"dword:"_s + QString::fromLatin1(highestFirst.toHex());
        }
        break;
    case SettingType::None:
    case SettingType::Binary:
        break;
    }
    return printHex(value, value.bytes);
}

QString decoded(const QByteArray& bytes)
{
    if (bytes.startsWith("\xff\xfe")) {
        QStringDecoder utf16(QStringDecoder::Utf16LE);
        return utf16(bytes.sliced(2));
    }
    return CodePage().decode(bytes);
}

template <class Keys>
auto* findKey(Keys& keys, const QString& path)
{
    const QString wanted = folded(path);
    const auto found =
        std::find_if(keys.begin(), keys.end(), [&wanted](const RegKey& key) { return folded(key.path) == wanted; });
    return found == keys.end() ? nullptr : &*found;
}

template <class Key>
auto* findIn(Key& key, const QString& name)
{
    const QString wanted = folded(name);
    const auto found = std::find_if(key.values.begin(), key.values.end(),
                                    [&wanted](const RegValue& value) { return folded(value.name) == wanted; });
    return found == key.values.end() ? nullptr : &*found;
}

} // namespace

RegText RegText::parse(const QByteArray& bytes)
{
    RegText result;
    // A place, since the keys move while they are read; none before the first key and in one that cannot be read.
    std::optional<std::size_t> current;
    QStringList lines = decoded(bytes).split(u'\n');
    const QString head = lines.takeFirst().trimmed();
    result.damaged = head != headLine && head != "REGEDIT4"_L1;
    if (result.damaged)
        lines.prepend(head);
    QString line;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        line += lines[i].trimmed();
        // Only a list of bytes goes on in the next line; a "\" at the end of anything else is part of it.
        if (line.endsWith(u",\\"_s) && line.contains("=hex"_L1, Qt::CaseInsensitive) && i + 1 < lines.size()) {
            line.chop(1);
            continue;
        }
        const QString whole = line;
        line.clear();
        if (whole.isEmpty() || whole.startsWith(u';'))
            continue;
        if (whole.startsWith(u'[')) {
            const bool readable = whole.endsWith(u']') && whole.startsWith("[HKEY_"_L1, Qt::CaseInsensitive);
            result.damaged = result.damaged || !readable;
            current.reset();
            if (!readable)
                continue;
            const QString path = whole.sliced(1, whole.size() - 2);
            const RegKey* const known = result.key(path);
            current = known != nullptr ? static_cast<std::size_t>(known - result.keys.data()) : result.keys.size();
            if (known == nullptr)
                result.keys.push_back({path, {}});
            continue;
        }
        QStringView rest(whole);
        std::optional<QString> name;
        if (rest.startsWith(u'@')) {
            name = QString();
            rest = rest.sliced(1);
        } else {
            name = takeQuoted(rest);
        }
        std::optional<SettingValue> value;
        if (name && rest.trimmed().startsWith(u'='))
            value = parseValue(rest.trimmed().sliced(1).trimmed());
        if (!value || !current) {
            result.damaged = true;
            continue;
        }
        RegKey& key = result.keys[*current];
        if (RegValue* const known = findValue(key, *name))
            known->value = *value;
        else
            key.values.push_back({*name, *value});
    }
    return result;
}

QByteArray RegText::print() const
{
    QString text = headLine + u"\r\n"_s;
    for (const RegKey& key : keys) {
        text += u"\r\n["_s + key.path + u"]\r\n"_s;
        for (const RegValue& value : key.values) {
            text += value.name.isEmpty() ? u"@"_s : u'"' + escaped(value.name) + u'"';
            text += u'=' + printValue(value.value) + u"\r\n"_s;
        }
    }
    return text.toUtf8();
}

bool RegText::canHold(const QString& name)
{
    return isPlain(name) && name.trimmed() == name;
}

RegKey* RegText::key(const QString& path)
{
    return findKey(keys, path);
}
const RegKey* RegText::key(const QString& path) const
{
    return findKey(keys, path);
}

RegValue* findValue(RegKey& key, const QString& name)
{
    return findIn(key, name);
}
const RegValue* findValue(const RegKey& key, const QString& name)
{
    return findIn(key, name);
}

} // namespace orvantine
