#pragma once

#include "platform/Choosers.h"
#include "platform/Files.h"

namespace orvantine {

/// Qt's own file, folder and font dialogs, so that they speak German on every desktop.
class QtChoosers final : public Choosers
{
public:
    explicit QtChoosers(const Files& files) : m_files(files) {}

    [[nodiscard]] std::optional<ChosenFile> openFile(const FileRequest& request) override;
    [[nodiscard]] std::optional<ChosenFile> saveFile(const FileRequest& request) override;
    [[nodiscard]] QString folder(const FolderRequest& request) override;
    [[nodiscard]] std::optional<FontChoice> font(const FontChoice& present) override;

private:
    /// The host's path of a folder; "" for one that does not exist.
    [[nodiscard]] QString hostFolder(const QString& folder) const;

    const Files& m_files;
};

/// "Sounddateien|*.mp3; *.wma|Alle Dateitypen|*.*" as the dialogs take it: {"Sounddateien (*.mp3 *.wma)", …}.
[[nodiscard]] QStringList nameFilters(const QString& filter);

} // namespace orvantine
