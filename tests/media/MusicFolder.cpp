#include "media/MusicFolder.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFile>
#include <QTimer>

#include <gtest/gtest.h>

namespace orvantine::test {

using namespace Qt::StringLiterals;

QString MusicFolder::path(const QString& name) const
{
    return m_folder.filePath(name);
}

QString MusicFolder::write(const QString& name, const QByteArray& bytes) const
{
    QFile file{path(name)};
    EXPECT_TRUE(file.open(QFile::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return path(name);
}

QString MusicFolder::writeList(const QStringList& lines, const QString& name) const
{
    QString text;
    for (const QString& line : lines)
        text += line + u"\r\n"_s;
    return write(name, text.toUtf8());
}

bool waitUntil(const std::function<bool()>& holds)
{
    const QDeadlineTimer cap{60'000};
    QTimer ticks;
    ticks.start(5);
    while (!holds()) {
        if (cap.hasExpired())
            return false;
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void serveEvents()
{
    for (int i = 0; i < 10; ++i)
        QCoreApplication::processEvents();
}

} // namespace orvantine::test
