#include "platform/ProfileText.h"

#include "platform/CaseFold.h"

#include <QHashSeed>
#include <QSet>

#include <algorithm>
#include <cstring>
#include <utility>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

constexpr char lineBreak[] = "\r\n";

bool isBlank(char byte)
{
    return byte == ' ' || byte == '\t' || byte == '\r' || byte == '\v' || byte == '\f';
}

QByteArrayView trimmed(QByteArrayView text)
{
    while (!text.isEmpty() && isBlank(text.front()))
        text = text.sliced(1);
    while (!text.isEmpty() && isBlank(text.back()))
        text.chop(1);
    return text;
}

QByteArrayView unquoted(QByteArrayView text)
{
    const bool quoted =
        text.size() >= 2 && text.front() == text.back() && (text.front() == '"' || text.front() == '\'');
    return quoted ? text.sliced(1, text.size() - 2) : text;
}

bool isAscii(QByteArrayView text)
{
    return std::all_of(text.begin(), text.end(), [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

quint32 seed()
{
    static const auto value = static_cast<quint32>(std::size_t{QHashSeed::globalSeed()});
    return value;
}

quint32 mix(quint32 hash, char16_t unit)
{
    return (hash ^ unit) * 0x01000193U;
}

quint32 finished(quint32 hash)
{
    hash ^= hash >> 16;
    hash *= 0x7feb352dU;
    hash ^= hash >> 15;
    hash *= 0x846ca68bU;
    return hash ^ (hash >> 16);
}

quint32 hashOfFolded(QStringView text)
{
    quint32 hash = seed();
    for (const QChar unit : text)
        hash = mix(hash, unit.unicode());
    return finished(hash);
}

bool hasLineBreakOrNul(QStringView text)
{
    return text.contains(u'\r') || text.contains(u'\n') || text.contains(QChar(u'\0'));
}

} // namespace

ProfileText::ProfileText(const Files& files, QByteArray bytes) : m_files(files), m_bytes(std::move(bytes))
{
    scan();
}

bool ProfileText::canHoldSection(const QString& section)
{
    return !section.trimmed().isEmpty() && !hasLineBreakOrNul(section) && !section.contains(u']');
}

bool ProfileText::canHoldKey(const QString& key)
{
    const QString name = key.trimmed();
    return !name.isEmpty() && !hasLineBreakOrNul(name) && !name.contains(u'=') && !name.startsWith(u';') &&
           !name.startsWith(u'[');
}

qint64 ProfileText::lineEnd(qint64 offset, qint64 limit) const
{
    const char* const start = m_bytes.constData() + offset;
    const void* const found = std::memchr(start, '\n', static_cast<std::size_t>(limit - offset));
    return found == nullptr ? limit : offset + (static_cast<const char*>(found) - start) + 1;
}

QByteArrayView ProfileText::sectionName(qint64 offset, qint64 end) const
{
    QByteArrayView line = QByteArrayView(m_bytes).sliced(offset, end - offset);
    if (line.endsWith('\n'))
        line.chop(1);
    line = trimmed(line);
    const qsizetype close = line.startsWith('[') ? line.indexOf(']') : -1;
    return close < 0 ? QByteArrayView() : trimmed(line.sliced(1, close - 1));
}

std::optional<ProfileText::Line> ProfileText::keyLine(qint64 offset, qint64 limit) const
{
    const char* const data = m_bytes.constData();
    qint64 end = lineEnd(offset, limit);
    if (end > offset && data[end - 1] == '\n')
        --end;
    if (end > offset && data[end - 1] == '\r')
        --end;
    const QByteArrayView text = QByteArrayView(m_bytes).sliced(offset, end - offset);
    const qsizetype equals = text.indexOf('=');
    if (equals < 0)
        return std::nullopt;
    Line line;
    line.key = trimmed(text.first(equals));
    if (line.key.isEmpty() || line.key.front() == ';' || line.key.front() == '[')
        return std::nullopt;
    line.valueOffset = offset + equals + 1;
    line.valueLength = end - line.valueOffset;
    return line;
}

quint32 ProfileText::hashOf(QByteArrayView text) const
{
    quint32 hash = seed();
    for (const char byte : text) {
        const auto unit = static_cast<unsigned char>(byte);
        if (unit >= 0x80)
            return hashOfFolded(folded(m_files.decode(text.toByteArray())));
        hash = mix(hash, foldedUnit(unit));
    }
    return finished(hash);
}

bool ProfileText::isNamed(QByteArrayView text, const QString& foldedName) const
{
    if (!isAscii(text))
        return folded(m_files.decode(text.toByteArray())) == foldedName;
    return text.size() == foldedName.size() &&
           std::equal(text.begin(), text.end(), foldedName.begin(), [](char byte, QChar unit) {
               return foldedUnit(static_cast<unsigned char>(byte)) == unit.unicode();
           });
}

QString ProfileText::held(const QString& name) const
{
    const QString text = name.trimmed();
    const bool plain = std::all_of(text.begin(), text.end(), [](QChar unit) { return unit.unicode() < 0x80; });
    return plain ? text : m_files.decode(m_files.encode(text));
}

void ProfileText::scan()
{
    m_sections.clear();
    m_sectionsByName = HashIndex();
    m_repeatsSections = false;
    const qint64 size = m_bytes.size();
    const char* const data = m_bytes.constData();
    qint64 offset = m_bytes.startsWith("\xef\xbb\xbf") ? 3 : 0;
    while (offset < size) {
        const qint64 next = lineEnd(offset, size);
        qint64 first = offset;
        while (first < next && isBlank(data[first]))
            ++first;
        if (first < next && data[first] == '[' && !sectionName(first, next).isNull())
            addSection(static_cast<quint32>(offset), static_cast<quint32>(next));
        offset = next;
    }
    if (!m_sections.empty())
        m_sections.back().end = static_cast<quint32>(size);
}

void ProfileText::addSection(quint32 header, quint32 body)
{
    if (!m_sections.empty())
        m_sections.back().end = header;
    const auto number = static_cast<quint32>(m_sections.size());
    Section section;
    section.header = header;
    section.body = body;
    section.end = body;
    m_sections.push_back(std::move(section));
    const QByteArrayView name = sectionName(header, body);
    const quint32 hash = hashOf(name);
    const QString foldedName = folded(m_files.decode(name.toByteArray()));
    const quint32 earlier = m_sectionsByName.find(hash, [&](quint32 other) {
        return isNamed(sectionName(m_sections[other].header, m_sections[other].body), foldedName);
    });
    if (earlier == HashIndex::none)
        m_sectionsByName.insert(hash, number);
    else
        m_repeatsSections = true;
}

void ProfileText::indexKeys(Section& section)
{
    section.keys = std::make_unique<HashIndex>();
    section.repeatsKeys = false;
    section.indexed = true;
    const qint64 end = section.end;
    for (qint64 offset = section.body; offset < end; offset = lineEnd(offset, end)) {
        const std::optional<Line> line = keyLine(offset, end);
        if (!line)
            continue;
        const quint32 hash = hashOf(line->key);
        QString foldedName;
        const quint32 earlier = section.keys->find(hash, [&](quint32 other) {
            if (foldedName.isNull())
                foldedName = folded(m_files.decode(line->key.toByteArray()));
            return isNamed(keyLine(section.body + other, end)->key, foldedName);
        });
        if (earlier == HashIndex::none)
            section.keys->insert(hash, static_cast<quint32>(offset - section.body));
        else
            section.repeatsKeys = true;
    }
}

std::optional<std::size_t> ProfileText::findSection(const QString& name) const
{
    const QString wanted = folded(held(name));
    const quint32 number = m_sectionsByName.find(hashOfFolded(wanted), [&](quint32 other) {
        return isNamed(sectionName(m_sections[other].header, m_sections[other].body), wanted);
    });
    if (number == HashIndex::none)
        return std::nullopt;
    return number;
}

std::optional<qint64> ProfileText::findKey(Section& section, const QString& key)
{
    if (!section.indexed)
        indexKeys(section);
    const QString wanted = folded(held(key));
    const quint32 offset = section.keys->find(hashOfFolded(wanted), [&](quint32 other) {
        return isNamed(keyLine(section.body + other, section.end)->key, wanted);
    });
    if (offset == HashIndex::none)
        return std::nullopt;
    return section.body + qint64{offset};
}

QString ProfileText::value(const QString& section, const QString& key)
{
    const std::optional<std::size_t> number = findSection(section);
    if (!number)
        return {};
    Section& found = m_sections[*number];
    const std::optional<qint64> offset = findKey(found, key);
    if (!offset)
        return {};
    const std::optional<Line> line = keyLine(*offset, found.end);
    QByteArrayView raw = QByteArrayView(m_bytes).sliced(line->valueOffset, line->valueLength);
    const qsizetype nul = raw.indexOf('\0');
    if (nul >= 0)
        raw = raw.first(nul);
    raw = unquoted(trimmed(raw));
    return isAscii(raw) ? QString::fromLatin1(raw) : m_files.decode(raw.toByteArray());
}

QStringList ProfileText::keys(const QString& section) const
{
    QStringList result;
    QSet<QString> seen;
    const std::optional<std::size_t> number = findSection(section);
    if (!number)
        return result;
    const Section& found = m_sections[*number];
    for (qint64 offset = found.body; offset < found.end; offset = lineEnd(offset, found.end)) {
        const std::optional<Line> line = keyLine(offset, found.end);
        if (!line)
            continue;
        const QString key = m_files.decode(line->key.toByteArray());
        const QString name = folded(key);
        if (seen.contains(name))
            continue;
        seen.insert(name);
        result += key;
    }
    return result;
}

std::optional<ProfileText::Edit> ProfileText::planSet(const QString& section, const QString& key, const QString& value)
{
    const QByteArray encoded = m_files.encode(value);
    const QByteArray newLine = m_files.encode(key.trimmed()) + '=' + encoded + lineBreak;
    const std::optional<std::size_t> number = findSection(section);
    Edit edit;
    if (!number) {
        edit.kind = Edit::NewSection;
        edit.offset = m_bytes.size();
        const std::optional<std::size_t> index = findSection(u"Index"_s);
        if (index && *index + 1 == m_sections.size())
            edit.offset = m_sections[*index].header;
        const bool open = edit.offset > 0 && edit.offset == m_bytes.size() && !m_bytes.endsWith('\n') &&
                          m_bytes != QByteArrayView("\xef\xbb\xbf");
        edit.bytes = open ? lineBreak : "";
        edit.line = edit.bytes.size();
        edit.bytes += '[' + m_files.encode(section.trimmed()) + ']' + lineBreak + newLine;
        return edit;
    }
    edit.section = *number;
    Section& found = m_sections[*number];
    if (const std::optional<qint64> offset = findKey(found, key)) {
        const std::optional<Line> line = keyLine(*offset, found.end);
        const QByteArrayView raw = QByteArrayView(m_bytes).sliced(line->valueOffset, line->valueLength);
        if (trimmed(raw) == trimmed(encoded))
            return std::nullopt;
        edit.kind = Edit::Value;
        edit.offset = line->valueOffset;
        edit.length = line->valueLength;
        edit.bytes = encoded;
        return edit;
    }
    // Behind the last line that is not blank: blank lines go on separating the sections.
    qint64 last = found.end;
    while (last > found.body && (isBlank(m_bytes[last - 1]) || m_bytes[last - 1] == '\n'))
        --last;
    edit.kind = Edit::NewKey;
    edit.offset = last == found.body ? last : lineEnd(last, found.end);
    const bool open = m_bytes[edit.offset - 1] != '\n';
    edit.bytes = open ? lineBreak + newLine : newLine;
    edit.line = edit.bytes.size() - newLine.size();
    return edit;
}

std::optional<ProfileText::Edit> ProfileText::planRemoveKey(const QString& section, const QString& key)
{
    const std::optional<std::size_t> number = findSection(section);
    if (!number)
        return std::nullopt;
    Section& found = m_sections[*number];
    const std::optional<qint64> offset = findKey(found, key);
    if (!offset)
        return std::nullopt;
    Edit edit;
    edit.kind = Edit::RemovedKey;
    edit.section = *number;
    edit.offset = *offset;
    edit.length = lineEnd(*offset, found.end) - *offset;
    return edit;
}

std::optional<ProfileText::Edit> ProfileText::planRemoveSection(const QString& section) const
{
    const std::optional<std::size_t> number = findSection(section);
    if (!number)
        return std::nullopt;
    const Section& found = m_sections[*number];
    Edit edit;
    edit.kind = Edit::RemovedSection;
    edit.section = *number;
    edit.offset = found.header;
    edit.length = qint64{found.end} - found.header;
    return edit;
}

std::optional<ProfileText::Edit> ProfileText::planMoveToEnd(const QString& section) const
{
    const std::optional<std::size_t> number = findSection(section);
    // Of two sections of one name the first is read: moving it would bring up the other one.
    if (!number || *number + 1 == m_sections.size() || m_repeatsSections)
        return std::nullopt;
    const Section& found = m_sections[*number];
    Edit edit;
    edit.kind = Edit::MovedSection;
    edit.section = *number;
    edit.offset = found.header;
    edit.length = m_bytes.size() - found.header;
    edit.bytes = m_bytes.sliced(found.end);
    if (!edit.bytes.endsWith('\n'))
        edit.bytes += lineBreak;
    edit.bytes += QByteArrayView(m_bytes).sliced(found.header, qint64{found.end} - found.header);
    return edit;
}

void ProfileText::apply(const Edit& edit)
{
    const qint64 delta = edit.bytes.size() - edit.length;
    quint32 removedHash = 0;
    const bool inSection = edit.kind == Edit::Value || edit.kind == Edit::NewKey || edit.kind == Edit::RemovedKey;
    if (edit.kind == Edit::RemovedKey)
        removedHash = hashOf(keyLine(edit.offset, m_sections[edit.section].end)->key);
    if (edit.kind == Edit::RemovedSection)
        removedHash = hashOf(sectionName(edit.offset, m_sections[edit.section].body));
    const bool atEnd = edit.offset == m_bytes.size();
    if (atEnd)
        m_bytes.append(edit.bytes); // grows by steps; replace() would copy all of it each time
    else
        m_bytes.replace(edit.offset, edit.length, edit.bytes);

    if (inSection) {
        Section& section = m_sections[edit.section];
        for (std::size_t i = edit.section + 1; i < m_sections.size(); ++i) {
            m_sections[i].header = static_cast<quint32>(m_sections[i].header + delta);
            m_sections[i].body = static_cast<quint32>(m_sections[i].body + delta);
            m_sections[i].end = static_cast<quint32>(m_sections[i].end + delta);
        }
        section.end = static_cast<quint32>(section.end + delta);
        if (!section.indexed)
            return;
        if (edit.kind == Edit::RemovedKey && section.repeatsKeys) {
            section.indexed = false; // the next line of that key is the one to be read from now on
            return;
        }
        const auto relative = static_cast<quint32>(edit.offset - section.body);
        if (edit.kind == Edit::RemovedKey)
            section.keys->remove(removedHash, relative);
        if (edit.kind == Edit::NewKey) { // only blank lines follow it
            const qint64 line = edit.offset + edit.line;
            section.keys->insert(hashOf(keyLine(line, section.end)->key), static_cast<quint32>(line - section.body));
        } else if (delta != 0) {
            section.keys->shift(relative, delta);
        }
        return;
    }
    const bool lastSection = edit.section + 1 == m_sections.size();
    if (edit.kind == Edit::RemovedSection && lastSection && !m_repeatsSections) {
        m_sectionsByName.remove(removedHash, static_cast<quint32>(edit.section));
        m_sections.pop_back();
        return;
    }
    if (edit.kind == Edit::NewSection && atEnd) {
        const qint64 header = edit.offset + edit.line;
        addSection(static_cast<quint32>(header), static_cast<quint32>(lineEnd(header, m_bytes.size())));
        m_sections.back().end = static_cast<quint32>(m_bytes.size());
        return;
    }
    scan();
}

} // namespace orvantine
