#include "desktop/posix/LockInstance.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>
#include <QThread>
#include <QUrl>

#include <cerrno>
#include <utility>

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
/// Behind a blank the desktop's leave to come to the front may follow, in percent form.
constexpr char wish[] = "nach vorn";
constexpr char answer[] = "ok\n";
constexpr qint64 longestWish = 1024;
/// Files that are handed over: a line of this and that leave, a line for each path, an empty line.
constexpr char offer[] = "nehmen";
constexpr char later[] = "nicht jetzt\n";
/// More than a command line can hold, in percent form.
constexpr qint64 longestOffer = 8 << 20;
constexpr qsizetype mostWaiting = 20'000;
constexpr int lookMilliseconds = 200;
/// A program that ends hides its window first and lets go of its lock last.
constexpr unsigned long endingLookMilliseconds = 20;

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

QByteArray firstLine(const char* word, const QByteArray& token)
{
    return token.isEmpty() ? word + QByteArray("\n") : word + (' ' + token.toPercentEncoding()) + '\n';
}

/// The leave behind the word; nothing where the line begins with another one.
std::optional<QByteArray> tokenBehind(const char* word, const QByteArray& line)
{
    if (!line.startsWith(word))
        return std::nullopt;
    const QByteArray rest = line.mid(static_cast<qsizetype>(qstrlen(word))).trimmed();
    return QByteArray::fromPercentEncoding(rest);
}

LockInstance::Handing handTo(const QString& path, const Errand& errand)
{
    QByteArray text = firstLine(offer, errand.token);
    for (const QString& file : errand.paths)
        text += file.toUtf8().toPercentEncoding("/") + '\n';
    QLocalSocket socket;
    socket.connectToServer(path);
    if (!socket.waitForConnected(answerMilliseconds))
        return LockInstance::Handing::Nobody;
    socket.write(text + '\n');
    while (!socket.canReadLine() && socket.waitForReadyRead(takingMilliseconds)) {
    }
    return socket.readLine(longestWish) == answer ? LockInstance::Handing::Taken : LockInstance::Handing::Later;
}

} // namespace

LockInstance::LockInstance(const QString& stateFolder, const QString& tempFolder, Errand errand,
                           std::chrono::milliseconds patience)
    : m_errand(std::move(errand)), m_patience(patience)
{
    QObject::connect(&m_look, &QTimer::timeout, &m_look, [this] { offerWaiting(); });
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
    const bool held = hold(title);
    if (held && !m_errand.paths.isEmpty())
        m_look.start(lookMilliseconds);
    return held;
}

bool LockInstance::hold(const QString& title)
{
    const QString name = m_folder + u'/' + fileName(title);
    m_socket = name + u".socket"_s;
    if (m_lock.isOpen() || m_folder.isEmpty())
        return true;
    Descriptor lock(
        ::open((name + u".lock"_s).toUtf8().constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    if (!lock.isOpen())
        return true;
    if (isTaken(lock)) {
        m_other = std::move(lock);
        return false;
    }
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
    if (isTaken(lock)) {
        m_other = std::move(lock);
        return false;
    }
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
    const std::optional<QByteArray> token = tokenBehind(wish, socket.readLine(longestWish));
    if (token)
        socket.write(answer);
    socket.disconnectFromServer();
    if (token)
        comeToFront(*token);
}

void LockInstance::hearOffer(QLocalSocket& socket, const QByteArray& heard)
{
    if (!heard.endsWith("\n\n")) {
        if (heard.size() >= longestOffer)
            socket.abort();
        return;
    }
    (void)socket.readAll();
    QList<QByteArray> lines = heard.split('\n');
    const QByteArray token = tokenBehind(offer, lines.takeFirst()).value_or(QByteArray());
    lines.removeAll(QByteArray());
    // One that has hung up asks again.
    const bool taken = socket.state() == QLocalSocket::ConnectedState && m_errand.paths.size() < mostWaiting;
    socket.write(taken ? answer : later);
    socket.flush();
    socket.disconnectFromServer();
    if (!taken)
        return;
    for (const QByteArray& line : std::as_const(lines))
        m_errand.paths += QUrl::fromPercentEncoding(line);
    m_look.start(lookMilliseconds);
    comeToFront(token);
    offerWaiting();
}

void LockInstance::comeToFront(const QByteArray& token)
{
    // This is where Qt looks for it when a window is to be activated.
    constexpr char place[] = "XDG_ACTIVATION_TOKEN";
    if (!token.isEmpty())
        qputenv(place, token);
    Activated();
    qunsetenv(place);
}

void LockInstance::offerWaiting()
{
    if (!m_errand.paths.isEmpty() && !TakesFiles())
        return;
    m_look.stop();
    if (!m_errand.paths.isEmpty())
        Handed(std::exchange(m_errand.paths, {}));
}

LockInstance::Handing LockInstance::hand(const QString& title, const QStringList& paths)
{
    if (m_folder.isEmpty())
        return Handing::Nobody;
    return handTo(m_folder + u'/' + fileName(title) + u".socket"_s, {.paths = paths, .token = m_errand.token});
}

bool LockInstance::activateOther()
{
    if (!m_socket.startsWith(u'/'))
        return false;
    if (!m_errand.paths.isEmpty())
        return handTo(m_socket, m_errand) == Handing::Taken;
    QElapsedTimer watch;
    watch.start();
    const auto left = [&watch] { return qMax(0, answerMilliseconds - static_cast<int>(watch.elapsed())); };
    QLocalSocket socket;
    socket.connectToServer(m_socket);
    if (!socket.waitForConnected(left()))
        return false;
    socket.write(firstLine(wish, m_errand.token));
    while (!socket.canReadLine() && left() > 0) {
        if (!socket.waitForReadyRead(left()))
            break;
    }
    return socket.readLine(longestWish) == answer;
}

bool LockInstance::awaitEnd()
{
    if (!m_other.isOpen())
        return false;
    QElapsedTimer watch;
    watch.start();
    bool taken = isTaken(m_other);
    while (taken && watch.elapsed() < m_patience.count()) {
        QThread::msleep(endingLookMilliseconds);
        taken = isTaken(m_other);
    }
    // Whoever asks for the lock next opens it anew.
    m_other.close();
    return !taken;
}

} // namespace orvantine
