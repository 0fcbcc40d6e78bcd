#include "TrackBytes.h"
#include "desktop/tags/TagLibTags.h"
#include "metadata/frmID3.h"
#include "support/DiskDesktop.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// The save of the tag dialog over the library itself and a disk.
class TagSave : public testing::Test
{
protected:
    TagSave()
    {
        EXPECT_TRUE(machine.files.writeBytes(path, track));
        machine.root.tagForm->ID3Titel.Text = u"Titel"_s;
        machine.root.tagForm->ID3Interpret.Text = u"Interpret"_s;
    }

    void select(const QString& rowPath)
    {
        machine.root.LListView2.append(
            {.Text = u"101"_s, .SubItems = {{.Text = {}}, {.Text = u"Name"_s}, {.Text = rowPath}, {.Text = {}}}});
        machine.root.LListView2.select(1);
    }
    void save() { machine.root.tagForm->cmdUpdate.Click(); }
    [[nodiscard]] QByteArray bytes() const { return machine.files.readBytes(path).bytes; }
    /// The tag that stood there, and the one that was to be written.
    [[nodiscard]] bool hasOld() const { return bytes().startsWith("ID3"); }
    [[nodiscard]] bool hasNew() const { return bytes().last(128).startsWith("TAGTitel"); }

    QTemporaryDir folder;
    DiskDesktop machine{folder.path(), [](Files& files) { return std::make_unique<TagLibTags>(files); }};
    const QString path = folder.path() + u"/a.mp3"_s;
    const QByteArray track = test::id3v2(200) + test::sound();
};

} // namespace

TEST_F(TagSave, TheNewTagIsTheOnlyOne)
{
    select(path);
    machine.root.CurrentMp3File = path;
    save();
    EXPECT_FALSE(hasOld());
    EXPECT_TRUE(hasNew());
    EXPECT_EQ(track.size() - 210 + 128, bytes().size());
}

TEST_F(TagSave, AWriteThatFailsLeavesTheOldTag)
{
    // In quotes the library finds no file to write to.
    select(u'"' + path + u'"');
    machine.root.CurrentMp3File = u'"' + path + u'"';
    save();
    EXPECT_EQ(track, bytes());
    EXPECT_FALSE(machine.root.tagForm->Visible.value());
    EXPECT_FALSE(machine.files.takeFault().has_value()) << "nobody is told";
}

TEST_F(TagSave, WithoutASelectedTrackTheOldTagStays)
{
    machine.root.CurrentMp3File = path;
    save();
    EXPECT_EQ(track, bytes());
}

} // namespace orvantine::fake
