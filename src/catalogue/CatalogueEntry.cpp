#include "catalogue/CatalogueEntry.h"

#include "app/DataFolder.h"
#include "app/IniFiles.h"

#include <array>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

struct Value
{
    char letter;
    QString CatalogueEntry::*text;
};

constexpr std::array<Value, 7> Values{{{EntryKey::Id, &CatalogueEntry::id},
                                       {EntryKey::Name, &CatalogueEntry::name},
                                       {EntryKey::Path, &CatalogueEntry::path},
                                       {EntryKey::Tracks, &CatalogueEntry::tracks},
                                       {EntryKey::Description, &CatalogueEntry::description},
                                       {EntryKey::Date, &CatalogueEntry::date},
                                       {EntryKey::Favourite, &CatalogueEntry::favourite}}};

QString indexKey(int number, char letter)
{
    return QString::number(number) + QLatin1Char(letter);
}

} // namespace

CatalogueEntry readEntry(const Root& root, const QString& file, int number)
{
    CatalogueEntry entry;
    for (const Value& value : Values)
        entry.*value.text = indexValue(root, file, number, value.letter);
    return entry;
}

void writeEntry(Root& root, const QString& file, int number, const CatalogueEntry& entry, char first)
{
    for (const Value& value : Values)
        if (value.letter >= first)
            writeIndexValue(root, file, number, value.letter, entry.*value.text);
}

void writeFilledValues(Root& root, const QString& file, int number, const CatalogueEntry& entry)
{
    for (const Value& value : Values)
        if (!(entry.*value.text).isEmpty())
            writeIndexValue(root, file, number, value.letter, entry.*value.text);
}

void deleteEntry(Root& root, const QString& file, int number)
{
    for (const Value& value : Values)
        deleteIndexValue(root, file, number, value.letter);
}

QString indexValue(const Root& root, const QString& file, int number, char letter)
{
    return IniFiles::ReadValue(root, file, u"Index"_s, indexKey(number, letter));
}

void writeIndexValue(Root& root, const QString& file, int number, char letter, const QString& value)
{
    IniFiles::WriteValue(root, file, u"Index"_s, indexKey(number, letter), value);
}

void deleteIndexValue(Root& root, const QString& file, int number, char letter)
{
    IniFiles::DeleteKey(root, file, u"Index"_s, indexKey(number, letter));
}

bool isFavourite(const Root& root, int number)
{
    return indexValue(root, databaseFile(root), number, EntryKey::Favourite) == u"1"_s;
}

} // namespace orvantine
