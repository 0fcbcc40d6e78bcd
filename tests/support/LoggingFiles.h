#pragma once

#include "platform/Files.h"
#include "support/CallLog.h"

#include <functional>

namespace orvantine::fake {

/// Writes every call to another Files down and can make it fail: a failing query finds nothing, a failing reading
/// step is Failed, a failing action leaves the disk as it was.
class LoggingFiles final : public Files
{
public:
    LoggingFiles(Files& files, CallLog& log) : m_files(files), m_log(log) {}

    [[nodiscard]] bool exists(const QString& path) const override;
    [[nodiscard]] bool folderExists(const QString& path) const override;
    [[nodiscard]] bool isFolder(const QString& path) const override;
    [[nodiscard]] bool isLink(const QString& path) const override { return m_files.isLink(path); }
    [[nodiscard]] std::optional<qint64> size(const QString& path) const override;
    [[nodiscard]] std::optional<QDateTime> modified(const QString& path) const override;
    [[nodiscard]] std::optional<FileStamp> stamp(const QString& path) const override;
    [[nodiscard]] std::optional<QByteArray> nativePath(const QString& path) const override;
    [[nodiscard]] QStringList list(const QString& folder, const QString& patterns) const override;
    [[nodiscard]] QStringList folders(const QString& folder) const override;

    [[nodiscard]] ReadBytes readBytes(const QString& path) const override;
    [[nodiscard]] ReadText readText(const QString& path) const override;
    [[nodiscard]] ReadText readPlaylist(const QString& path) override;
    [[nodiscard]] bool mayHoldPlaylist(const QString& path) const override { return m_files.mayHoldPlaylist(path); }

    bool writeBytes(const QString& path, const QByteArray& bytes) override;
    bool writeText(const QString& path, const QString& text) override;
    bool appendBytes(const QString& path, const QByteArray& bytes) override;
    bool replaceBytes(const QString& path, qint64 offset, qint64 length, const QByteArray& bytes) override;
    bool copy(const QString& from, const QString& to) override;
    bool remove(const QString& path) override;
    bool replaceAnew(const QString& path, const std::vector<Passage>& gone,
                     const std::function<bool(const QByteArray& scratch)>& change) override
    {
        return m_files.replaceAnew(path, gone, change);
    }
    bool makeFolder(const QString& path) override;
    bool clearAttributes(const QString& path) override;
    bool carry(const QString& from, const QString& to, const CarryStep& goOn) override;
    bool carryBytes(const QByteArray& bytes, const QString& to, const CarryStep& goOn) override;
    bool settle(const QString& folder, const CarryStep& goOn) override;
    [[nodiscard]] QString privateFolder(const QString& path) override;
    bool emptyPrivate(const QString& folder, const std::function<bool()>& goOn) override;
    void beginWhole() override { m_files.beginWhole(); }
    bool endWhole() override { return m_files.endWhole(); }
    void beginPart() override { m_files.beginPart(); }
    bool endPart() override { return m_files.endPart(); }
    void failWhole() override { m_files.failWhole(); }
    [[nodiscard]] bool wholeFailed() const override { return m_files.wholeFailed(); }
    void beginCommand() override { m_files.beginCommand(); }
    void nameCommand(const QString& name) override { m_files.nameCommand(name); }
    [[nodiscard]] bool claimWrite(const QString& path) override { return m_files.claimWrite(path); }
    [[nodiscard]] std::optional<WriteFault> takeFault() override;
    void noteFault(WriteFault fault) override { m_fault = fault; }
    [[nodiscard]] std::optional<FilesTrouble> trouble() const override { return m_files.trouble(); }
    [[nodiscard]] QStringList waiting() const override { return m_files.waiting(); }

    [[nodiscard]] QByteArray encode(const QString& text) const override { return m_files.encode(text); }
    [[nodiscard]] QString decode(const QByteArray& bytes) const override { return m_files.decode(bytes); }

    /// Told of a path whose bytes an action has just changed: a real file gets the virtual clock's time there.
    std::function<void(const QString& path)> Written = [](const QString&) {};

    /// Beginnings of the logged lines of all actions, queries and reading steps left out.
    [[nodiscard]] static QStringList actions();

private:
    bool write(const QString& line, const QString& path, const std::function<bool()>& action);
    /// Writes the call down; one that is to fail fails as a device does.
    bool admits(const QString& line);

    Files& m_files;
    CallLog& m_log;
    std::optional<WriteFault> m_fault;
};

} // namespace orvantine::fake
