#pragma once

#include "platform/ZipArchive.h"

#include <QString>

#include <optional>

namespace orvantine {

class Command;
struct Root;

/// The window while a command carries data: lists and timers rest and the dialog of the transfer stands before it. What
/// was taken away is back on every way out.
class DataTransfer
{
public:
    DataTransfer(Root& root, Command& command);
    ~DataTransfer();
    DataTransfer(const DataTransfer&) = delete;
    DataTransfer& operator=(const DataTransfer&) = delete;

    // False: the program has ended.
    [[nodiscard]] bool freeze();
    [[nodiscard]] bool unfreeze();

private:
    void release();

    Root& m_root;
    Command& m_command;
    bool m_frozen = false;
};

enum class BackupChoice { ToWrite, ToRead };

/// The backup file that the user chooses; nothing on Cancel.
struct BackupFile
{
    /// With its separator.
    QString folder;
    QString name;
};
[[nodiscard]] std::optional<BackupFile> chooseBackupFile(Root& root, Command& command, BackupChoice choice);

/// Loads the catalogue from the database, without questions about lists of one name. False: the program has ended.
[[nodiscard]] bool reloadDatabase(Root& root, Command& command);

/// How strongly archives are packed, as the options say; strongly where they say nothing.
[[nodiscard]] Compression chosenCompression(const Root& root);

} // namespace orvantine
