#include "system/app/Program.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <gtest/gtest.h>

#include <csignal>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

constexpr auto MainTitle = "Orvanten Manager";
constexpr int CallMilliseconds = 20'000;
/// Bits and roles of the accessibility protocol.
constexpr uint EnabledState = 8;
constexpr uint ShowingState = 25;
constexpr uint MenuBarRole = 34;
constexpr int MostChildren = 2000;

QVariantList call(const QString& bus, const QString& service, const QString& path, const QString& interface,
                  const QString& method, const QVariantList& arguments = {})
{
    QDBusMessage message = QDBusMessage::createMethodCall(service, path, interface, method);
    message.setArguments(arguments);
    const QDBusMessage reply = QDBusConnection(bus).call(message, QDBus::Block, CallMilliseconds);
    return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
}

const QString AccessibleInterface = u"org.a11y.atspi.Accessible"_s;

} // namespace

Program::Program(Desk& desk, const QStringList& arguments) : m_desk(desk), m_process(desk.environment)
{
    m_process.start(QStringLiteral(ORVANTINE_PROGRAM), arguments);
    EXPECT_TRUE(m_process.waitForStarted());
}

Program::~Program()
{
    m_process.end();
    if (!m_controlsBus.isEmpty())
        QDBusConnection::disconnectFromBus(m_controlsBus);
}

bool Program::awaitWindow()
{
    return await([this] {
               hear();
               if (m_complaints.contains("window visible"))
                   return true;
               if (!runs())
                   return true;
               closeBox();
               return false;
           }) &&
           m_complaints.contains("window visible");
}

bool Program::ends()
{
    return await([this] { return !runs(); }) && m_process.exitStatus() == QProcess::NormalExit &&
           m_process.exitCode() == 0;
}

bool Program::closes()
{
    // A box that is open swallows the wish, so it is closed and the wish is told again.
    return await([this] {
               if (!runs())
                   return true;
               closeBox();
               if (!m_desk.window(QString::fromLatin1(MainTitle)).isEmpty())
                   m_desk.press(QString::fromLatin1(MainTitle), u"alt+F4"_s);
               m_process.waitForFinished(1000);
               return !runs();
           }) &&
           ends();
}

bool Program::terminates()
{
    m_process.terminate();
    return await([this] { return !runs(); });
}

void Program::tell(int signal) const
{
    ::kill(static_cast<pid_t>(m_process.processId()), signal);
}

void Program::closeBox()
{
    for (const QString& title : m_desk.windows()) {
        if (title == QLatin1StringView(MainTitle) || title == u"Orvantine"_s)
            continue;
        m_boxes.append(title);
        m_desk.press(title, u"Return"_s);
        int looks = 0;
        static_cast<void>(await([this, &title, &looks] {
            if (!runs() || !m_desk.windows().contains(title))
                return true;
            // One without a default button.
            if (++looks % 10 == 0)
                m_desk.press(title, u"Escape"_s);
            return false;
        }));
    }
}

void Program::hear()
{
    m_complaints += m_process.readAllStandardError();
}

bool Program::connectToControls()
{
    if (!m_controlsBus.isEmpty())
        return true;
    const QString session = u"session-"_s + m_desk.path({});
    const QString address = m_desk.environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s);
    QDBusConnection::connectToBus(address, session);
    const QVariantList found = call(session, u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.a11y.Bus"_s, u"GetAddress"_s);
    QDBusConnection::disconnectFromBus(session);
    if (found.isEmpty())
        return false;
    m_controlsBus = u"controls-"_s + m_desk.path({});
    return QDBusConnection::connectToBus(found.first().toString(), m_controlsBus).isConnected();
}

QList<Program::Accessible> Program::children(const Accessible& parent) const
{
    const QVariantList reply = call(m_controlsBus, parent.service, parent.path, AccessibleInterface, u"GetChildren"_s);
    QList<Accessible> found;
    if (reply.isEmpty())
        return found;
    const auto list = reply.first().value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        Accessible child;
        QDBusObjectPath path;
        list.beginStructure();
        list >> child.service >> path;
        list.endStructure();
        child.path = path.path();
        found.append(child);
    }
    list.endArray();
    return found;
}

std::optional<Control> Program::find(const Accessible& from, const QString& name) const
{
    const auto property = [this](const Accessible& of, const QString& which) {
        const QVariantList told = call(m_controlsBus, of.service, of.path, u"org.freedesktop.DBus.Properties"_s,
                                       u"Get"_s, {AccessibleInterface, which});
        return told.isEmpty() ? QVariant() : told.first().value<QDBusVariant>().variant();
    };
    // A list of thousands of rows is not looked through.
    if (property(from, u"ChildCount"_s).toInt() > MostChildren)
        return std::nullopt;
    for (const Accessible& child : children(from)) {
        const QVariantList states = call(m_controlsBus, child.service, child.path, AccessibleInterface, u"GetState"_s);
        if (states.isEmpty())
            continue;
        const uint state = qdbus_cast<QList<uint>>(states.first()).value(0);
        if ((state >> ShowingState & 1U) == 0)
            continue;
        const QString childName = property(child, u"Name"_s).toString();
        // A row tells its place behind its text: "Nebelhorn, 3 von 7".
        if (childName == name || childName.startsWith(name + u", "_s)) {
            Control control{.name = name, .enabled = (state >> EnabledState & 1U) != 0};
            const QVariantList extents = call(m_controlsBus, child.service, child.path, u"org.a11y.atspi.Component"_s,
                                              u"GetExtents"_s, {QVariant::fromValue(0U)});
            if (!extents.isEmpty()) {
                int x = 0;
                int y = 0;
                int width = 0;
                int height = 0;
                const auto place = extents.first().value<QDBusArgument>();
                place.beginStructure();
                place >> x >> y >> width >> height;
                place.endStructure();
                control.place = QRect(x, y, width, height);
            }
            return control;
        }
        const QVariantList role = call(m_controlsBus, child.service, child.path, AccessibleInterface, u"GetRole"_s);
        if (role.value(0).toUInt() == MenuBarRole)
            continue;
        if (auto deeper = find(child, name))
            return deeper;
    }
    return std::nullopt;
}

std::optional<Control> Program::control(const QString& name)
{
    if (!connectToControls())
        return std::nullopt;
    // The registry's children are the programs, and this one is the only one of its bus.
    for (const Accessible& program : children({u"org.a11y.atspi.Registry"_s, u"/org/a11y/atspi/accessible/root"_s}))
        if (auto found = find(program, name))
            return found;
    return std::nullopt;
}

std::optional<QPoint> Program::awaitControl(const QString& name)
{
    std::optional<Control> found;
    const bool ready = await([this, &name, &found] {
        found = control(name);
        return !runs() || (found && found->enabled && found->place.isValid());
    });
    EXPECT_TRUE(ready && found) << "no control to click: " << name.toStdString() << '\n' << complaints();
    return ready && found ? std::optional(found->place.center()) : std::nullopt;
}

void Program::click(const QString& name)
{
    if (const auto point = awaitControl(name))
        m_desk.click(*point);
}

void Program::doubleClick(const QString& name)
{
    if (const auto point = awaitControl(name))
        m_desk.doubleClick(*point);
}

} // namespace orvantine::desk
