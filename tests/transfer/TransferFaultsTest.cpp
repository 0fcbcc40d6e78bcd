#include "transfer/TransferWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QByteArray Older = "von früher\r\n";
const QByteArray RockList = "/m/Rock 1.mp3\r\n/m/Rock 2.mp3\r\n\r\n";

/// One call after the other fails, of all that a transfer makes.
class TransferFaults : public TransferWorld
{
protected:
    /// Runs the command once for each of all its calls, which then fails.
    void failEachCallOf(int all, const std::function<void()>& command, const std::function<void(int)>& check)
    {
        int calls = 1;
        for (int number = 1; number <= calls; ++number) {
            desktop.newProcess();
            SetUp();
            put(Stick + u"/Rock/Rock.m3u"_s, Older);
            put(Stick + u"/Rock/Rock 1.mp3"_s, "alt");
            put(u"/m/Rock 1.mp3"_s, QByteArray(100'000, 'x'));
            answerAll();
            const int before = desktop.log.calls();
            desktop.log.failCall(before + number);
            command();
            desktop.log.failCall(0);
            calls = desktop.log.calls() - before;
            EXPECT_EQ(bytes(u"/m/Rock 1.mp3"_s).size(), 100'000) << number;
            EXPECT_EQ(bytes(u"/m/Rock 2.mp3"_s), "mp3") << number;
            EXPECT_EQ(bytes(listPath(u"Rock"_s)), RockList) << number;
            EXPECT_FALSE(QString::fromStdString(tree()).contains(u".part"_s)) << number;
            EXPECT_TRUE(catalogue().Enabled && tracks().Enabled) << number;
            check(number);
        }
        // Of the writing ones.
        EXPECT_EQ(calls, all);
    }
    /// OK where there is one; no archive, and no burner.
    void answerAll()
    {
        desktop.messages.Unscripted = [this](const ShownMessage& message) {
            ScriptedAnswer answer;
            if (message.input)
                answer.entered = u"Rock"_s;
            else if (message.buttons == MessageButtons::YesNoCancel)
                answer.answer = m_archive ? Answer::Yes : Answer::No;
            else
                answer.answer = message.title.contains(u"Burning"_s)  ? Answer::Cancel
                                : offers(message.buttons, Answer::Ok) ? Answer::Ok
                                                                      : Answer::Cancel;
            return answer;
        };
        desktop.choosers.Unscripted = [](ChooserKind kind) {
            ScriptedChoice choice;
            choice.kind = kind;
            choice.folder = Stick;
            return choice;
        };
    }
    /// The older file, or the new one.
    void expectWhole(int number)
    {
        const QByteArray list = bytes(Stick + u"/Rock/Rock.m3u"_s);
        EXPECT_TRUE(list == Older || list == "Rock 1.mp3\r\nRock 2.mp3\r\n" || list == RockList)
            << number << ' ' << list.toStdString();
        const QByteArray track = bytes(Stick + u"/Rock/Rock 1.mp3"_s);
        EXPECT_TRUE(track == "alt" || track.size() == 100'000) << number;
    }

    bool m_archive = false;
};

} // namespace

TEST_F(TransferFaults, OfASingleTrack)
{
    failEachCallOf(
        3, [this] { root().mnuHandling[4].press(); },
        [this](int number) {
            const QByteArray track = bytes(Stick + u"/Rock 1.mp3"_s);
            EXPECT_TRUE(track == "(missing)" || track.size() == 100'000) << number;
        });
}

TEST_F(TransferFaults, OfPackAndGoIntoAFolder)
{
    failEachCallOf(
        11, [this] { root().mnuPackGo.press(); }, [this](int number) { expectWhole(number); });
}

TEST_F(TransferFaults, OfPackAndGoIntoAnArchive)
{
    m_archive = true;
    failEachCallOf(
        10, [this] { root().mnuPackGo.press(); },
        [this](int number) {
            EXPECT_EQ(bytes(Stick + u"/Rock/Rock.m3u"_s), Older) << number;
            const QByteArray archive = bytes(Stick + u"/Orvanten (Pack and Go).zip"_s);
            EXPECT_TRUE(archive == "(missing)" || FakeArchive::unpacked(archive)) << number;
        });
}

} // namespace orvantine::fake
