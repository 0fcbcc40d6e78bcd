#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Rows that the catalogue can hold.
inline constexpr int MostPlaylists = 160;

/// One entry of section `Index`: the seven values of its number.
struct CatalogueEntry
{
    QString id;
    QString name;
    QString path;
    QString tracks;
    QString description;
    QString date;
    /// "1" marks a favourite.
    QString favourite;

    bool operator==(const CatalogueEntry&) const = default;
};

/// The values by their letters
namespace EntryKey {
inline constexpr char Id = 'a';
inline constexpr char Name = 'b';
inline constexpr char Path = 'c';
inline constexpr char Tracks = 'd';
inline constexpr char Description = 'e';
inline constexpr char Date = 'f';
inline constexpr char Favourite = 'g';
} // namespace EntryKey

/// `file` is the database or its copy, `number` the 1-based number in section `Index`. What is absent reads as "".
[[nodiscard]] CatalogueEntry readEntry(const Root& root, const QString& file, int number);
/// Writes the values from the letter `first` to the last one: all seven, if not said otherwise.
void writeEntry(Root& root, const QString& file, int number, const CatalogueEntry& entry, char first = EntryKey::Id);
/// Writes those that are not empty, first to last.
void writeFilledValues(Root& root, const QString& file, int number, const CatalogueEntry& entry);
/// Deletes all seven.
void deleteEntry(Root& root, const QString& file, int number);

[[nodiscard]] QString indexValue(const Root& root, const QString& file, int number, char letter);
void writeIndexValue(Root& root, const QString& file, int number, char letter, const QString& value);
void deleteIndexValue(Root& root, const QString& file, int number, char letter);

/// True if the stored mark of the entry with that number is "1".
[[nodiscard]] bool isFavourite(const Root& root, int number);

} // namespace orvantine
