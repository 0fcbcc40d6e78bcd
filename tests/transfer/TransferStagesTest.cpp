#include "transfer/TransferWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// The target of the day and the dialog of a transfer.
class TransferStages : public TransferWorld
{
protected:
    void meanwhile(const QString& track, const std::function<void()>& action)
    {
        m_watch = root().kopieren->LDatei.Caption.addNotifier([this, track, action] {
            if (root().kopieren->LDatei.Caption.value() == track)
                action();
        });
    }

    QPropertyNotifier m_watch;
};

} // namespace

TEST_F(TransferStages, AnotherTargetThanThatOfTheDayTakesItsPlace)
{
    putFolder(u"/media/neu"_s);
    desktop.volumes.set(u"/media/neu"_s, {.fileSystem = u"EXT4"_s, .free = quint64{1} << 30, .total = 0});
    rememberStick();
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(u"/media/neu"_s);
    answer(Answer::Ok);
    EXPECT_TRUE(root().mnuHandling[4].press());
    EXPECT_EQ(option(u"CopyStick"_s), "/media/neu/");
    EXPECT_EQ(tree(u"/media/neu"_s), "Rock 1.mp3");

    rememberStick();
    answer(Answer::Cancel);
    desktop.choosers.chooseFolder(u"/media/neu"_s);
    enter(u"Rock"_s);
    answer(Answer::Ok);
    EXPECT_TRUE(root().mnuHandling[1].press());
    EXPECT_EQ(option(u"CopyStick"_s), "/media/neu/");
    EXPECT_EQ(tree(u"/media/neu"_s), "Rock 1.mp3\nRock.m3u\nRock/\nRock/Rock 1.mp3\nRock/Rock 2.mp3");
    EXPECT_EQ(tree(), "");
}

TEST_F(TransferStages, OfATrackThatIsGoneAnOlderCopyIsToldOf)
{
    put(Stick + u"/Rock 1.mp3"_s, "alt");
    desktop.disk().remove(u"/m/Rock 1.mp3"_s);
    answer(Answer::Ok);
    desktop.choosers.chooseFolder(Stick);
    answer(Answer::Ok);
    EXPECT_TRUE(root().mnuHandling[4].press());
    EXPECT_EQ(desktop.messages.take().back().title, u" Sounddatei übertragen"_s);
    EXPECT_EQ(bytes(Stick + u"/Rock 1.mp3"_s), "alt");
}

TEST_F(TransferStages, AStoppedTransferKeepsTargetAndDay)
{
    answer(Answer::Ok);
    desktop.choosers.chooseFolder(Stick);
    enter(u"Rock"_s);
    answer(Answer::Ok);
    meanwhile(u"Rock 1.mp3"_s, [this] { root().kopieren->KeyDown(27); });
    EXPECT_TRUE(root().mnuHandling[1].press());
    EXPECT_EQ(option(u"CopyStick"_s), "/media/stick/");
    EXPECT_EQ(option(u"CopyDate"_s), "20.11.2026");
}

TEST_F(TransferStages, TheDialogHasWordsOfItsOwnUntilACommandGivesItOthers)
{
    EXPECT_EQ(root().kopieren->Label2.Caption.value(),
              u"Bitte warten Sie, bis der Datenübertragung vollständig abgeschlossen wurde."_s);
    answer(Answer::Ok);
    desktop.choosers.chooseFolder(Stick);
    enter(u"Rock"_s);
    answer(Answer::Ok);
    EXPECT_TRUE(root().mnuHandling[1].press());
    EXPECT_EQ(root().kopieren->Label2.Caption.value(),
              u"Bitte warten Sie, bis der Datenübertragung vollständig abgeschlossen wurde."_s);
}

} // namespace orvantine::fake
