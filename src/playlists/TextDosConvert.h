#pragma once

#include <QString>

#include <optional>

namespace orvantine {

struct Root;

/// Rewrites the file without comments and empty lines, neighbouring entries relative to it, and takes its lines into
/// tPlayliste. With fewer than 10 characters left, file and tPlayliste stay as they were. False only for a missing
/// file.
bool TextDosConvert(Root& root, const QString& path);

/// What such a conversion gives.
struct ConvertedList
{
    /// The lines as tPlayliste holds them now; nothing where it still holds those of the list before.
    std::optional<QString> lines;
    /// The entries that stand in the file, each with CR LF; nothing where they could not be read or brought to that
    /// form. A list that is too short is not rewritten, but its entries are told.
    std::optional<QString> entries;
};
[[nodiscard]] ConvertedList convertPlaylist(Root& root, const QString& path);

/// All entries of the file as it stands, an unclosed last line included; nothing where it cannot be read or where
/// lines of it are no entries. A missing file has none.
[[nodiscard]] std::optional<QString> entriesOfFile(Root& root, const QString& path);

/// Copies a list into another folder. Entries without a folder lie beside it and would be found no more: they get its
/// folder; a list without such entries is copied as it stands.
bool copyToOtherFolder(Root& root, const QString& from, const QString& to);

} // namespace orvantine
