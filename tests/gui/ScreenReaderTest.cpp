#include "desktop/qt/widgets/ReportList.h"
#include "desktop/qt/window/MainWindow.h"

#include "gui/Sample.h"
#include "support/FakeDesktop.h"

#include <QAccessible>
#include <QTest>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int LongestWait = 20000;

/// What got the accessible focus, in the order of the events.
QStringList& focused()
{
    static QStringList names;
    return names;
}

void noteFocused(QAccessibleEvent* event)
{
    if (event->type() == QAccessible::Focus && event->accessibleInterface() != nullptr)
        focused() += event->accessibleInterface()->text(QAccessible::Name);
}

/// The real window on a display and a bus where a screen reader could listen.
class ScreenReader : public testing::Test
{
protected:
    ScreenReader()
    {
        desktop.complaints.Report = [](const QString& text) { ADD_FAILURE() << text.toStdString(); };
        fake::showSample(root);
        root.Visible = true;
    }
    ~ScreenReader() override { QAccessible::installUpdateHandler(m_before); }

    void listen()
    {
        ASSERT_TRUE(QTest::qWaitFor([] { return QAccessible::isActive(); }, LongestWait));
        focused().clear();
        m_before = QAccessible::installUpdateHandler(noteFocused);
    }

    fake::FakeDesktop desktop;
    Root& root = desktop.root();
    MainWindow window{root};

private:
    QAccessible::UpdateHandler m_before = nullptr;
};

TEST_F(ScreenReader, HearsOfTheRowAfterTheListWasOutOfReach)
{
    ListView& list = root.LListView1;
    list.Click = [&list] {
        list.Enabled = false;
        list.Enabled = true;
    };
    auto& view = *window.findChild<ReportList*>(list.name);
    view.setFocus();
    listen();
    QTest::keyClick(&view, Qt::Key_Down);
    ASSERT_FALSE(focused().isEmpty());
    EXPECT_EQ("Frühstück, Favorit, 2 von 12", focused().back().toStdString());
}

} // namespace

} // namespace orvantine
