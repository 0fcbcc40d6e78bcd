#pragma once

#include "support/FakeDesktop.h"
#include "support/Printing.h"

#include <gtest/gtest.h>

namespace orvantine::fake {

/// A fixture with a whole fake desktop. A complaint of any fake fails the test where it happens; scripts that nothing
/// asked for fail it at the end.
class DesktopTest : public testing::Test
{
protected:
    explicit DesktopTest(const DesktopOptions& options = {}) : desktop(options)
    {
        desktop.complaints.Report = [](const QString& text) { ADD_FAILURE() << text.toStdString(); };
    }
    ~DesktopTest() override { desktop.complainOfUnused(); }

    Root& root() { return desktop.root(); }
    ListView& catalogue() { return root().LListView1; }
    ListView& tracks() { return root().LListView2; }

    /// The DataFolder of a first start, with its separator.
    [[nodiscard]] QString data() const
    {
        return desktop.folders.applicationData + QStringLiteral("/Orvanten Manager/");
    }

    /// Lays a file out with the folders above it.
    void put(const QString& path, const QByteArray& bytes)
    {
        putFolder(path.left(std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'))));
        ASSERT_TRUE(desktop.disk().writeBytes(path, bytes)) << path.toStdString();
    }
    void putFolder(const QString& path)
    {
        if (path.isEmpty() || desktop.disk().isFolder(path))
            return;
        putFolder(path.left(std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'))));
        desktop.disk().makeFolder(path);
    }
    /// "(missing)" for a file that does not exist.
    [[nodiscard]] QByteArray bytes(const QString& path)
    {
        const ReadBytes read = desktop.disk().readBytes(path);
        return read.done() ? read.bytes : QByteArrayLiteral("(missing)");
    }

    /// Runs Form_Load. An empty first start shows no box, but the wizard.
    void start(const QString& command = {}) { desktop.start(command); }

    /// A value of the settings key; `described` prints it.
    void setting(const QString& name, const SettingValue& value)
    {
        desktop.settings.put(Hive::CurrentUser, QStringLiteral("Software\\Verdanis\\Orvant Manager"), name, value);
    }
    [[nodiscard]] QString setting(const QString& name)
    {
        const std::optional<SettingValue> value =
            desktop.settings.peek(Hive::CurrentUser, QStringLiteral("Software\\Verdanis\\Orvant Manager"), name);
        return value ? described(*value) : QStringLiteral("(absent)");
    }

    /// Lines joined by LF, for one comparison of a whole list.
    [[nodiscard]] static std::string lines(const QStringList& list) { return list.join(u'\n').toStdString(); }
    [[nodiscard]] static std::string rows(const ListView& list) { return lines(rowLines(list)); }
    /// Boxes since the last look.
    [[nodiscard]] std::string boxes() { return lines(messageLines(desktop.messages.take())); }
    /// Calls whose line begins with one of the words: calls({u"Mediaplayer"_s}).
    [[nodiscard]] std::string calls(const QStringList& starts) const { return lines(desktop.log.linesOf(starts)); }

    FakeDesktop desktop;
};

} // namespace orvantine::fake
