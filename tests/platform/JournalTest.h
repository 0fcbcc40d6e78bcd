#pragma once

#include "TempWorld.h"
#include "desktop/posix/JournalNotes.h"

#include <QDir>

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include <sys/wait.h>
#include <unistd.h>

namespace orvantine {

/// Commands that die in the middle, and the starts behind them.
class JournalTest : public testing::Test
{
protected:
    /// Does the work inside one whole change in a process that ends in the middle of it.
    void dieAfter(const std::function<void(PosixFiles&)>& work)
    {
        const pid_t child = ::fork();
        if (child == 0) {
            PosixFiles files({.recoveryFolder = m_world.recovery()});
            files.beginWhole();
            work(files);
            ::_exit(HasFailure() ? 1 : 0);
        }
        int status = 0;
        ASSERT_EQ(::waitpid(child, &status, 0), child);
        ASSERT_EQ(status, 0);
    }
    /// The next start of the program.
    void startAgain() { PosixFiles next({.recoveryFolder = m_world.recovery()}); }
    [[nodiscard]] QString at(const QString& name) const { return m_world.folder() + QLatin1Char('/') + name; }
    [[nodiscard]] QByteArrayList kept() const
    {
        QByteArrayList result;
        const QStringList names = QDir(m_world.recovery()).entryList({QStringLiteral("*-*")}, QDir::Files);
        for (const QString& name : names)
            result << name.mid(17).toUtf8();
        return result;
    }

    [[nodiscard]] QByteArray journal() const { return (m_world.recovery() + QStringLiteral("/Undo")).toUtf8(); }
    [[nodiscard]] std::vector<JournalNote> notes() const
    {
        QFile file(QString::fromUtf8(journal()));
        std::vector<JournalNote> result;
        if (!file.open(QIODevice::ReadOnly))
            return result;
        for (ReadNote& read : decodedNotes(file.readAll()))
            result.push_back(std::move(read.note));
        return result;
    }
    void putNotes(const std::vector<JournalNote>& notes) const
    {
        QFile file(QString::fromUtf8(journal()));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        for (const JournalNote& note : notes)
            file.write(encodedNote(note));
    }

    TempWorld m_world;
};

} // namespace orvantine
