#include "desktop/posix/LockInstance.h"

#include <QElapsedTimer>
#include <QLocalServer>
#include <QLocalSocket>

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

constexpr int answerMilliseconds = 500;
constexpr char wish[] = "nach vorn\n";
constexpr char answer[] = "ok\n";
constexpr qint64 longestWish = 64;

// A folder that nobody else can put something into, not even by a link that stood there first.
bool isOwnFolder(const QString& path)
{
    struct stat info = {};
    return !path.isEmpty() && ::lstat(path.toUtf8().constData(), &info) == 0 && S_ISDIR(info.st_mode) &&
           info.st_uid == ::getuid() && (info.st_mode & 0022) == 0;
}

QString fileName(const QString& title)
{
    QString name;
    for (const QChar unit : title.toLower())
        name += unit.isLetterOrNumber() ? unit : QChar(u'-');
    return name;
}

} // namespace

LockInstance::LockInstance(const QString& runtimeFolder, const QString& tempFolder)
{
    m_folder = runtimeFolder;
    if (isOwnFolder(m_folder))
        return;
    m_folder = tempFolder + u"/orvanten-manager-"_s + QString::number(::getuid());
    ::mkdir(m_folder.toUtf8().constData(), 0700);
    if (!isOwnFolder(m_folder))
        m_folder.clear();
}

LockInstance::~LockInstance() = default;

bool LockInstance::acquire(const QString& title)
{
    m_name = fileName(title);
    if (m_lock.isOpen())
        return true;
    if (m_folder.isEmpty())
        return true;
    const QByteArray path = (m_folder + u'/' + m_name + u".lock"_s).toUtf8();
    Descriptor lock(::open(path.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    if (!lock.isOpen())
        return true;
    if (::flock(lock.get(), LOCK_EX | LOCK_NB) != 0)
        return errno != EWOULDBLOCK;
    m_lock = std::move(lock);
    listen();
    return true;
}

void LockInstance::listen()
{
    const QString path = m_folder + u'/' + m_name + u".socket"_s;
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(path); // of a holder that died
    m_server->listen(path);
    QObject::connect(m_server.get(), &QLocalServer::newConnection, m_server.get(), [this] {
        while (QLocalSocket* const socket = m_server->nextPendingConnection()) {
            QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            const auto hear = [this, socket] {
                if (!socket->canReadLine() && socket->bytesAvailable() < longestWish)
                    return;
                const bool understood = socket->readLine(longestWish) == wish;
                if (understood)
                    socket->write(answer);
                socket->disconnectFromServer();
                if (understood)
                    Activated();
            };
            QObject::connect(socket, &QLocalSocket::readyRead, socket, hear);
            hear();
        }
    });
}

bool LockInstance::activateOther()
{
    if (m_folder.isEmpty() || m_name.isEmpty())
        return false;
    QElapsedTimer watch;
    watch.start();
    const auto left = [&watch] { return qMax(0, answerMilliseconds - static_cast<int>(watch.elapsed())); };
    QLocalSocket socket;
    socket.connectToServer(m_folder + u'/' + m_name + u".socket"_s);
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
