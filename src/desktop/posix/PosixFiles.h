#pragma once

#include "desktop/posix/Descriptor.h"
#include "desktop/posix/NameLookup.h"
#include "desktop/posix/RecoveryStore.h"
#include "desktop/posix/UndoJournal.h"
#include "platform/CodePage.h"
#include "platform/Files.h"

#include <QHash>
#include <QMap>

#include <functional>
#include <optional>
#include <utility>

#include <sys/stat.h>

namespace orvantine {

struct PosixFilesOptions
{
    CodePage codePage;
    /// Host folders by drive letter: "C:" -> "/media/user/windows".
    QMap<QString, QString> drives;
    /// Whether `readPlaylist` turns the host's own text files into CR LF files.
    bool adoptsHostTexts = true;
    /// Made with mode 0700 when it is needed. Where it is not this user's alone, or "", nothing is changed.
    QString recoveryFolder;
    qint64 maximumReadSize = qint64{256} * 1024 * 1024;
    /// Carries on a thread of its own, so that events are served whatever the medium does. Without it each step is done
    /// where it is asked for, in an order that a test can count.
    bool carriesBeside = true;
};

class CarryJob;

/// The host's disk. Relative paths start from the current folder.
class PosixFiles : public Files
{
public:
    explicit PosixFiles(PosixFilesOptions options = {});
    ~PosixFiles() override;

    [[nodiscard]] std::function<bool(const QString& name)> namesIn(const QString& folder) const override;
    [[nodiscard]] bool exists(const QString& path) const override;
    [[nodiscard]] bool folderExists(const QString& path) const override;
    [[nodiscard]] bool isFolder(const QString& path) const override;
    [[nodiscard]] bool isLink(const QString& path) const override;
    [[nodiscard]] std::optional<qint64> size(const QString& path) const override;
    [[nodiscard]] std::optional<QDateTime> modified(const QString& path) const override;
    [[nodiscard]] std::optional<FileStamp> stamp(const QString& path) const override;
    [[nodiscard]] std::optional<QByteArray> nativePath(const QString& path) const override;
    [[nodiscard]] QStringList list(const QString& folder, const QString& patterns) const override;
    [[nodiscard]] QStringList folders(const QString& folder) const override;

    [[nodiscard]] ReadBytes readBytes(const QString& path) const override;
    [[nodiscard]] ReadText readText(const QString& path) const override;
    [[nodiscard]] ReadText readPlaylist(const QString& path) override;
    [[nodiscard]] bool mayHoldPlaylist(const QString& path) const override;

    bool writeBytes(const QString& path, const QByteArray& bytes) override;
    bool writeText(const QString& path, const QString& text) override;
    bool appendBytes(const QString& path, const QByteArray& bytes) override;
    bool replaceBytes(const QString& path, qint64 offset, qint64 length, const QByteArray& bytes) override;
    bool copy(const QString& from, const QString& to) override;
    bool remove(const QString& path) override;
    bool replaceAnew(const QString& path, const std::vector<Passage>& gone,
                     const std::function<bool(const QByteArray& scratch)>& change) override;
    bool makeFolder(const QString& path) override;
    bool clearAttributes(const QString& path) override;
    bool carry(const QString& from, const QString& to, const CarryStep& goOn) override;
    bool carryBytes(const QByteArray& bytes, const QString& to, const CarryStep& goOn) override;
    bool settle(const QString& folder, const CarryStep& goOn) override;
    [[nodiscard]] QString privateFolder(const QString& path) override;
    bool emptyPrivate(const QString& folder, const std::function<bool()>& goOn) override;
    void beginWhole() override { m_undo.begin(); }
    bool endWhole() override;
    void beginPart() override { m_undo.beginPart(); }
    bool endPart() override;
    void failWhole() override;
    [[nodiscard]] bool wholeFailed() const override { return m_undo.failed(); }
    void beginCommand() override;
    void nameCommand(const QString& name) override { m_store.setReason(name); }
    [[nodiscard]] bool claimWrite(const QString& path) override;
    [[nodiscard]] std::optional<WriteFault> takeFault() override { return std::exchange(m_fault, std::nullopt); }
    void noteFault(WriteFault fault) override { m_fault = fault; }
    [[nodiscard]] std::optional<FilesTrouble> trouble() const override;
    [[nodiscard]] QStringList waiting() const override;

    [[nodiscard]] QByteArray encode(const QString& text) const override;
    [[nodiscard]] QString decode(const QByteArray& bytes) const override;

private:
    /// A file open for writing; `size` is what it had when it was opened.
    struct Target
    {
        Descriptor file;
        qint64 size = 0;
        QByteArray path;
        bool created = false;
    };

    class PartNote;
    /// Where something is carried to, and what stands there.
    struct Place
    {
        QByteArray path;
        std::optional<struct stat> older;
    };

    /// What may be written over.
    enum class Content { Any, TextOnly };

    /// Runs one writing action, alone or as a step of a whole change. One that fails is taken back.
    bool act(const std::function<bool()>& action);
    void noteError(int error);
    [[nodiscard]] std::optional<Target> openTarget(const QString& path, bool mayCreate, unsigned creationMode);
    /// Puts `head` and `rest` where `old` stood at `offset`. A failure leaves the old bytes.
    bool rewrite(const Target& target, qint64 offset, QByteArrayView old, QByteArrayView head, QByteArrayView rest);
    /// The whole file; what is the same at its ends is neither noted nor written.
    bool rewriteWhole(const Target& target, QByteArrayView old, QByteArrayView fresh);
    bool replaceWhole(const QString& path, const QByteArray& bytes, Content content);
    bool append(const QString& path, const QByteArray& bytes);
    bool replacePart(const QString& path, qint64 offset, qint64 length, const QByteArray& bytes);
    bool copyOver(const Descriptor& source, const struct stat& info, const QString& to);
    /// A new file, too large for the memory, that stands at its place as a whole or not at all.
    bool placeCopy(const Descriptor& source, const struct stat& info, const QByteArray& path);
    bool removeFile(const NameLookup::Found& found);
    [[nodiscard]] std::optional<Place> placeFor(const QString& to);
    bool carry(CarryJob& job, const QByteArray& target, const CarryStep& goOn);
    bool placeCarried(CarryJob& job, const QByteArray& target);
    /// What a program that was killed had on its way.
    void removeLeftPart();
    /// Keeps what stands in a file that is about to go. False if no copy could be made: then the file must stay.
    [[nodiscard]] bool keepOld(const QByteArray& path, const QByteArray& old);
    [[nodiscard]] bool keepPassages(const QByteArray& path, const std::vector<Passage>& passages);
    /// As keepOld, for a file that the running command changes bit by bit.
    [[nodiscard]] bool keepBeforeCommand(const Target& target);
    void changedByCommand(const Target& target);
    [[nodiscard]] QStringList sortedNames(const QString& folder, bool folders, const QString& patterns) const;

    PosixFilesOptions m_options;
    NameLookup m_names;
    RecoveryStore m_store;
    UndoJournal m_undo;
    std::optional<WriteFault> m_fault;
    /// By path, the state in which the running command has left a file whose old bytes it has kept.
    QHash<QByteArray, FileStamp> m_keptForCommand;
};

} // namespace orvantine
