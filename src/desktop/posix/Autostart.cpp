#include "desktop/posix/Autostart.h"

#include "desktop/posix/AtomicFile.h"

#include <QList>

#include <utility>

#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

constexpr auto commandKey = "X-Orvantine-Command="_L1;
constexpr auto execKey = "Exec="_L1;
constexpr auto hideArgument = " /hide"_L1;

QString escaped(const QString& text)
{
    QString result = text;
    return result.replace(u'\\', u"\\\\"_s).replace(u'\n', u"\\n"_s).replace(u'\r', u"\\r"_s);
}

QString unescaped(QStringView text)
{
    QString result;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'\\' || i + 1 == text.size()) {
            result += text[i];
            continue;
        }
        const QChar next = text[++i];
        result += next == u'n' ? QChar(u'\n') : next == u'r' ? QChar(u'\r') : next == u's' ? QChar(u' ') : next;
    }
    return result;
}

// An argument of an Exec line: quoted, with the shell's own characters and the field codes escaped.
QString quotedArgument(const QString& text)
{
    QString result;
    for (const QChar unit : text) {
        if (u"\"`$\\"_s.contains(unit))
            result += u'\\';
        if (unit == u'%')
            result += u'%';
        result += unit;
    }
    return u'"' + result + u'"';
}

bool isFile(const QString& path)
{
    struct stat info = {};
    return ::stat(path.toUtf8().constData(), &info) == 0 && S_ISREG(info.st_mode);
}

} // namespace

Autostart::Autostart(QString folder, QString program) : m_folder(std::move(folder)), m_program(std::move(program)) {}

QByteArray Autostart::file() const
{
    return m_folder.toUtf8() + "/Orvantinen.desktop";
}

std::optional<QString> Autostart::command() const
{
    QByteArray bytes;
    if (m_folder.isEmpty() || !readSmallFile(file(), bytes))
        return std::nullopt;
    std::optional<QString> command;
    std::optional<QString> run;
    for (const QString& line : QString::fromUtf8(bytes).split(u'\n')) {
        // The desktop's own way to switch an entry off.
        if (line.trimmed() == "Hidden=true"_L1 || line.trimmed() == "X-GNOME-Autostart-enabled=false"_L1)
            return std::nullopt;
        if (line.startsWith(commandKey))
            command = unescaped(QStringView(line).sliced(commandKey.size()));
        else if (line.startsWith(execKey))
            run = unescaped(QStringView(line).sliced(execKey.size()));
    }
    return command ? command : run;
}

bool Autostart::setCommand(const QString& command)
{
    if (m_folder.isEmpty())
        return false;
    const bool hidden = command.endsWith(hideArgument);
    QString program = hidden ? command.chopped(hideArgument.size()) : command;
    program.replace(u'\\', u'/');
    if (!isFile(program) && program.endsWith(".exe"_L1, Qt::CaseInsensitive))
        program.chop(4);
    if (!isFile(program) && !m_program.isEmpty())
        program = m_program;
    const QString run = quotedArgument(program) + (hidden ? hideArgument : ""_L1);
    const QString text = u"[Desktop Entry]\nType=Application\nName=Orvanten Manager\nExec="_s + escaped(run) +
                         u"\nTerminal=false\nX-GNOME-Autostart-enabled=true\n"_s + commandKey + escaped(command) +
                         u"\n"_s;
    return writeAtomically(file(), text.toUtf8());
}

bool Autostart::remove()
{
    return !m_folder.isEmpty() && ::unlink(file().constData()) == 0;
}

} // namespace orvantine
