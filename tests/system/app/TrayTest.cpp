#include "system/app/Program.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <memory>

namespace orvantine::desk {

using namespace Qt::StringLiterals;

namespace {

const QString Watcher = u"org.kde.StatusNotifierWatcher"_s;
const QString Item = u"org.kde.StatusNotifierItem"_s;
const QString Properties = u"org.freedesktop.DBus.Properties"_s;
const QString Title = u"Orvanten Manager"_s;

/// The notification area of a desktop: programs register their items with it, and it clicks them.
class NotificationArea final : public QDBusVirtualObject
{
public:
    explicit NotificationArea(const Desk& desk)
        : m_bus(QDBusConnection::connectToBus(desk.environment.value(u"DBUS_SESSION_BUS_ADDRESS"_s), u"area"_s))
    {
        EXPECT_TRUE(m_bus.registerVirtualObject(u"/StatusNotifierWatcher"_s, this));
        EXPECT_TRUE(m_bus.registerService(Watcher));
    }
    ~NotificationArea() override
    {
        m_bus.unregisterService(Watcher);
        QDBusConnection::disconnectFromBus(u"area"_s);
    }
    NotificationArea(const NotificationArea&) = delete;
    NotificationArea& operator=(const NotificationArea&) = delete;

    /// Programs ask for a property only if it stands here.
    [[nodiscard]] QString introspect(const QString&) const override
    {
        return uR"xml(<interface name="org.kde.StatusNotifierWatcher">
    <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
    <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
    <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
    <property name="ProtocolVersion" type="i" access="read"/>
  </interface>)xml"_s;
    }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        if (message.interface() == u"org.freedesktop.DBus.Introspectable"_s)
            return false;
        const auto value = [](const QString& name) -> QVariant {
            if (name == u"RegisteredStatusNotifierItems"_s)
                return QStringList();
            return name == u"ProtocolVersion"_s ? QVariant(0) : QVariant(true);
        };
        QDBusMessage reply = message.createReply();
        if (message.interface() == Properties && message.member() == u"Get"_s) {
            reply << QVariant::fromValue(QDBusVariant(value(message.arguments().value(1).toString())));
        } else if (message.interface() == Properties && message.member() == u"GetAll"_s) {
            reply << QVariantMap{{u"IsStatusNotifierHostRegistered"_s, true}, {u"ProtocolVersion"_s, 0}};
        } else if (message.member() == u"RegisterStatusNotifierItem"_s) {
            const QString item = message.arguments().value(0).toString();
            m_item = item.startsWith(u'/') ? message.service() : item;
        }
        connection.send(reply);
        return true;
    }

    [[nodiscard]] bool hasItem() const { return !m_item.isEmpty(); }
    /// The bus tells when the item's program is gone; here it is asked.
    [[nodiscard]] bool itemAnswers() { return property(u"Status"_s).isValid(); }
    void click(const QString& kind) { EXPECT_EQ(call(Item, kind, {10, 10}).size(), 0); }
    QVariant property(const QString& name)
    {
        const QVariantList told = call(Properties, u"Get"_s, {Item, name});
        return told.isEmpty() ? QVariant() : told.first().value<QDBusVariant>().variant();
    }
    QString tip()
    {
        const auto argument = property(u"ToolTip"_s).value<QDBusArgument>();
        QString icon;
        QString title;
        argument.beginStructure();
        argument >> icon;
        static_cast<void>(argument.asVariant()); // the pictures
        argument >> title;
        return title;
    }

private:
    QVariantList call(const QString& interface, const QString& method, const QVariantList& arguments)
    {
        QDBusMessage message = QDBusMessage::createMethodCall(m_item, u"/StatusNotifierItem"_s, interface, method);
        message.setArguments(arguments);
        const QDBusMessage reply = m_bus.call(message, QDBus::BlockWithGui, 20'000);
        return reply.type() == QDBusMessage::ReplyMessage ? reply.arguments() : QVariantList();
    }

    QDBusConnection m_bus;
    QString m_item;
};

class Tray : public ::testing::Test
{
protected:
    void useDemo()
    {
        const QString demo = desk.path(u"demo"_s);
        ASSERT_TRUE(desk.tool(QStringLiteral(ORVANTINE_MAKE_DEMO), {u"--small"_s, u"--seconds"_s, u"30"_s, demo}));
        for (const QString& name : {u"data"_s, u"config"_s, u"state"_s})
            desk.environment.insert(u"XDG_"_s + name.toUpper() + u"_HOME"_s, demo + u'/' + name);
    }
    [[nodiscard]] bool awaitSeen(bool seen)
    {
        return await([this, seen] { return desk.window(Title).isEmpty() != seen; });
    }
    [[nodiscard]] bool awaitPlaying()
    {
        return await([this] {
            return desk.tool(u"playerctl"_s, {u"--player=orvantine"_s, u"status"_s}) == u"Playing\n"_s;
        });
    }
    [[nodiscard]] bool awaitMinimised()
    {
        return await([this] {
            const QString numbers =
                desk.tool(u"xdotool"_s, {u"search"_s, u"--name"_s, u"^"_s + Title + u"$"_s}).value_or(QString());
            for (const QString& number : numbers.split(u'\n', Qt::SkipEmptyParts))
                if (desk.tool(u"xprop"_s, {u"-id"_s, number, u"WM_STATE"_s}).value_or(QString()).contains(u"Iconic"_s))
                    return true;
            return false;
        });
    }
    /// Left upper corner of the main window.
    [[nodiscard]] QPoint place()
    {
        const QString told =
            desk.tool(u"xdotool"_s, {u"getwindowgeometry"_s, u"--shell"_s, desk.window(Title)}).value_or(QString());
        const auto value = [&told](const QString& name) {
            return told.section(u'\n' + name + u'=', 1).section(u'\n', 0, 0).toInt();
        };
        return {value(u"X"_s), value(u"Y"_s)};
    }

