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

#include <csignal>
#include <utility>

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
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

/// In a session of its own, so that it outlives this program.
class ChildProgram final : public RunningProgram
{
public:
    explicit ChildProgram(pid_t process) : m_process(process) {}

    static std::unique_ptr<ChildProgram> started(const QByteArray& program, const QStringList& arguments)
    {
        QByteArrayList texts{program};
        for (const QString& argument : arguments)
            texts.append(QFile::encodeName(argument));
        std::vector<char*> handed;
        for (QByteArray& text : texts)
            handed.push_back(text.data());
        handed.push_back(nullptr);
        sigset_t none;
        sigemptyset(&none);
        posix_spawnattr_t attributes;
        posix_spawnattr_init(&attributes);
        posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK);
        posix_spawnattr_setsigmask(&attributes, &none);
        pid_t process = 0;
        const bool runs =
            ::posix_spawn(&process, program.constData(), nullptr, &attributes, handed.data(), environ) == 0;
        posix_spawnattr_destroy(&attributes);
        return runs ? std::make_unique<ChildProgram>(process) : nullptr;
    }

    [[nodiscard]] std::optional<int> exitCode() override
    {
        int status = 0;
        const pid_t found = m_code ? 0 : ::waitpid(m_process, &status, WNOHANG);
        if (found != 0)
            m_code = found == m_process && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return m_code;
    }

private:
    pid_t m_process;
    std::optional<int> m_code;
};

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

QtLauncher::QtLauncher(const Files& files, const QString& programFolder)
    : m_files(files), m_programFolder(QDir::cleanPath(programFolder))
{
}

QtLauncher::~QtLauncher() = default;

void QtLauncher::remember(const LaunchRequest& request)
{
    m_recent.push_back(request);
    if (m_recent.size() > MostRecent)
        m_recent.erase(m_recent.begin());
}

std::unique_ptr<RunningProgram> QtLauncher::run(const LaunchRequest& request)
{
    remember(request);
    const QByteArray program = m_files.nativePath(request.target).value_or(QByteArray());
    if (program.isEmpty() || !isTrustedProgram(program))
        return nullptr;
    return ChildProgram::started(program, request.arguments);
}

bool QtLauncher::start(const LaunchRequest& request)
{
    remember(request);
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
