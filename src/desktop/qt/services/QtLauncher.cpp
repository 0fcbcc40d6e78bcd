#include "desktop/qt/services/QtLauncher.h"

#include "desktop/qt/forms/HelpWindow.h"
#include "desktop/qt/forms/PropertiesDialog.h"
#include "desktop/qt/services/QtMessages.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QUrl>

#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr std::size_t MostRecent = 20;
constexpr int DBusTimeoutMs = 2000;

bool isProgram(const QByteArray& nativePath)
{
    struct stat state = {};
    return ::stat(nativePath.constData(), &state) == 0 && S_ISREG(state.st_mode) &&
           ::access(nativePath.constData(), X_OK) == 0;
}

bool liesBelow(const QString& path, const QString& folder)
{
    return !folder.isEmpty() && path.startsWith(folder + u'/');
}

} // namespace

bool isTrustedProgram(const QByteArray& nativePath)
{
    struct stat state = {};
    if (!isProgram(nativePath) || ::stat(nativePath.constData(), &state) != 0)
        return false;
    if (state.st_uid != 0 && state.st_uid != ::getuid())
        return false;
    return (state.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

QtLauncher::QtLauncher(const Files& files, QString programFolder)
    : m_files(files), m_programFolder(QDir::cleanPath(programFolder))
{
}

QtLauncher::~QtLauncher() = default;

bool QtLauncher::start(const LaunchRequest& request)
{
    m_recent.push_back(request);
    if (m_recent.size() > MostRecent)
        m_recent.erase(m_recent.begin());

    switch (request.kind) {
    case LaunchKind::Help:
        return showHelp(request.target, request.arguments.value(0));
    case LaunchKind::FileManager:
        return showFolder(request.target);
    case LaunchKind::Properties:
        return showProperties(request.target);
    case LaunchKind::DefaultPlayer:
        return openByDesktop(request.target);
    case LaunchKind::Program:
        return startProgram(request.target, request.arguments);
    case LaunchKind::Link:
        return QDesktopServices::openUrl(QUrl(request.target, QUrl::StrictMode));
    }
    return false;
}

void QtLauncher::closeAll()
{
    m_help.reset();
    for (const QPointer<QDialog>& sheet : std::exchange(m_sheets, {}))
        delete sheet;
}

bool QtLauncher::showHelp(const QString& file, const QString& topic)
{
    if (!m_help)
        m_help = std::make_unique<HelpWindow>();
    return m_help->showTopic(hostPath(file), topic);
}

bool QtLauncher::showFolder(const QString& path)
{
    const std::optional<QByteArray> native = m_files.nativePath(path);
    if (!native)
        return false;
    const bool folder = m_files.isFolder(path);
    return askFileManager(
        folder ? u"ShowFolders"_s : u"ShowItems"_s, *native,
        [this, shown = folder ? path : QFileInfo(QFile::decodeName(*native)).path()] { return openByDesktop(shown); });
}

bool QtLauncher::showProperties(const QString& path)
{
    const std::optional<QByteArray> native = m_files.nativePath(path);
    if (!native)
        return false;
    return askFileManager(u"ShowItemProperties"_s, *native, [this, path = *native] {
        std::erase(m_sheets, nullptr);
        m_sheets.emplace_back(showPropertiesDialog(path, frontWindow()));
        return true;
    });
}

bool QtLauncher::askFileManager(const QString& method, const QByteArray& nativePath,
                                const std::function<bool()>& otherwise)
{
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected())
        return otherwise();
    QDBusMessage call =
        QDBusMessage::createMethodCall(u"org.freedesktop.FileManager1"_s, u"/org/freedesktop/FileManager1"_s,
                                       u"org.freedesktop.FileManager1"_s, method);
    call << QStringList{u"file://"_s + QString::fromLatin1(nativePath.toPercentEncoding("/"))} << QString();
    auto* const question = new QDBusPendingCallWatcher(bus.asyncCall(call, DBusTimeoutMs), &m_questions);
    QObject::connect(question, &QDBusPendingCallWatcher::finished, question, [question, otherwise] {
        // One that takes its time to start shows the file all the same.
        if (question->isError() && question->error().type() != QDBusError::NoReply)
            otherwise();
        question->deleteLater();
    });
    return true;
}

bool QtLauncher::openByDesktop(const QString& path)
{
    const QString host = hostPath(path);
    const QString opener = QStandardPaths::findExecutable(u"xdg-open"_s);
    return !host.isEmpty() && !opener.isEmpty() && QProcess::startDetached(opener, {host});
}

bool QtLauncher::startProgram(const QString& path, const QStringList& arguments)
{
    const QString host = hostPath(path);
    const QByteArray native = QFile::encodeName(host);
    return !host.isEmpty() && (isOwn(host) ? isTrustedProgram(native) : isProgram(native)) &&
           QProcess::startDetached(host, arguments);
}

bool QtLauncher::isOwn(const QString& host) const
{
    return liesBelow(QDir::cleanPath(host), m_programFolder) ||
           liesBelow(QFileInfo(host).canonicalFilePath(), QFileInfo(m_programFolder).canonicalFilePath());
}

QString QtLauncher::hostPath(const QString& path) const
{
    return QFile::decodeName(m_files.nativePath(path).value_or(QByteArray()));
}

} // namespace orvantine
