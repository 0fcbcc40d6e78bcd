#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace orvantine {

struct Root;

/// A file or folder of the program's own folder.
[[nodiscard]] QString programFile(const Root& root, const QString& name);

/// Application-data folder + "\Orvanten Manager".
[[nodiscard]] QString userFolder(const Root& root);

// Folders and files of the DataFolder, whose path ends in a separator

/// DataFolder + stem + ".dat" of the program's file.
[[nodiscard]] QString databaseFile(const Root& root);
/// DataFolder + stem + ".bak".
[[nodiscard]] QString backupFile(const Root& root);
/// The database and its copy by the name that some commands are bound to, whatever the program's file is called.
[[nodiscard]] QString namedDatabaseFile(const Root& root);
[[nodiscard]] QString namedBackupFile(const Root& root);
/// The temporary file by that name, which the end of the program removes.
[[nodiscard]] QString namedTemporaryFile(const Root& root);
/// DataFolder + stem + ".idx".
[[nodiscard]] QString indexFile(const Root& root);
/// Copies a file to its backup, which its owner may always write: the write protection of the file is not taken over,
/// and that of an older backup is taken away.
bool backUp(Root& root, const QString& file, const QString& backup);
/// Copies the database to its backup. False if it could not be copied, or nobody knows whether there is one; a missing
/// one needs no copy.
bool backUpDatabase(Root& root);
/// DataFolder + stem + ".tmp": stands for "no file yet" in the path of a new playlist.
[[nodiscard]] QString unnamedPlaylist(const Root& root);
/// True for a list that stands in a file of that kind.
[[nodiscard]] bool isUnnamed(const QString& path);

/// The names of its folders, in the order in which they are made.
[[nodiscard]] QStringList dataFolderNames();
/// Without a separator at its end.
[[nodiscard]] QString dataFolder(const Root& root, const QString& name);
[[nodiscard]] QString playlistFolder(const Root& root);
/// The file in "Playlisten" of a list of that name. Nothing for a name that would leave the folder.
[[nodiscard]] std::optional<QString> playlistFile(const Root& root, const QString& name);
/// A file of that name in "Resource".
[[nodiscard]] QString resourceFile(const Root& root, const QString& fileName);

/// Creates the folder of the DataFolder if it is missing. A failure leaves all as it was.
void ensureDataFolder(Root& root, const QString& name);
/// "Playlisten".
void ensurePlaylistFolder(Root& root);

} // namespace orvantine
