#include "support/LoggingFiles.h"

#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

QStringList LoggingFiles::actions()
{
    return {u"files.write"_s,        u"files.append"_s,         u"files.replace"_s, u"files.copy"_s,
            u"files.remove"_s,       u"files.makeFolder"_s,     u"files.carry"_s,   u"files.privateFolder"_s,
            u"files.emptyPrivate"_s, u"files.clearAttributes"_s};
}

bool LoggingFiles::exists(const QString& path) const
{
    return m_log.call(u"files.exists %1"_s.arg(quoted(path))) && m_files.exists(path);
}

bool LoggingFiles::folderExists(const QString& path) const
{
    return m_log.call(u"files.folderExists %1"_s.arg(quoted(path))) && m_files.folderExists(path);
}

bool LoggingFiles::isFolder(const QString& path) const
{
    return m_log.call(u"files.isFolder %1"_s.arg(quoted(path))) && m_files.isFolder(path);
}

std::optional<qint64> LoggingFiles::size(const QString& path) const
{
    return m_log.call(u"files.size %1"_s.arg(quoted(path))) ? m_files.size(path) : std::nullopt;
}

std::optional<QDateTime> LoggingFiles::modified(const QString& path) const
{
    return m_log.call(u"files.modified %1"_s.arg(quoted(path))) ? m_files.modified(path) : std::nullopt;
}

std::optional<FileStamp> LoggingFiles::stamp(const QString& path) const
{
    return m_log.call(u"files.stamp %1"_s.arg(quoted(path))) ? m_files.stamp(path) : std::nullopt;
}

std::optional<QByteArray> LoggingFiles::nativePath(const QString& path) const
{
    return m_log.call(u"files.nativePath %1"_s.arg(quoted(path))) ? m_files.nativePath(path) : std::nullopt;
}

QStringList LoggingFiles::list(const QString& folder, const QString& patterns) const
{
    return m_log.call(u"files.list %1 %2"_s.arg(quoted(folder), quoted(patterns))) ? m_files.list(folder, patterns)
                                                                                   : QStringList();
}

QStringList LoggingFiles::folders(const QString& folder) const
{
    return m_log.call(u"files.folders %1"_s.arg(quoted(folder))) ? m_files.folders(folder) : QStringList();
}

ReadBytes LoggingFiles::readBytes(const QString& path) const
{
    return m_log.call(u"files.readBytes %1"_s.arg(quoted(path))) ? m_files.readBytes(path) : ReadBytes{};
}

ReadText LoggingFiles::readText(const QString& path) const
{
    return m_log.call(u"files.readText %1"_s.arg(quoted(path))) ? m_files.readText(path) : ReadText{};
}

ReadText LoggingFiles::readPlaylist(const QString& path)
{
    if (!m_log.call(u"files.readPlaylist %1"_s.arg(quoted(path))))
        return {};
    const std::optional<FileStamp> before = m_files.stamp(path);
    ReadText read = m_files.readPlaylist(path);
    if (before != m_files.stamp(path))
        Written(path);
    return read;
}

std::optional<WriteFault> LoggingFiles::takeFault()
{
    const std::optional<WriteFault> inner = m_files.takeFault();
    const std::optional<WriteFault> own = std::exchange(m_fault, std::nullopt);
    return own ? own : inner;
}

bool LoggingFiles::admits(const QString& line)
{
    if (m_log.call(line))
        return true;
    m_fault = WriteFault::Disk;
    m_files.failWhole();
    return false;
}

bool LoggingFiles::write(const QString& line, const QString& path, const std::function<bool()>& action)
{
    if (!admits(line))
        return false;
    const std::optional<FileStamp> before = m_files.stamp(path);
    const bool done = action();
    if (before != m_files.stamp(path))
        Written(path);
    return done;
}

bool LoggingFiles::writeBytes(const QString& path, const QByteArray& bytes)
{
    return write(u"files.writeBytes %1 %2"_s.arg(quoted(path), quoted(m_files.decode(bytes))), path,
                 [&] { return m_files.writeBytes(path, bytes); });
}

bool LoggingFiles::writeText(const QString& path, const QString& text)
{
    return write(u"files.writeText %1 %2"_s.arg(quoted(path), quoted(text)), path,
                 [&] { return m_files.writeText(path, text); });
}

bool LoggingFiles::appendBytes(const QString& path, const QByteArray& bytes)
{
    return write(u"files.appendBytes %1 %2"_s.arg(quoted(path), quoted(m_files.decode(bytes))), path,
                 [&] { return m_files.appendBytes(path, bytes); });
}

bool LoggingFiles::replaceBytes(const QString& path, qint64 offset, qint64 length, const QByteArray& bytes)
{
    return write(u"files.replaceBytes %1 at %2 length %3 %4"_s.arg(
                     quoted(path), QString::number(offset), QString::number(length), quoted(m_files.decode(bytes))),
                 path, [&] { return m_files.replaceBytes(path, offset, length, bytes); });
}

bool LoggingFiles::copy(const QString& from, const QString& to)
{
    return admits(u"files.copy %1 to %2"_s.arg(quoted(from), quoted(to))) && m_files.copy(from, to);
}

bool LoggingFiles::remove(const QString& path)
{
    return admits(u"files.remove %1"_s.arg(quoted(path))) && m_files.remove(path);
}

bool LoggingFiles::makeFolder(const QString& path)
{
    if (!m_log.call(u"files.makeFolder %1"_s.arg(quoted(path))) || !m_files.makeFolder(path))
        return false;
    Written(path);
    return true;
}

bool LoggingFiles::carry(const QString& from, const QString& to, const CarryStep& goOn)
{
    return admits(u"files.carry %1 to %2"_s.arg(quoted(from), quoted(to))) && m_files.carry(from, to, goOn);
}

bool LoggingFiles::carryBytes(const QByteArray& bytes, const QString& to, const CarryStep& goOn)
{
    return write(u"files.carryBytes %1 %2"_s.arg(quoted(to), quoted(m_files.decode(bytes))), to,
                 [&] { return m_files.carryBytes(bytes, to, goOn); });
}

bool LoggingFiles::settle(const QString& folder, const CarryStep& goOn)
{
    return m_log.call(u"files.settle %1"_s.arg(quoted(folder))) && m_files.settle(folder, goOn);
}

QString LoggingFiles::privateFolder(const QString& path)
{
    return m_log.call(u"files.privateFolder %1"_s.arg(quoted(path))) ? m_files.privateFolder(path) : QString();
}

bool LoggingFiles::emptyPrivate(const QString& folder, const std::function<bool()>& goOn)
{
    return m_log.call(u"files.emptyPrivate %1"_s.arg(quoted(folder))) && m_files.emptyPrivate(folder, goOn);
}

bool LoggingFiles::clearAttributes(const QString& path)
{
    return m_log.call(u"files.clearAttributes %1"_s.arg(quoted(path))) && m_files.clearAttributes(path);
}

} // namespace orvantine::fake
