#include "catalogue/CatalogueWorld.h"

#include "playlists/GetPlayEntrys.h"

#include <QDir>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QString Title = u" Songinformationen"_s;

/// "Liste", whose file is gone, and "Zuletzt", which is open after the start. Another file could be chosen for it.
class BroughtBack : public CatalogueWorld
{
protected:
    explicit BroughtBack(const DesktopOptions& options = {}) : CatalogueWorld(options) {}

    void startWith(const QString& path)
    {
        list = path;
        setting(u"Error"_s, dwordSetting(0));
        putDatabase(indexRow(1, {.name = u"Liste"_s, .path = list}) +
                    indexRow(2, {.name = u"Zuletzt"_s, .path = putList(u"Zuletzt"_s, {putTrack(u"a"_s)})}));
        start();
        root().mnuErrorDisplay.Checked = true;
    }
    /// A read of "Liste", as behind a click whose question was answered with Retry.
    void read()
    {
        catalogue().select(1);
        catalogue().Tag = u"1"_s;
        QString path = list;
        GetPlayEntrys(root(), path);
    }

    QString list;
};

class BroughtBackFromFile : public BroughtBack
{
protected:
    void SetUp() override
    {
        put(u"/neu/ort.m3u"_s, (putTrack(u"eins"_s) + u"\r\n"_s + putTrack(u"zwei"_s) + u"\r\n"_s).toUtf8());
        putFolder(u"/l"_s);
        startWith(u"/l/liste.m3u"_s);
        desktop.choosers.open(u"/neu/ort.m3u"_s);
    }
};

/// A real folder that is the current one and holds a file named "bak".
class BroughtBackFromBackup : public BroughtBack
{
protected:
    BroughtBackFromBackup() : BroughtBack({.disk = DiskKind::TemporaryFolder}) {}

    void SetUp() override
    {
        put(desktop.base + u"/hier/bak"_s, "x");
        put(desktop.base + u"/l/liste.m3ubak"_s, "/fehlt/eins.mp3\r\n");
        QDir::setCurrent(desktop.base + u"/hier"_s);
        startWith(desktop.base + u"/l/liste.m3u"_s);
        desktop.messages.answer(Answer::Yes);
    }
    void TearDown() override { QDir::setCurrent(former); }

    const QString former = QDir::currentPath();
};

} // namespace

TEST_F(BroughtBackFromFile, AListThatCannotBeCopiedIsNotAskedForAgain)
{
    desktop.messages.answer(Answer::Yes);
    desktop.log.failNext(u"files.copy"_s);
    read();
    EXPECT_EQ("(missing)", bytes(list).toStdString());
    EXPECT_EQ(0, tracks().count());
    EXPECT_TRUE(catalogue().Enabled.value());
    EXPECT_EQ(MousePointer::Default, root().Pointer.value());
}

TEST_F(BroughtBackFromFile, ItsRowIsMarkedAsLoadedThoughAnotherOneWasOpenedUnderTheBox)
{
    desktop.messages.script({.answer = Answer::Yes, .entered = {}, .title = Title, .text = {}, .meanwhile = [this] {
                                 (void)openRow(root(), 2);
                             }});
    read();
    EXPECT_EQ(1, catalogue().selectedRow());
    EXPECT_EQ("1", catalogue().Tag.toStdString());
    EXPECT_EQ("/m/zwei.mp3", tracks().subItem(2, 3).toStdString());
    click(2);
    EXPECT_EQ("/m/a.mp3", tracks().subItem(1, 3).toStdString()) << "the click is not passed over";
}

TEST_F(BroughtBackFromBackup, OneThatCannotBeCopiedStaysAndIsNotAskedForAgain)
{
    desktop.log.failNext(u"files.copy"_s);
    read();
    EXPECT_EQ("/fehlt/eins.mp3\r\n", bytes(list + u"bak"_s).toStdString());
    EXPECT_EQ("(missing)", bytes(list + u"m3u"_s).toStdString());
    EXPECT_TRUE(catalogue().Enabled.value());
}

TEST_F(BroughtBackFromBackup, OneThatCannotBeRemovedIsPutBackWithItsCopy)
{
    desktop.log.failNext(u"files.remove"_s);
    read();
    EXPECT_EQ("/fehlt/eins.mp3\r\n", bytes(list + u"bak"_s).toStdString());
    EXPECT_EQ("(missing)", bytes(list + u"m3u"_s).toStdString());
}

TEST_F(BroughtBackFromBackup, OneThatHasGoneIsNotAskedForAgain)
{
    desktop.disk().remove(list + u"bak"_s);
    read();
    EXPECT_EQ("(missing)", bytes(list + u"m3u"_s).toStdString());
    EXPECT_TRUE(catalogue().Enabled.value());
}

} // namespace orvantine::fake
