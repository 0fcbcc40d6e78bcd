#pragma once

#include "runner/Script.h"
#include "support/FakeDesktop.h"

namespace orvantine::scenario {

/// The machine that a scenario runs on: a fake desktop over the real files of a temporary folder. It comes into being
/// with the first command that needs it; before that its code page, drives and the like can be chosen. From then on its
/// folder is the current one, so that a relative path that the program forms stays on the machine.
class World
{
public:
    World() = default;
    ~World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;

    fake::DesktopOptions options = [] {
        fake::DesktopOptions real;
        real.disk = fake::DiskKind::TemporaryFolder;
        return real;
    }();

    /// Told of the desktop when it comes into being.
    std::function<void(fake::FakeDesktop&)> Made = [](fake::FakeDesktop&) {};

    [[nodiscard]] bool made() const { return m_desktop != nullptr; }
    fake::FakeDesktop& desktop();

    /// The word's bytes with its placeholders filled in.
    [[nodiscard]] std::optional<QByteArray> expanded(const Word& word, QString* error);
    /// Where a path of the scenario lies on the host: a drive is looked up in the drive map, a relative one starts at
    /// the base.
    [[nodiscard]] QByteArray hostPath(const QByteArray& path);
    /// A printed line with the folders' placeholders in place of their paths.
    [[nodiscard]] QString shown(const QString& line);

private:
    /// Longest path first.
    [[nodiscard]] QList<std::pair<QString, QString>> placeholders();

    std::unique_ptr<fake::FakeDesktop> m_desktop;
    QString m_folderBefore;
};

/// A word as expectations compare it: quoted in one way only, placeholders by their names.
[[nodiscard]] QString rendered(const Word& word);

/// Every form of the program by its name, Root first. A form that is added to the program is added here.
[[nodiscard]] std::vector<Form*> formsOf(Root& root);

} // namespace orvantine::scenario
