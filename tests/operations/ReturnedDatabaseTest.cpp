#include "catalogue/CatalogueEntry.h"
#include "operations/ReorderingFixture.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// Two lists made while the database's disk was away. It holds three others.
class ReturnedDatabase : public Reordering
{
protected:
    void startAway()
    {
        desktop.newProcess();
        for (const QString& file : {database(), backup(), listPath(u"Neu1"_s), listPath(u"Neu2"_s)})
            desktop.disk().remove(file);
        for (const QString& name : Others)
            putList(name, {putTrack(name + u" 1"_s), putTrack(name + u" 2"_s)});
        setting(u"Error"_s, dwordSetting(0));
        start();
        for (const QString& name : {u"Neu1"_s, u"Neu2"_s}) {
            desktop.messages.enter(name);
            root().mnuNeu.Click();
        }
        ASSERT_EQ("Neu1 *Neu2", names());
        desktop.disk().remove(database());
        desktop.disk().remove(backup());
        root().databaseAwaited = true;
        setting(u"CheckEntrys"_s, dwordSetting(1));
        desktop.messages.take();
    }
    void comeBack()
    {
        QByteArray index = "[Index]\r\n";
        for (int number = 1; number <= 3; ++number)
            index += indexRow(number, {.name = Others[number - 1],
                                       .path = listPath(Others[number - 1]),
                                       .description = u"Text "_s + Others[number - 1],
                                       .date = u"0%1.01.2001"_s.arg(number),
                                       .favourite = u"1"_s});
        desktop.memory()->put(database(), index);
    }
    /// Whatever was asked for: all five stand, each with what is its own.
    void expectJoined()
    {
        EXPECT_EQ("000|Jazz|Jazz.m3u|2|Text Jazz|01.01.2001|1|", keys(1));
        EXPECT_EQ("001|Rock|Rock.m3u|2|Text Rock|02.01.2001|1|", keys(2));
        EXPECT_EQ("002|Pop|Pop.m3u|2|Text Pop|03.01.2001|1|", keys(3));
        const QString last = indexValue(root(), database(), 4, 'b') + u' ' + indexValue(root(), database(), 5, 'b');
        EXPECT_TRUE(last == u"Neu1 Neu2"_s || last == u"Neu2 Neu1"_s) << last.toStdString();
        EXPECT_EQ("", key(4, 'e') + key(5, 'e'));
        EXPECT_EQ("-|-|-|-|-|-|-|", keys(6));
        EXPECT_EQ("-|-|-|-|-|-|-|", keys(0));
        EXPECT_EQ(5, catalogue().count());
        EXPECT_EQ("", boxes());
        EXPECT_EQ("Die Datenbank ist wieder da. Ihre Wiedergabelisten stehen vor den neuen.",
                  root().quietLine.Caption.value().toStdString());
    }

private:
    inline static const QStringList Others{u"Jazz"_s, u"Rock"_s, u"Pop"_s};
};

} // namespace

TEST_F(ReturnedDatabase, NoCommandOfReorderingWritesByTheOldNumbers)
{
    for (const int index : {1, 2, 4})
        for (const int milliseconds : {0, 500}) {
            SCOPED_TRACE(std::to_string(index) + ", " + std::to_string(milliseconds));
            startAway();
            if (milliseconds == 0)
                comeBack();
            else
                desktop.events().after(std::chrono::milliseconds{milliseconds}, [this] { comeBack(); });
            root().mnuVerschiebung[index].Click();
            expectJoined();
            EXPECT_EQ("dword 1", setting(u"CheckEntrys"_s).toStdString());
            EXPECT_FALSE(form().Visible.value());
        }
}

TEST_F(ReturnedDatabase, AStepThatMeetsItBehindTheWaitPatchesNoOtherRow)
{
    for (const int yield : {1, 2}) {
        SCOPED_TRACE(yield);
        startAway();
        desktop.events().atYield(yield, [this] { comeBack(); });
        root().mnuVerschiebung[1].Click();
        expectJoined();
    }
}

TEST_F(ReturnedDatabase, ReadyKeepsTheRowsThatWereNeverStored)
{
    startAway();
    openDialog([this] {
        comeBack();
        form().LSortView.move(1, 0);
        form().BReady.Click();
    });
    expectJoined();
    EXPECT_FALSE(form().Visible.value());
}

} // namespace orvantine::fake
