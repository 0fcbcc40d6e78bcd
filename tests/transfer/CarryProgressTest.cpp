#include "transfer/CarryProgress.h"

#include "transfer/TransferWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class Progress : public TransferWorld
{
protected:
    void passes(int milliseconds) { desktop.events().setNow(desktop.events().now().addMSecs(milliseconds)); }
    [[nodiscard]] std::string seen()
    {
        Kopieren& form = *root().kopieren;
        return u"%1 | %2 | %3 | %4"_s
            .arg(form.LDatei.Caption.value(), QString::number(form.pFortschritt.Value), form.LMenge.Caption.value(),
                 form.LTempo.Caption.value())
            .toStdString();
    }
};

} // namespace

TEST_F(Progress, NamesBytesAsPeopleReadThem)
{
    QStringList texts;
    for (const qint64 bytes : {0LL, 1023LL, 1024LL, 12'900'000LL, 5LL << 30, 3LL << 40})
        texts += bytesText(bytes);
    EXPECT_EQ(lines(texts), "0 Byte\n1.023 Byte\n1,0 KB\n12,3 MB\n5,0 GB\n3.072,0 GB");
}

TEST_F(Progress, RoundsTheTimeThatIsLeft)
{
    QStringList texts;
    for (const qint64 seconds : {0, 1, 2, 89, 90, 119, 150, 3600, 7199, 7200, 10'000})
        texts += timeLeftText(seconds);
    EXPECT_EQ(
        lines(texts),
        "noch etwa 1 Sekunde\nnoch etwa 1 Sekunde\nnoch etwa 2 Sekunden\nnoch etwa 89 Sekunden\nnoch etwa 2 "
        "Minuten\nnoch etwa 2 Minuten\nnoch etwa 3 Minuten\nnoch etwa 60 Minuten\nnoch etwa 120 Minuten\nnoch etwa "
        "2 Stunden\nnoch etwa 3 Stunden");
}

TEST_F(Progress, IsFullOnlyWhenAllIsDone)
{
    CarryProgress progress(root(), 1000);
    progress.beginFile(u"a.mp3"_s, 1000);
    passes(1000);
    progress.show(1000);
    EXPECT_EQ(seen(), "a.mp3 | 999 | 1.000 Byte von 1.000 Byte | ");
    progress.endFile();
    EXPECT_EQ(root().kopieren->pFortschritt.Value.value(), 999);
    progress.complete();
    EXPECT_EQ(root().kopieren->pFortschritt.Value.value(), 1000);
}

TEST_F(Progress, MeasuresTheSpeedAnewEveryTwoSeconds)
{
    CarryProgress progress(root(), 100 << 20);
    progress.beginFile(u"a.mp3"_s, 100 << 20);
    passes(2000);
    progress.show(20 << 20);
    EXPECT_EQ(seen(), "a.mp3 | 200 | 20,0 MB von 100,0 MB | 10,0 MB/s, noch etwa 8 Sekunden");
    passes(2000);
    progress.show(22 << 20);
    EXPECT_EQ(seen(), "a.mp3 | 220 | 22,0 MB von 100,0 MB | 1,0 MB/s, noch etwa 78 Sekunden");
}

TEST_F(Progress, GoesByStepsWhereTheBytesAreNotKnown)
{
    CarryProgress progress(root(), std::nullopt);
    progress.setSteps(3, 4);
    progress.beginFile(u"a.mp3"_s, 100);
    passes(1000);
    progress.show(50);
    EXPECT_EQ(seen(), "a.mp3 | 625 | 50 Byte | ");
}

TEST_F(Progress, TakesAClockThatIsSetBackAndAFileThatGrows)
{
    CarryProgress progress(root(), 1000);
    progress.beginFile(u"a.mp3"_s, 1000);
    passes(3000);
    progress.show(500);
    passes(-60'000);
    progress.show(5000);
    EXPECT_EQ(root().kopieren->pFortschritt.Value.value(), 999);
}

TEST_F(Progress, TakesItsLabelsAwayAtItsEnd)
{
    {
        CarryProgress progress(root(), 1000);
        EXPECT_TRUE(root().kopieren->pFortschritt.Visible.value());
        EXPECT_TRUE(root().kopieren->LDatei.Visible.value());
    }
    EXPECT_FALSE(root().kopieren->pFortschritt.Visible.value());
    EXPECT_FALSE(root().kopieren->LTempo.Visible.value());
    EXPECT_EQ(seen(), " | 0 |  | ");
}

} // namespace orvantine::fake
