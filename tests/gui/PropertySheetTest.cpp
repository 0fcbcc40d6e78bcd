#include "desktop/posix/PosixFiles.h"
#include "desktop/qt/services/QtLauncher.h"

#include <QApplication>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDialog>
#include <QElapsedTimer>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstdio>
#include <vector>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// A file manager on the session bus: notes what it is asked for, and does it or refuses.
class FileManager final : public QDBusVirtualObject
{
public:
    explicit FileManager(bool works)
        : m_bus(QDBusConnection::connectToBus(qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS"), u"manager"_s)),
          m_works(works)
    {
        EXPECT_TRUE(m_bus.registerVirtualObject(u"/org/freedesktop/FileManager1"_s, this));
        EXPECT_TRUE(m_bus.registerService(u"org.freedesktop.FileManager1"_s));
    }
    ~FileManager() override
    {
        m_bus.unregisterService(u"org.freedesktop.FileManager1"_s);
        QDBusConnection::disconnectFromBus(u"manager"_s);
    }
    FileManager(const FileManager&) = delete;
    FileManager& operator=(const FileManager&) = delete;

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override
    {
        if (message.interface() != u"org.freedesktop.FileManager1"_s)
            return false;
        asked << message.member() + u' ' + message.arguments().value(0).toStringList().join(u' ');
        connection.send(m_works ? message.createReply() : message.createErrorReply(QDBusError::Failed, u"no"_s));
        return true;
    }

    [[nodiscard]] bool works() const { return m_works; }

    QStringList asked;

private:
    QDBusConnection m_bus;
    bool m_works;
};

class PropertySheet : public testing::Test
{
protected:
    /// Makes a file of 1,234 bytes; the name is in the host's bytes.
    void make(const QByteArray& name)
    {
        const QByteArray path = QFile::encodeName(folder.path()) + '/' + name;
        std::FILE* const file = std::fopen(path.constData(), "wb");
        EXPECT_NE(file, nullptr);
        EXPECT_EQ(std::fwrite(QByteArray(1234, 'x').constData(), 1, 1234, file), 1234U);
        EXPECT_EQ(std::fclose(file), 0);
        made.push_back(path);
    }
    /// Qt cannot remove a name that is not UTF-8.
    ~PropertySheet() override
    {
        for (const QByteArray& path : made)
            std::remove(path.constData());
    }

    [[nodiscard]] static QDialog* sheet()
    {
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget* window : windows)
            if (window->objectName() == u"FileProperties"_s)
                return qobject_cast<QDialog*>(window);
        return nullptr;
    }
    /// Asks for the property sheet; gives what the own dialog says, "" where none came.
    QString sheetOf(const QString& path, const FileManager* manager = nullptr)
    {
        bool served = false;
        QTimer::singleShot(0, [&served] { served = true; });
        shown = launcher.start({.kind = LaunchKind::Properties, .command = {}, .target = path, .arguments = {}});
        EXPECT_FALSE(served) << "events are served in no door";
        QElapsedTimer waiting;
        const auto answered = [manager] { return manager != nullptr && manager->works() && !manager->asked.isEmpty(); };
        for (waiting.start(); shown && sheet() == nullptr && !answered() && waiting.elapsed() < 2000;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 10);
        QDialog* const dialog = sheet();
        if (dialog == nullptr)
            return {};
        EXPECT_FALSE(dialog->isModal());
        QStringList lines{dialog->windowTitle()};
        const auto labels = dialog->findChildren<QLabel*>();
        for (const QLabel* label : labels)
            lines << label->text();
        dialog->findChild<QPushButton*>()->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(sheet(), nullptr);
        return lines.join(u'\n');
    }

    QTemporaryDir folder;
    std::vector<QByteArray> made;
    PosixFiles files;
    QtLauncher launcher{files};
    bool shown = false;
};

TEST_F(PropertySheet, IsAskedOfTheFileManager)
{
    make("Über 100% #1.mp3");
    FileManager manager(true);
    EXPECT_EQ(sheetOf(folder.filePath(u"Über 100% #1.mp3"_s), &manager), QString());
    EXPECT_TRUE(shown);
    EXPECT_EQ(manager.asked,
              QStringList{u"ShowItemProperties file://%1/%C3%9Cber%20100%25%20%231.mp3"_s.arg(folder.path())});
}

TEST_F(PropertySheet, ANameThatIsNotUtf8GoesOutByteForByte)
{
    make("\xdc"
         "ber.mp3");
    FileManager manager(true);
    EXPECT_EQ(sheetOf(folder.filePath(u"Über.mp3"_s), &manager), QString());
    EXPECT_EQ(manager.asked, QStringList{u"ShowItemProperties file://%1/%DCber.mp3"_s.arg(folder.path())});
}

TEST_F(PropertySheet, IsADialogOfOursWhereThereIsNoFileManager)
{
    make("Lied.mp3");
    const QString said = sheetOf(folder.filePath(u"Lied.mp3"_s));
    EXPECT_TRUE(shown);
    EXPECT_TRUE(said.startsWith(u"Eigenschaften von Lied.mp3\n"_s)) << said.toStdString();
    EXPECT_TRUE(said.contains(u"\n"_s + folder.path() + u'\n')) << said.toStdString();
    EXPECT_TRUE(said.contains(u"(1.234 Bytes)"_s)) << said.toStdString();
    EXPECT_TRUE(said.contains(u"audio/mpeg"_s)) << said.toStdString();
}

TEST_F(PropertySheet, IsADialogOfOursWhereTheFileManagerRefuses)
{
    make("\xdc"
         "ber.mp3");
    FileManager manager(false);
    EXPECT_TRUE(sheetOf(folder.filePath(u"Über.mp3"_s), &manager).contains(u"(1.234 Bytes)"_s));
    EXPECT_EQ(manager.asked.size(), 1);
}

TEST_F(PropertySheet, OfAFileThatIsGoneIsNotShown)
{
    FileManager manager(true);
    EXPECT_EQ(sheetOf(folder.filePath(u"fehlt.mp3"_s), &manager), QString());
    EXPECT_FALSE(shown);
    EXPECT_EQ(manager.asked, QStringList());
}

} // namespace

} // namespace orvantine
