#include "desktop/qt/services/QtForms.h"
#include "desktop/qt/widgets/ReportList.h"
#include "desktop/qt/window/MainWindow.h"

#include "gui/Sample.h"
#include "search/Suchen.h"
#include "support/FakeDesktop.h"

#include <QAccessible>
#include <QLabel>
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

/// What was told aloud.
QStringList& alerts()
{
    static QStringList texts;
    return texts;
}

void noteAlert(QAccessibleEvent* event)
{
    if (event->type() != QAccessible::Alert)
        return;
    if (const auto* label = qobject_cast<QLabel*>(event->object()))
        alerts() += label->text();
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

    void listen(QAccessible::UpdateHandler handler = noteFocused)
    {
        ASSERT_TRUE(QTest::qWaitFor([] { return QAccessible::isActive(); }, LongestWait));
        focused().clear();
        alerts().clear();
        m_before = QAccessible::installUpdateHandler(handler);
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

TEST_F(ScreenReader, HearsWhichListASearchReads)
{
    QtForms forms;
    Suchen& form = *root.suchen;
    form.Load = {};
    forms.show(form);
    listen(noteAlert);
    form.progress.Caption = u"Durchsucht wird „Erste“, noch 3 Playlisten."_s;
    form.progress.Caption = QString();
    EXPECT_EQ("Durchsucht wird „Erste“, noch 3 Playlisten.", alerts().join(u'|').toStdString());
    forms.unload(form);
}

} // namespace

} // namespace orvantine
