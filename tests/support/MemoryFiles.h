#pragma once

#include "platform/CodePage.h"
#include "platform/EarlierVersions.h"
#include "platform/Files.h"

#include <QMap>

#include <functional>

namespace orvantine::fake {

struct MemoryFilesOptions
{
    CodePage codePage;
    bool adoptsHostTexts = true;
};

/// Files in memory, with the rules of the real ones: names are found ignoring case and normal form, "\" and "/" both
/// separate, a drive is a folder that exists. "/" and every drive stand from the start.
class MemoryFiles final : public Files
{
public:
    explicit MemoryFiles(MemoryFilesOptions options = {});

    [[nodiscard]] bool exists(const QString& path) const override;
    [[nodiscard]] bool folderExists(const QString& path) const override;
    [[nodiscard]] bool isFolder(const QString& path) const override;
    /// There are none here.
    [[nodiscard]] bool isLink(const QString& path) const override { return m_links.contains(keyOf(path)); }
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
    /// Nothing of the host lies here.
    bool replaceAnew(const QString&, const std::vector<Passage>&,
                     const std::function<bool(const QByteArray&)>&) override
    {
        return false;
    }
    bool makeFolder(const QString& path) override;
    bool clearAttributes(const QString& path) override;
    bool carry(const QString& from, const QString& to, const CarryStep& goOn) override;
    bool carryBytes(const QByteArray& bytes, const QString& to, const CarryStep& goOn) override;
    bool settle(const QString& folder, const CarryStep& goOn) override;
    [[nodiscard]] QString privateFolder(const QString& path) override;
    bool emptyPrivate(const QString& folder, const std::function<bool()>& goOn) override;
    void beginWhole() override;
    bool endWhole() override;
    void beginPart() override;
    bool endPart() override;
    void failWhole() override;
    [[nodiscard]] bool wholeFailed() const override { return m_failed; }
    void beginCommand() override;
    void nameCommand(const QString& name) override { m_command = name; }
    [[nodiscard]] bool claimWrite(const QString& path) override;
    [[nodiscard]] std::optional<WriteFault> takeFault() override { return std::exchange(m_fault, std::nullopt); }
    void noteFault(WriteFault fault) override { m_fault = fault; }

    [[nodiscard]] QByteArray encode(const QString& text) const override;
    [[nodiscard]] QString decode(const QByteArray& bytes) const override;

    // For the test
    /// Makes the folder and those above it.
    void putFolder(const QString& path);
    /// Puts a file as it is, with the folders above it: another program may give it any name.
    void put(const QString& path, const QByteArray& bytes);
    [[nodiscard]] std::optional<QByteArray> bytes(const QString& path) const;
    void setModified(const QString& path, const QDateTime& time);
    void setReadOnly(const QString& path, bool readOnly = true);
    /// Such a file exists and cannot be read or written.
    void setUnreadable(const QString& path, bool unreadable = true);
    /// Exact copies of the old bytes of what was written over or removed, in order.
    [[nodiscard]] const QList<QByteArray>& recovered() const { return m_recovered; }
    /// The same with all that is told of them. A test may add its own, and take some away.
    struct Kept
    {
        QString path;
        QDateTime when;
        QString reason;
        QByteArray bytes;
    };
    QList<Kept> AllKept;
    /// The folder is somebody else's: no private one can be made of it.
    void setForeign(const QString& path) { m_foreign += keyOf(path); }
    /// What stands there was reached by a link.
    void setLink(const QString& path) { m_links += keyOf(path); }
    /// What is carried takes so many bytes at a time.
    qint64 CarriedAtOnce = 64 * 1024;
    /// Told of each such piece: on a slow medium time goes by.
    std::function<void()> PieceCarried = [] {};
    /// What still fits on the disk for what is carried there; no bound if not set.
    std::optional<qint64> Room;
    /// From now on no old bytes can be kept.
    void breakStore() { m_storeIsBroken = true; }
    [[nodiscard]] std::optional<FilesTrouble> trouble() const override { return Trouble; }
    [[nodiscard]] QStringList waiting() const override { return Waiting; }
    /// What the program finds wrong at its start.
    std::optional<FilesTrouble> Trouble;
    QStringList Waiting;

    /// Time of what is written from now on.
    std::function<QDateTime()> Clock = [] { return QDateTime(QDate(2026, 11, 20), QTime(12, 0)); };

private:
    struct Node
    {
        /// As it was created, with "/".
        QString path;
        bool folder = false;
        bool readOnly = false;
        bool unreadable = false;
        QByteArray bytes;
        QDateTime modified;
        quint64 number = 0;
        qint64 changes = 0;
    };

    [[nodiscard]] static QString keyOf(const QString& path);
    [[nodiscard]] const Node* node(const QString& path) const;
    [[nodiscard]] Node* node(const QString& path);
    [[nodiscard]] Node* writable(const QString& path);
    Node* create(const QString& path, bool folder);
    /// The folder above stands.
    Node* insert(const QString& text, bool folder);
    void touch(Node& node);
    /// False if the bytes of the node could not be kept.
    [[nodiscard]] bool keep(const Node& node);
    [[nodiscard]] bool keepBeforeCommand(const Node& node);
    bool replaceWhole(const QString& path, const QByteArray& bytes, bool textOnly);
    /// Runs one writing action, unless one of the running change has failed.
    bool act(const std::function<bool()>& action);
    bool carryPieces(const QByteArray& bytes, const QDateTime& modified, const QString& to, const CarryStep& goOn);
    [[nodiscard]] QStringList names(const QString& folder, bool folders, const QString& patterns, bool hidden) const;

    MemoryFilesOptions m_options;
    QMap<QString, Node> m_nodes;
    QList<QByteArray> m_recovered;
    QString m_command;
    QStringList m_foreign;
    QStringList m_links;
    bool m_storeIsBroken = false;
    struct Change
    {
        QMap<QString, Node> before;
        bool failedBefore = false;
    };
    /// The outermost change, and the parts inside it.
    QList<Change> m_changesBefore;
    int m_wholes = 0;
    bool m_failed = false;
    std::optional<WriteFault> m_fault;
    /// Of the action that runs, should it fail.
    WriteFault m_reason = WriteFault::NoRights;
    /// By number of the node, the change that a command came to whose file was kept before.
    QMap<quint64, qint64> m_keptForCommand;
    quint64 m_lastNumber = 0;
    qint64 m_changes = 0;
};

} // namespace orvantine::fake