    Desk desk;
};

} // namespace

TEST_F(Tray, AClickOfEitherButtonHidesTheWindowAndBringsItBackEveryTime)
{
    NotificationArea area(desk);
    desk.settle();
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    ASSERT_TRUE(await([&] { return area.hasItem(); }));
    EXPECT_EQ(area.tip().toStdString(), Title.toStdString());
    for (int round = 0; round < 4; ++round)
        for (const QString& button : {u"Activate"_s, u"ContextMenu"_s}) {
            SCOPED_TRACE(button.toStdString() + std::to_string(round));
            area.click(button);
            ASSERT_TRUE(awaitSeen(false));
            area.click(button);
            ASSERT_TRUE(awaitSeen(true));
        }
    // The middle button is none of the two.
    area.click(u"SecondaryActivate"_s);
    area.click(u"Activate"_s);
    EXPECT_TRUE(awaitSeen(false));
    area.click(u"Activate"_s);
    EXPECT_TRUE(awaitSeen(true));
    EXPECT_TRUE(program.closes());
    EXPECT_FALSE(area.itemAnswers());
}

TEST_F(Tray, AWindowThatIsMinimisedGoesToTheTrayAndComesBack)
{
    NotificationArea area(desk);
    desk.settle();
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    ASSERT_TRUE(await([&] { return area.hasItem(); }));
    // The program has shown its window; the desktop may still have to put it up.
    ASSERT_TRUE(awaitSeen(true));
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE(round);
        EXPECT_TRUE(desk.tool(u"xdotool"_s, {u"windowminimize"_s, desk.window(Title)}));
        ASSERT_TRUE(awaitSeen(false));
        area.click(u"Activate"_s);
        ASSERT_TRUE(awaitSeen(true));
    }
    EXPECT_TRUE(program.closes());
}

TEST_F(Tray, AHiddenStartPlaysOutOfSightAndAWindowOffTheScreenComesBackOntoIt)
{
    useDemo();
    const QString settings = desk.environment.value(u"XDG_CONFIG_HOME"_s) + u"/Orvanten Manager/settings.reg"_s;
    const QByteArray before = Desk::bytes(settings);
    ASSERT_TRUE(before.contains("Orvant Manager]")) << before.toStdString();
    desk.write(settings, QByteArray(before).replace("Orvant Manager]\r\n", "Orvant Manager]\r\n\"Left\"=\"60000\"\r\n"
                                                                           "\"Top\"=\"60000\"\r\n"));
    NotificationArea area(desk);
    Program program(desk, {u"/hide"_s});
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    EXPECT_TRUE(awaitPlaying()) << program.complaints();
    EXPECT_EQ(desk.windows().join(u' ').toStdString(), "");
    ASSERT_TRUE(await([&] { return area.hasItem(); }));
    area.click(u"Activate"_s);
    ASSERT_TRUE(awaitSeen(true));
    // 300 and 500 twips, and the frame of the window manager.
    EXPECT_TRUE(await([&] {
        const QPoint corner = place();
        return corner.x() >= 20 && corner.x() < 40 && corner.y() >= 33 && corner.y() < 80;
    })) << place().x()
        << ' ' << place().y();
    EXPECT_TRUE(program.closes());
}

TEST_F(Tray, AStartThatPlaysGoesToTheTray)
{
    useDemo();
    NotificationArea area(desk);
    Program program(desk, {u"/play"_s});
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    EXPECT_TRUE(awaitPlaying()) << program.complaints();
    EXPECT_EQ(desk.window(Title).toStdString(), "");
    ASSERT_TRUE(await([&] { return area.hasItem(); }));
    area.click(u"ContextMenu"_s);
    EXPECT_TRUE(awaitSeen(true));
    EXPECT_TRUE(program.closes());
}

