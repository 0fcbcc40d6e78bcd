#pragma once

#include "app/Root.h"
#include "desktop/posix/PosixFiles.h"
#include "desktop/tags/TagLibTags.h"
#include "support/FakeDesktop.h"

#include <QTemporaryDir>

namespace orvantine::bench {

/// The logic over the real disk, and a desktop that costs nothing. Told pauses pass in virtual time.
class BenchDesktop
{
public:
    BenchDesktop();

    fake::CallLog log;
    fake::Complaints complaints;
    QTemporaryDir folder;
    PosixFiles files{{.recoveryFolder = folder.filePath(QStringLiteral("recovery"))}};
    ProfileStore profiles{files};
    fake::MemorySettings settings{log};
    fake::ScriptedMessages messages{log, complaints};
    fake::ScriptedChoosers choosers{log, complaints};
    fake::FakeForms forms{log, complaints};
    fake::VirtualEvents events{log, complaints};
    fake::FakePlayer player;
    fake::FakePlayer infoPlayer;
    fake::FakeMixer mixer{log};
    fake::FakeSound sound{log};
    TagLibTags tags{files};
    fake::FakeTray tray{log};
    fake::FakeClipboard clipboard{log};
    fake::FakeLauncher launcher{log};
    fake::FakeVolumes volumes{log};
    fake::FakeInstance instance{log};
    fake::FakeFonts fonts{log};
    fake::FakeScreen screen;
    Services services;
    Root root;

    [[nodiscard]] QString path(const QString& name) const { return folder.filePath(name); }
    /// The database file.
    [[nodiscard]] QString database() const;
};

/// Makes 300 folders with `tracks` empty files below `folder`; their paths in the order of a playlist.
[[nodiscard]] QStringList makeTracks(const QString& folder, int tracks);

/// Lines of `keys` keys of section `TagInfo`, the first ones for `tracks`.
[[nodiscard]] QByteArray tagInfoSection(int keys, const QStringList& tracks);

/// Writes a file without going through anything of the program.
void layOut(const QString& path, const QByteArray& bytes);

} // namespace orvantine::bench
