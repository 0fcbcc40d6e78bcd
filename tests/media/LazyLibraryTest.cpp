#include "desktop/media/MpvPlayer.h"
#include "media/MusicFolder.h"
#include "support/Wav.h"

#include <QFile>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

bool playerLibraryIsLoaded()
{
    QFile maps{u"/proc/self/maps"_s};
    EXPECT_TRUE(maps.open(QFile::ReadOnly));
    return maps.readAll().contains("/libmpv.so");
}

/// A program of its own: once loaded, the library stays.
TEST(MpvLibrary, IsLoadedAtTheFirstPlayback)
{
    const test::MusicFolder music;
    PosixFiles files;
    MpvPlayer player{files, {.options = {{"ao", "null"}}}};
    player.setURL(u"/nowhere/list.m3u"_s);
    player.close();
    EXPECT_FALSE(playerLibraryIsLoaded());
    player.setURL(music.write(u"a.wav"_s, fake::wav({})));
    EXPECT_TRUE(playerLibraryIsLoaded());
}

} // namespace

} // namespace orvantine
