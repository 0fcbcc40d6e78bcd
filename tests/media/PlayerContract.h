#pragma once

#include "desktop/media/MpvPlayer.h"
#include "media/MusicFolder.h"
#include "support/FakePlayer.h"
#include "support/Wav.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

namespace orvantine::test {

using namespace Qt::StringLiterals;

/// A player under test, and what makes time pass for it.
class Subject
{
public:
    virtual ~Subject() = default;
    virtual MediaPlayer& player() = 0;
    /// Waits until the current item plays and its data is known.
    virtual void awaitPlaying() = 0;
    /// Lets the rest of the list play to its end.
    virtual void awaitEnd() = 0;
    /// Waits until the move to another position was told.
    virtual void awaitMove(const int& moves) = 0;
    /// The file that is written for a track holds these data.
    virtual void know(const QString& artist, const QString& title, double seconds) = 0;
};

class RealSubject : public Subject
{
public:
    explicit RealSubject(Files& files) : m_player{files, {.options = {{"ao", "null"}}}} {}
    MediaPlayer& player() override { return m_player; }
    void awaitPlaying() override
    {
        EXPECT_TRUE(waitUntil([this] { return m_player.currentDuration() > 0; }));
        serveEvents();
    }
    void awaitEnd() override
    {
        EXPECT_TRUE(waitUntil([this] { return m_player.status() == u"Beendet"_s; }));
        serveEvents();
    }
    void awaitMove(const int& moves) override
    {
        EXPECT_TRUE(waitUntil([&moves] { return moves > 0; }));
    }
    void know(const QString&, const QString&, double) override {}

private:
    MpvPlayer m_player;
};

class FakeSubject : public Subject
{
public:
    explicit FakeSubject(Files& files) : m_files{files}, m_player{files} { m_player.setDuration(1); }
    MediaPlayer& player() override { return m_player; }
    void awaitPlaying() override {}
    void awaitEnd() override
    {
        for (int item = 1; item < m_player.playlistCount(); ++item) {
            const QString source = m_player.playlistSourceURL(item);
            if (isPlayable(m_files, {source, source}))
                m_player.pretendItem(item);
        }
        m_player.pretendEnded();
    }
    void awaitMove(const int&) override {}
    void know(const QString& artist, const QString& title, double seconds) override
    {
        m_player.setItemInfo(u"Artist"_s, artist);
        m_player.setItemInfo(u"Title"_s, title);
        m_player.setDuration(seconds);
    }

private:
    Files& m_files;
    fake::FakePlayer m_player;
};

enum class Which { Fake, Real };

class PlayerContract : public ::testing::TestWithParam<Which>
{
protected:
    PlayerContract()
    {
        if (GetParam() == Which::Fake)
            m_subject = std::make_unique<FakeSubject>(files);
        else
            m_subject = std::make_unique<RealSubject>(files);
        player().MediaChange = [this] { changes.append(player().currentSourceURL()); };
    }

    MediaPlayer& player() { return m_subject->player(); }
    void awaitPlaying() { m_subject->awaitPlaying(); }
    void awaitEnd() { m_subject->awaitEnd(); }
    void awaitMove(const int& moves) { m_subject->awaitMove(moves); }
    void know(const QString& artist, const QString& title, double seconds) { m_subject->know(artist, title, seconds); }

    /// Writes a sound that does not end during a test.
    QString longSound(const QString& name) { return music.write(name, fake::wav({.milliseconds = 120'000})); }
    QString shortSound(const QString& name) { return music.write(name, fake::wav({.milliseconds = 60})); }

    /// Opens the list and waits until its first track plays.
    void playList(const QStringList& lines)
    {
        player().setURL(music.writeList(lines));
        awaitPlaying();
        changes.clear();
    }

    /// State, status and current file name in one line.
    [[nodiscard]] std::string shown()
    {
        const QString name = player().currentSourceURL().section(u'/', -1);
        return u"%1 %2 [%3]"_s.arg(int(player().playState())).arg(player().status(), name).toStdString();
    }

    /// File names of the changes since the last call.
    [[nodiscard]] std::string takeChanges()
    {
        QStringList names;
        for (const QString& source : std::exchange(changes, {}))
            names.append(source.section(u'/', -1));
        return names.join(u' ').toStdString();
    }

    MusicFolder music;
    CountingFiles files;
    QStringList changes;

private:
    std::unique_ptr<Subject> m_subject;
};

inline std::string nameOfPlayer(const ::testing::TestParamInfo<Which>& testCase)
{
    return testCase.param == Which::Fake ? "Fake" : "Real";
}

} // namespace orvantine::test
