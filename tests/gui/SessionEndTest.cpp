#include "desktop/qt/services/SessionEnd.h"

#include "gui/OpenWindow.h"

#include <QMouseEvent>
#include <QSplitter>
#include <QTest>

#include <csignal>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The program as it runs when the session ends.
class EndOfTheSession : public OpenWindow
{
protected:
    EndOfTheSession() { desktop.start(); }

    static void logOut()
    {
        // Nobody but the application makes a manager of sessions, and nobody here asks it for anything.
        char manager = 0;
        ASSERT_TRUE(QMetaObject::invokeMethod(qGuiApp, "commitDataRequest", Qt::DirectConnection,
                                              QGenericArgument("QSessionManager&", &manager)));
    }
    [[nodiscard]] std::string setting(const QString& name) const
    {
        const auto value = desktop.settings.peek(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, name);
        return value ? value->text.toStdString() : "(absent)";
    }

    SessionEnd end{[this] { window.endSession(); }};
};

TEST_F(EndOfTheSession, ALogOutSavesTheOptionsAndEndsTheProgramWithoutAWord)
{
    ASSERT_EQ(setting(u"Maximized"_s), "(absent)");
    logOut();
    EXPECT_TRUE(desktop.events().ended());
    EXPECT_EQ(root.Tag, u"9"_s);
    EXPECT_EQ(setting(u"Maximized"_s), "0");
    EXPECT_TRUE(desktop.messages.shown().empty());
}

TEST_F(EndOfTheSession, ASizeThatWasDrawnAMomentBeforeALogOutIsSaved)
{
    window.resize(900, 700);
    logOut();
    EXPECT_EQ(setting(u"Width"_s), "13500");
    EXPECT_EQ(setting(u"Height"_s), "10500");
}

TEST_F(EndOfTheSession, ASizeThatWasDrawnAMomentBeforeASignalIsSaved)
{
    window.resize(900, 700);
    ASSERT_EQ(std::raise(SIGTERM), 0);
    EXPECT_TRUE(QTest::qWaitFor([this] { return desktop.events().ended(); }));
    EXPECT_EQ(setting(u"Width"_s), "13500");
    EXPECT_EQ(setting(u"Height"_s), "10500");
}

TEST_F(EndOfTheSession, AnEdgeBetweenThePanesThatWasDrawnAMomentBeforeIsKept)
{
    auto* const splitter = window.findChild<QSplitter*>();
    ASSERT_NE(splitter, nullptr);
    const int before = splitter->sizes().constFirst();
    QWidget* const edge = splitter->handle(1);
    QTest::mousePress(edge, Qt::LeftButton, {}, QPoint(1, 50));
    QMouseEvent move(QEvent::MouseMove, QPointF(51, 50), edge->mapToGlobal(QPointF(51, 50)), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(edge, &move);
    ASSERT_NE(splitter->sizes().constFirst(), before);
    logOut();
    EXPECT_EQ(root.CatalogueWidth.value(), twipsOf(splitter->sizes().constFirst()));
}

} // namespace

} // namespace orvantine