TEST_F(Tray, WithoutATrayMinimisingOnlyMinimises)
{
    useDemo();
    Program program(desk, {u"/play"_s});
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    EXPECT_TRUE(awaitPlaying()) << program.complaints();
    EXPECT_TRUE(awaitMinimised());
    EXPECT_TRUE(desk.tool(u"playerctl"_s, {u"--player=orvantine"_s, u"stop"_s}));
    EXPECT_TRUE(program.terminates());
}

TEST_F(Tray, AnAreaThatComesLateGetsTheItemAndTheMinimisedWindow)
{
    desk.settle();
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    ASSERT_TRUE(awaitSeen(true));
    EXPECT_TRUE(desk.tool(u"xdotool"_s, {u"windowminimize"_s, desk.window(Title)}));
    EXPECT_TRUE(awaitMinimised());
    NotificationArea area(desk);
    ASSERT_TRUE(await([&] { return area.hasItem(); }));
    area.click(u"Activate"_s);
    ASSERT_TRUE(awaitSeen(true));
    area.click(u"Activate"_s);
    ASSERT_TRUE(awaitSeen(false));
    area.click(u"Activate"_s);
    ASSERT_TRUE(awaitSeen(true));
    EXPECT_TRUE(program.closes());
}

TEST_F(Tray, AnAreaThatGoesLeavesTheWindowInTheTaskBar)
{
    desk.settle();
    auto area = std::make_unique<NotificationArea>(desk);
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    ASSERT_TRUE(await([&] { return area->hasItem(); }));
    ASSERT_TRUE(awaitSeen(true));
    area->click(u"Activate"_s);
    ASSERT_TRUE(awaitSeen(false));
    area.reset();
    EXPECT_TRUE(awaitMinimised());
    EXPECT_TRUE(program.terminates());
}

TEST_F(Tray, AnAreaOfTheOldKindIsClickedToo)
{
    desk.settle();
    Process area(desk.environment);
    area.start(u"trayer"_s, {u"--edge"_s, u"bottom"_s, u"--align"_s, u"right"_s, u"--widthtype"_s, u"request"_s,
                             u"--height"_s, u"32"_s});
    ASSERT_TRUE(area.waitForStarted());
    ASSERT_TRUE(await([this] {
        return desk.tool(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--class"_s, u"trayer"_s}).has_value();
    }));
    Program program(desk);
    ASSERT_TRUE(program.awaitWindow()) << program.complaints();
    // The item is a small window of the program inside the panel.
    QRect item;
    ASSERT_TRUE(await([this, &item] {
        static const QRegularExpression entry(
            u"\"Orvanten Manager\": \\(\"Orvantine\".*\\)  ([0-9]+)x([0-9]+)[^ ]+  \\+([0-9]+)\\+([0-9]+)"_s);
        const QString tree = desk.tool(u"xwininfo"_s, {u"-root"_s, u"-tree"_s}).value_or(QString());
        for (auto match = entry.globalMatch(tree); match.hasNext();) {
            const QRegularExpressionMatch found = match.next();
            const auto number = [&found](int group) { return found.captured(group).toInt(); };
            item = QRect(number(3), number(4), number(1), number(2));
            if (item.width() > 8 && item.width() < 64)
                return true;
        }
        return false;
    })) << desk.tool(u"xwininfo"_s, {u"-root"_s, u"-tree"_s}).value_or(QString()).toStdString();
    const auto click = [this, &item](const QString& button) {
        EXPECT_TRUE(desk.tool(u"xdotool"_s, {u"mousemove"_s, QString::number(item.center().x()),
                                             QString::number(item.center().y()), u"click"_s, button}));
    };
    const auto seen = [this](bool wanted) {
        return await([this, wanted] {
            const QString numbers =
                desk.tool(u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^"_s + Title + u"$"_s})
                    .value_or(QString());
            bool big = false;
            for (const QString& number : numbers.split(u'\n', Qt::SkipEmptyParts)) {
                const QString told =
                    desk.tool(u"xdotool"_s, {u"getwindowgeometry"_s, u"--shell"_s, number}).value_or(QString());
                big = big || told.section(u"\nWIDTH="_s, 1).section(u'\n', 0, 0).toInt() > 600;
            }
            return big == wanted;
        });
    };
    // Two quick presses of one button would be a double click, which is none of the two.
    for (int round = 0; round < 3; ++round) {
        click(u"1"_s);
        ASSERT_TRUE(seen(false)) << round;
        click(u"3"_s);
        ASSERT_TRUE(seen(true)) << round;
    }
    EXPECT_TRUE(program.terminates());
}

} // namespace orvantine::desk
