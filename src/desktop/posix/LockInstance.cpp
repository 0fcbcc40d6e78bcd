#include "desktop/posix/LockInstance.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QUrl>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

constexpr int answerMilliseconds = 500;
/// For files: whoever gave up and asked again would hand them over twice.
constexpr int takingMilliseconds = 10'000;
constexpr char wish[] = "nach vorn\n";
constexpr char answer[] = "ok\n";
constexpr qint64 longestWish = 64;
/// Files that are handed over: this line, a line for each path, an empty line.
constexpr char offer[] = "nehmen\n";
constexpr char later[] = "nicht jetzt\n";
constexpr qint64 longestOffer = 1 << 20;

// A folder that nobody else can put something into, not even by a link that stood there first.
bool isOwnFolder(const QString& path)
{
    struct stat info = {};
    return !path.isEmpty() && ::lstat(path.toUtf8().constData(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == ::getuid() && (info.st_mode & 0022) == 0;
}

void makeFolder(const QString& path)
{
    ::mkdir(path.toUtf8().constData(), 0700);
}

/// Another process holds the lock. What cannot be locked at all is nobody's.
bool isTaken(const Descriptor& file)
{
    return ::flock(file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

QString fileName(const QString& title)
{
    QString name;
    for (const QChar unit : title.toLower())
        name += unit.isLetterOrNumber() ? unit : QChar(u'-');
    return name;
}

} // namespace

LockInstance::LockInstance(const QString& stateFolder, const QString& tempFolder)
{
    m_meeting = tempFolder + u"/orvanten-manager-"_s + QString::number(::getuid());
    makeFolder(m_meeting);
    if (!isOwnFolder(m_meeting))
        m_meeting.clear();
    for (qsizetype end = stateFolder.indexOf(u'/', 1); end > 0; end = stateFolder.indexOf(u'/', end + 1))
        makeFolder(stateFolder.left(end));
    makeFolder(stateFolder);
    m_folder = isOwnFolder(stateFolder) ? stateFolder : m_meeting;
}

LockInstance::~LockInstance() = default;

bool LockInstance::acquire(const QString& title)
{
    const QString name = m_folder + u'/' + fileName(title);
    m_socket = name + u".socket"_s;
    if (m_lock.isOpen() || m_folder.isEmpty())
        return true;
    Descriptor lock(
        ::open((name + u".lock"_s).toUtf8().constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    if (!lock.isOpen())
        return true;
    if (isTaken(lock))
        return false;
    m_lock = std::move(lock);
    m_server = listen(m_socket);
    return true;
}

bool LockInstance::acquireFolder(const QString& folder)
{
    // The folder itself is locked, so that no file of ours is left in it and each way to it leads to the one lock.
    Descriptor lock(::open(folder.toUtf8().constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    struct stat info = {};
    if (!lock.isOpen() || ::fstat(lock.get(), &info) != 0)
        return true;
    const QString socket = u"%1/%2-%3.socket"_s.arg(m_meeting).arg(info.st_dev).arg(info.st_ino);
    if (m_folderLock.isOpen() && socket == m_folderSocket)
        return true;
    m_socket = socket;
    m_folderServer.reset();
    m_folderLock.close();
    if (isTaken(lock))
        return false;
    m_folderSocket = socket;
    m_folderLock = std::move(lock);
    if (!m_meeting.isEmpty())
        m_folderServer = listen(m_socket);
    return true;
}

std::unique_ptr<QLocalServer> LockInstance::listen(const QString& path)
{
    auto made = std::make_unique<QLocalServer>();
    QLocalServer* const server = made.get();
    server->setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(path); // of a holder that died
    server->listen(path);
    QObject::connect(server, &QLocalServer::newConnection, server, [this, server] {
        while (QLocalSocket* const socket = server->nextPendingConnection()) {
            QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            const auto heard = [this, socket] { hear(*socket); };
            QObject::connect(socket, &QLocalSocket::readyRead, socket, heard);
            heard();
        }
    });
    return made;
}

void LockInstance::hear(QLocalSocket& socket)
{
    const QByteArray heard = socket.peek(longestOffer);
    if (heard.startsWith(offer))
        return hearOffer(socket, heard);
    if (!socket.canReadLine() && socket.bytesAvailable() < longestWish)
        return;
    const bool understood = socket.readLine(longestWish) == wish;
    if (understood)
        socket.write(answer);
    socket.disconnectFromServer();
    if (understood)
        Activated();
}

void LockInstance::hearOffer(QLocalSocket& socket, const QByteArray& heard)
{
    if (!heard.endsWith("\n\n")) {
        if (heard.size() >= longestOffer)
            socket.abort();
        return;
    }
    (void)socket.readAll();
    QStringList paths;
    for (const QByteArray& line : heard.mid(static_cast<qsizetype>(qstrlen(offer))).split('\n'))
        if (!line.isEmpty())
            paths += QUrl::fromPercentEncoding(line);
    // One that has hung up asks again.
    const bool taken = socket.state() == QLocalSocket::ConnectedState && TakesFiles();
    socket.write(taken ? answer : later);
    socket.flush();
    socket.disconnectFromServer();
    if (taken)
        Handed(paths);
}

LockInstance::Handing LockInstance::hand(const QString& title, const QStringList& paths)
{
    if (m_folder.isEmpty())
        return Handing::Nobody;
    QByteArray text = offer;
    for (const QString& path : paths)
        text += path.toUtf8().toPercentEncoding("/") + '\n';
    QLocalSocket socket;
    socket.connectToServer(m_folder + u'/' + fileName(title) + u".socket"_s);
    if (!socket.waitForConnected(answerMilliseconds))
        return Handing::Nobody;
    socket.write(text + '\n');
    while (!socket.canReadLine() && socket.waitForReadyRead(takingMilliseconds)) {
    }
    return socket.readLine(longestWish) == answer ? Handing::Taken : Handing::Later;
}

bool LockInstance::activateOther()
{
    if (!m_socket.startsWith(u'/'))
        return false;
    QElapsedTimer watch;
    watch.start();
    const auto left = [&watch] { return qMax(0, answerMilliseconds - static_cast<int>(watch.elapsed())); };
    QLocalSocket socket;
    socket.connectToServer(m_socket);
    if (!socket.waitForConnected(left()))
        return false;
    socket.write(wish);
    while (!socket.canReadLine() && left() > 0) {
        if (!socket.waitForReadyRead(left()))
            break;
    }
    return socket.readLine(longestWish) == answer;
}

} // namespace orvantine
