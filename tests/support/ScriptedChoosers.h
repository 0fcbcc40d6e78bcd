#pragma once

#include "platform/Choosers.h"
#include "support/CallLog.h"
#include "support/Complaints.h"
#include "support/ScriptQueue.h"

#include <functional>

namespace orvantine::fake {

enum class ChooserKind { Open, Save, Folder, Font };

/// What the user chooses next; nothing chosen is the dialog's Cancel.
struct ScriptedChoice
{
    ChooserKind kind = ChooserKind::Open;
    std::optional<ChosenFile> file;
    QString folder;
    std::optional<FontChoice> font;
    std::function<void()> meanwhile;
};

/// Answers choosers in the order of the script. One that nobody scripted is a complaint and gives nothing. Each chooser
/// stands in the log with all that it was asked for.
class ScriptedChoosers final : public Choosers
{
public:
    ScriptedChoosers(CallLog& log, Complaints& complaints);

    [[nodiscard]] std::optional<ChosenFile> openFile(const FileRequest& request) override;
    [[nodiscard]] std::optional<ChosenFile> saveFile(const FileRequest& request) override;
    [[nodiscard]] QString folder(const FolderRequest& request) override;
    [[nodiscard]] std::optional<FontChoice> font(const FontChoice& present) override;

    /// `path` is cut behind its last separator; the folder goes without the separator.
    void open(const QString& path);
    void save(const QString& path);
    void chooseFolder(const QString& path);
    void chooseFont(const FontChoice& font);
    void cancel(ChooserKind kind);
    void complainOfUnused();

    ScriptQueue<ScriptedChoice> queue;
    /// Chooses where no script waits, in the place of a complaint.
    std::function<ScriptedChoice(ChooserKind kind)> Unscripted;

private:
    std::optional<ScriptedChoice> next(ChooserKind kind, const QString& line);

    CallLog& m_log;
    Complaints& m_complaints;
};

} // namespace orvantine::fake
