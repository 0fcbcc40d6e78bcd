#include <QApplication>
#include <QProcess>

#include <gtest/gtest.h>

#include <csignal>

#include <sys/prctl.h>

using namespace Qt::StringLiterals;

/// The tests share a session bus of their own, which ends with them.
int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    QProcess bus;
    bus.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    bus.start(u"dbus-daemon"_s, {u"--session"_s, u"--nofork"_s, u"--print-address"_s});
    if (!testing::GTEST_FLAG(list_tests)) {
        if (!bus.waitForReadyRead())
            qFatal("no session bus");
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
    }
    const QApplication application(argc, argv);
    const int result = RUN_ALL_TESTS();
    bus.terminate();
    bus.waitForFinished();
    return result;
}
