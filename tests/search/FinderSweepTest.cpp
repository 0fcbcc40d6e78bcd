#include "playback/PlaybackWorld.h"
#include "search/FindAudio.h"

#include <algorithm>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// Each action fails in turn, and of all the other calls, which are many, every so many-th.
constexpr int QuestionStep = 29;

constexpr char List[] = "/m/Erste 1.mp3\r\n/m/Zweite 1.mp3\r\n";

bool isAction(const QString& call)
{
    const QStringList actions = LoggingFiles::actions();
    // Those of a save of the catalogue are alike.
    return !call.startsWith(u"files.appendBytes"_s) &&
           std::any_of(actions.begin(), actions.end(),
                       [&call](const QString& action) { return call.startsWith(action); });
}

/// The catalogue of the fixture, a folder with two tracks and one with two lists, behind an index that is not there.
class Machine : public PlaybackWorld
{
public:
    using PlaybackWorld::bytes;
    using PlaybackWorld::data;
    using PlaybackWorld::database;
    using PlaybackWorld::desktop;
    using PlaybackWorld::listPath;
    using PlaybackWorld::root;

    Machine()
    {
        beSilent();
        startPlayback();
        root().mnuLokalePlayliste.Checked = true;
        for (const QString& name : {u"eins"_s, u"zwei"_s}) {
            put(u"/neu/"_s + name + u".mp3"_s, "mp3");
            put(u"/fremd/"_s + name + u".m3u"_s, List);
        }
    }

    void find(const QString& folder, int type)
    {
        desktop.forms().whileModal(u"FindAudio"_s, [&](Form& form) {
            root().findAudio->TDrives.Text = folder;
            root().findAudio->LFindType.ListIndex = type;
            root().findAudio->Command1.Click();
            root().findAudio->BReady.Click();
            if (form.Visible)
                root().services.forms.unload(form);
        });
        root().mnuAddFolder.Click();
    }
    [[nodiscard]] QByteArray entries(const QString& list)
    {
        return bytes(listPath(list)).replace("\r\n", "|").replace("||", "|");
    }

private:
    /// Whatever is told, or answered, belongs to the call that failed.
    void beSilent()
    {
        desktop.complaints.Report = [](const QString&) {};
        desktop.messages.Unscripted = [](const ShownMessage& message) {
            ScriptedAnswer answer;
            answer.answer = offers(message.buttons, Answer::Yes) ? Answer::Yes : Answer::Ok;
            return answer;
        };
    }
    void TestBody() override {}
};

/// Runs the find once for each call of it, which fails, and looks at what is left.
template <class Look>
void sweep(const QString& folder, int type, Look look)
{
    QStringList lines;
    {
        Machine run;
        run.desktop.log.take();
        run.find(folder, type);
        lines = run.desktop.log.take();
    }
    ASSERT_GT(lines.size(), 60);
    for (int failing = 1; failing <= lines.size(); ++failing) {
        if (!isAction(lines[failing - 1]) && failing % QuestionStep != 0)
            continue;
        SCOPED_TRACE(lines[failing - 1].toStdString());
        Machine run;
        run.desktop.log.failCall(run.desktop.log.calls() + failing);
        run.find(folder, type);
        for (const QString& name : {u"Zweite"_s, u"Dritte"_s}) {
            const QByteArray own = "/m/" + name.toUtf8() + " 1.mp3|/m/" + name.toUtf8() + " 2.mp3|";
            EXPECT_EQ(own, run.entries(name));
        }
        for (const QString& name : {u"eins"_s, u"zwei"_s}) {
            EXPECT_EQ("mp3", run.bytes(u"/neu/"_s + name + u".mp3"_s));
            // One that is opened where it lies gets the form of a list.
            EXPECT_TRUE(run.bytes(u"/fremd/"_s + name + u".m3u"_s).startsWith(List));
        }
        const QByteArray index = run.bytes(run.data() + u"Orvantine.idx"_s);
        EXPECT_TRUE(index == "(missing)" || index.endsWith(".mp3\r\n")) << index.toStdString();
        EXPECT_TRUE(run.root().LListView1.Enabled && run.root().Timer2.Enabled && run.root().commands.idle());
        look(run);
    }
}

} // namespace

TEST(FinderSweep, WhicheverCallFailsTheOpenListIsAsBeforeOrHoldsTheNewTracksToo)
{
    sweep(u"/neu"_s, FindAudio::NamesAndFolders, [](auto& run) {
        const QByteArray list = run.entries(u"Erste"_s);
        EXPECT_TRUE(list == "/m/Erste 1.mp3|/m/Erste 2.mp3|" ||
                    list == "/m/Erste 1.mp3|/m/Erste 2.mp3|/neu/eins.mp3|/neu/zwei.mp3|")
            << list.toStdString();
    });
}

TEST(FinderSweep, WhicheverCallFailsEveryRowHasItsList)
{
    sweep(u"/fremd"_s, FindAudio::Playlists, [](auto& run) {
        EXPECT_EQ("/m/Erste 1.mp3|/m/Erste 2.mp3|", run.entries(u"Erste"_s));
        const ListView& rows = run.root().LListView1;
        EXPECT_GE(rows.count(), 4);
        for (int row = 1; row <= rows.count(); ++row)
            EXPECT_NE("(missing)", run.bytes(rows.subItem(row, 2))) << rows.subItem(row, 2).toStdString();
        const QByteArray database = run.bytes(run.database());
        for (int row = 1; row <= 4; ++row)
            EXPECT_TRUE(database.contains(QByteArray::number(row) + "b=")) << database.toStdString();
    });
}

} // namespace orvantine::fake
