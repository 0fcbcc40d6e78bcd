#include "app/Quiet.h"

#include "support/DesktopTest.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

class Quiet : public DesktopTest
{
};

TEST_F(Quiet, ALineStandsForFourSecondsAndANewOneTakesItsPlace)
{
    start();
    EXPECT_FALSE(root().quietLine.Visible.value());
    showQuietly(root(), u"Gespeichert"_s);
    EXPECT_TRUE(root().quietLine.Visible.value());
    desktop.events().run(std::chrono::milliseconds{3900});
    EXPECT_EQ("Gespeichert", root().quietLine.Caption.value().toStdString());
    showQuietly(root(), u"Nicht gespeichert: Der Datenträger ist voll."_s);
    desktop.events().run(std::chrono::milliseconds{3900});
    EXPECT_EQ("Nicht gespeichert: Der Datenträger ist voll.", root().quietLine.Caption.value().toStdString());
    desktop.events().run(std::chrono::milliseconds{200});
    EXPECT_EQ("", root().quietLine.Caption.value().toStdString());
    EXPECT_FALSE(root().quietLine.Visible.value());
}

} // namespace orvantine::fake
