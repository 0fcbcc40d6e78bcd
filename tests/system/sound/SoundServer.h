#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvantine::test {

/// A sound server of the test's own without a card, ended with it. The process's environment leads to it from the first
/// start on, whether it runs or not. How it works stands in server.sh.
class SoundServer
{
public:
    SoundServer() { start(); }
    ~SoundServer() { stop(); }
    SoundServer(const SoundServer&) = delete;
    SoundServer& operator=(const SoundServer&) = delete;

    void start() const
    {
        ASSERT_TRUE(run({QStringLiteral("start"), m_folder.path()}));
        qputenv("PULSE_SERVER", "unix:" + socket().toUtf8());
        qputenv("PULSE_COOKIE", m_folder.filePath(QStringLiteral("cookie")).toUtf8());
        qputenv("PULSE_RUNTIME_PATH", m_folder.filePath(QStringLiteral("runtime")).toUtf8());
    }
    void stop() const { EXPECT_TRUE(run({QStringLiteral("stop"), m_folder.path()})); }
    void record(const QString& file) const { ASSERT_TRUE(run({QStringLiteral("record"), m_folder.path(), file})); }
    void stopRecording() const { EXPECT_TRUE(run({QStringLiteral("stop-record"), m_folder.path()})); }

    /// What pactl prints.
    static QString control(const QStringList& arguments)
    {
        QProcess pactl;
        pactl.start(QStringLiteral("pactl"), arguments);
        EXPECT_TRUE(pactl.waitForFinished() && pactl.exitCode() == 0) << arguments.join(u' ').toStdString();
        return QString::fromUtf8(pactl.readAllStandardOutput());
    }

    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }
    [[nodiscard]] QString socket() const { return path(QStringLiteral("native")); }

private:
    [[nodiscard]] static bool run(const QStringList& arguments)
    {
        return QProcess::execute(QStringLiteral(ORVANTINE_SOUND_SERVER), arguments) == 0;
    }

    QTemporaryDir m_folder{QDir::tempPath() + QStringLiteral("/sound-XXXXXX")};
};

} // namespace orvantine::test
