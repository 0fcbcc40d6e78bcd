#pragma once

#include "platform/Files.h"
#include "platform/Launcher.h"

#include <QCoreApplication>
#include <QDialog>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <vector>

namespace orvantine {

class HelpWindow;

/// Hands files to the desktop: its file manager, its programs, its browser; help stands in a window of ours. Serves no
/// events: what the desktop answers later is dealt with then.
class QtLauncher final : public Launcher
{
public:
    /// A program below the program's own folder is started only if it can be trusted, any other as the user says.
    explicit QtLauncher(const Files& files, const QString& programFolder = QCoreApplication::applicationDirPath());
    ~QtLauncher() override;

    bool start(const LaunchRequest& request) override;
    [[nodiscard]] std::unique_ptr<RunningProgram> run(const LaunchRequest& request) override;

    /// The latest requests, the last one at the end.
    [[nodiscard]] const std::vector<LaunchRequest>& recent() const { return m_recent; }
    /// Closes the help window and the property sheets.
    void closeAll();

private:
    void remember(const LaunchRequest& request);
    bool showHelp(const QString& file, const QString& topic);
    bool showFolder(const QString& path);
    bool showProperties(const QString& path);
    bool openByDesktop(const QString& path);
    bool startProgram(const QString& path, const QStringList& arguments);
    /// Asks the desktop's file manager, with a path in the host's bytes. `otherwise` is for one that refuses, later, or
    /// that is not there.
    bool askFileManager(const QString& method, const QByteArray& nativePath, const std::function<bool()>& otherwise);
    [[nodiscard]] QString hostPath(const QString& path) const;
    [[nodiscard]] bool isOwn(const QString& host) const;

    const Files& m_files;
    QString m_programFolder;
    std::unique_ptr<HelpWindow> m_help;
    std::vector<QPointer<QDialog>> m_sheets;
    /// Owns the questions that are not answered yet.
    QObject m_questions;
    std::vector<LaunchRequest> m_recent;
};

/// A regular file that its owner, the user or root, may run, and that nobody else may write to.
[[nodiscard]] bool isTrustedProgram(const QByteArray& nativePath);

} // namespace orvantine
