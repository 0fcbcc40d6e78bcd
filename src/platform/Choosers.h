#pragma once

#include <QString>

#include <optional>

namespace orvantine {

struct FileRequest
{
    QString title;
    /// One that does not exist opens the chooser at its default.
    QString folder;
    QString fileName;
    /// "Sounddateien|*.mp3; *.wma|Alle Dateitypen|*.*"
    QString filter;
    QString defaultExtension;
};

struct ChosenFile
{
    QString folder;
    QString fileName;
};

enum class FolderRoot : int { Computer = 17, Network = 18 };

struct FolderRequest
{
    QString prompt;
    FolderRoot root = FolderRoot::Computer;
    QString folder;
};

struct FontChoice
{
    QString family;
    /// Points.
    double size = 0;
};

/// The desktop's file, folder and font dialogs. Nothing chosen gives nothing.
class Choosers
{
public:
    virtual ~Choosers() = default;

    [[nodiscard]] virtual std::optional<ChosenFile> openFile(const FileRequest& request) = 0;
    /// Asks before it gives a file that exists.
    [[nodiscard]] virtual std::optional<ChosenFile> saveFile(const FileRequest& request) = 0;
    /// "" on Cancel.
    [[nodiscard]] virtual QString folder(const FolderRequest& request) = 0;
    [[nodiscard]] virtual std::optional<FontChoice> font(const FontChoice& present) = 0;
};

} // namespace orvantine
