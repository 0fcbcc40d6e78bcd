#pragma once

#include "platform/Files.h"
#include "platform/Launcher.h"

#include <memory>
#include <vector>

namespace orvantine {

class HelpWindow;

/// Hands files to the desktop: its file manager, its programs, its browser; help stands in a window of ours.
class QtLauncher final : public Launcher
{
public:
    explicit QtLauncher(const Files& files);
    ~QtLauncher() override;

    bool start(const LaunchRequest& request) override;

    /// The latest requests, the last one at the end.
    [[nodiscard]] const std::vector<LaunchRequest>& recent() const { return m_recent; }
    /// Closes the help window.
    void closeAll();

private:
    bool showHelp(const QString& file, const QString& topic);
    bool showFolder(const QString& path);
    bool showProperties(const QString& path);
    bool openByDesktop(const QString& path);
    bool startProgram(const QString& path, const QStringList& arguments);
    [[nodiscard]] QString hostPath(const QString& path) const;

    const Files& m_files;
    std::unique_ptr<HelpWindow> m_help;
    std::vector<LaunchRequest> m_recent;
};

/// A regular file that its owner, the user or root, may run, and that nobody else may write to.
[[nodiscard]] bool isTrustedProgram(const QByteArray& nativePath);

} // namespace orvantine
