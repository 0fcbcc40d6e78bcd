#include "support/FakeDesktop.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

constexpr auto SettingsKeyName = u"Software\\Verdanis\\Orvant Manager";
const QByteArray ListBefore = "C:\\M\\eins.mp3\r\n#x\r\nC:\\N\\zwei.mp3\r\n";
const QByteArray ListAfter = "eins.mp3\r\nC:\\N\\zwei.mp3\r\n\r\n";
/// The neighbour was not seen as one.
const QByteArray ListAbsolute = "C:\\M\\eins.mp3\r\nC:\\N\\zwei.mp3\r\n\r\n";
/// Of the many questions to disk and settings every so many-th fails in turn; of all other calls each.
constexpr int QuestionStep = 11;

/// What a save writes: the rows, by their full paths.
const QByteArray ListSaved = "C:\\M\\eins.mp3\r\nC:\\N\\zwei.mp3\r\n";

bool isQuestion(const QString& call)
{
    const QStringList questions{u"files.exists"_s,   u"files.stamp"_s,        u"files.folderExists"_s,
                                u"files.isFolder"_s, u"files.nativePath"_s,   u"files.size"_s,
                                u"files.modified"_s, u"settings.keyExists"_s, u"settings.value"_s};
    return std::any_of(questions.begin(), questions.end(),
                       [&](const QString& question) { return call.startsWith(question); });
}

/// A machine with two lists of which one call fails.
class Sweep
{
public:
    explicit Sweep(int failing)
    {
        MemoryFiles& disk = *desktop.memory();
        disk.put(u"C:/M/eins.mp3"_s, "1");
        disk.put(u"C:/N/zwei.mp3"_s, "2");
        disk.put(u"C:/M/Erste.m3u"_s, ListBefore);
        disk.put(database(), "[Index]\r\n1b=Fehlt\r\n1c=C:\\M\\Fehlt.m3u\r\n1d=1\r\n"
                             "2b=Erste\r\n2c=C:\\M\\Erste.m3u\r\n2d=2\r\n"
                             "[TagInfo]\r\nC:\\N\\zwei.mp3=Wir - Zwei\r\n");
        desktop.settings.put(Hive::CurrentUser, QString::fromUtf16(SettingsKeyName), u"Error"_s, dwordSetting(0));
        desktop.log.failCall(failing);
    }

    /// Start, look at a list, play, save, end.
    void run()
    {
        desktop.start();
        Root& root = desktop.root();
        if (desktop.events().ended())
            return;
        root.LListView1.select(2);
        root.LListView1.Click();
        root.LListView1.DblClick();
        desktop.events().run(std::chrono::seconds{1});
        root.pStopPlayer.Click();
        root.mnuSpeichern.Click();
        root.mnuBeenden.Click();
    }

    [[nodiscard]] QString localCopy() const
    {
        return desktop.folders.applicationData + u"/Orvanten Manager/Playlisten/Erste.m3u"_s;
    }
    [[nodiscard]] QString database() const
    {
        return desktop.folders.applicationData + u"/Orvanten Manager/Orvantine.dat"_s;
    }

    FakeDesktop desktop;
};

} // namespace

TEST(Sweep, WhicheverCallFailsTheProgramGoesOnAndNoFileIsLost)
{
    Sweep whole(0);
    whole.run();
    ASSERT_TRUE(whole.desktop.events().ended());
    ASSERT_EQ(whole.desktop.complaints.texts().join(u'\n').toStdString(), "");
    ASSERT_EQ(whole.desktop.memory()->bytes(u"C:/M/Erste.m3u"_s), ListAfter);
    ASSERT_EQ(whole.desktop.memory()->bytes(whole.localCopy()), ListSaved);
    const QStringList calls = whole.desktop.log.lines();
    ASSERT_GT(calls.size(), 100);

    for (int failing = 1; failing <= calls.size(); ++failing) {
        if (isQuestion(calls[failing - 1]) && failing % QuestionStep != 0)
            continue;
        Sweep sweep(failing);
        sweep.run();
        const QString failed = sweep.desktop.log.lines().value(failing - 1);
        SCOPED_TRACE(failed.toStdString());

        EXPECT_TRUE(sweep.desktop.events().ended());
        const std::optional<QByteArray> list = sweep.desktop.memory()->bytes(u"C:/M/Erste.m3u"_s);
        EXPECT_TRUE(list == ListBefore || list == ListAfter || list == ListAbsolute || list == ListSaved)
            << list.value_or("(missing)").toStdString();
        const QByteArray saved = sweep.desktop.memory()->bytes(sweep.database()).value_or("(missing)");
        EXPECT_TRUE(saved.contains("C:\\N\\zwei.mp3=Wir - Zwei")) << saved.toStdString();
        EXPECT_EQ(sweep.desktop.memory()->bytes(u"C:/M/eins.mp3"_s), "1");
        const QByteArray copy = sweep.desktop.memory()->bytes(sweep.localCopy()).value_or("(missing)");
        EXPECT_TRUE(copy == "(missing)" || copy == ListSaved || copy == ListAfter || copy == ListAbsolute)
            << copy.toStdString();
        const ListView& rows = sweep.desktop.root().LListView1;
        for (int row = 1; row <= rows.count(); ++row) {
            if (rows.subItem(row, 2) == sweep.localCopy()) {
                EXPECT_NE(copy, "(missing)") << "a row points to a copy that is not there";
            }
        }
    }
}

} // namespace orvantine::fake
