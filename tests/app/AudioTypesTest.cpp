#include "app/AudioTypes.h"

#include <gtest/gtest.h>

#include <QString>

#include <array>

namespace orvantine {

namespace {

struct Case
{
    QStringView path;
    bool dropped;
    bool pasted;
    bool mp3;
};

} // namespace

TEST(AudioTypes, EachWayAsksInItsOwnManner)
{
    constexpr std::array<Case, 7> Cases{{{u"/m/a.mp3", true, true, true},
                                         {u"/m/a.Mp3", true, false, true},
                                         {u"/m/a.WMA", true, false, false},
                                         {u"/m/a.wav", true, true, false},
                                         {u"mp3", false, true, true},
                                         {u"/m/a.mp3 ", false, false, false},
                                         {u"/m/a.ogg", false, false, false}}};
    for (const Case& one : Cases) {
        SCOPED_TRACE(one.path.toString().toStdString());
        EXPECT_EQ(one.dropped, AudioTypes::isDropped(one.path));
        EXPECT_EQ(one.pasted, AudioTypes::isPasted(one.path));
        EXPECT_EQ(one.mp3, AudioTypes::endsInMp3(one.path));
    }
}

} // namespace orvantine
