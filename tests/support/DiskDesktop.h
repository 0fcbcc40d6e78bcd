#pragma once

#include "app/Root.h"
#include "desktop/archive/LibzipArchive.h"
#include "desktop/posix/KeptVersions.h"
#include "desktop/posix/PosixFiles.h"
#include "desktop/posix/PosixFolderWalks.h"
#include "support/CallLog.h"
#include "support/Complaints.h"
#include "support/FakeDevices.h"
#include "support/FakeForms.h"
#include "support/FakePlayer.h"
#include "support/MemorySettings.h"
#include "support/ScriptedChoosers.h"
#include "support/ScriptedMessages.h"
#include "support/VirtualEvents.h"

#include <functional>
#include <memory>

namespace orvantine::fake {

/// The logic straight over the real disk, past any log, and a desktop that costs nothing. Told pauses pass in virtual
/// time. Everything lies below one folder of the caller's: "program", "data" (the DataFolder) and "recovery".
class DiskDesktop
{
public:
    using MakeTags = std::function<std::unique_ptr<TagLibrary>(Files&)>;

    /// Without a library of its own it pretends to read tags.
    explicit DiskDesktop(const QString& where, const MakeTags& makeTags = {});

    [[nodiscard]] QString path(const QString& name) const { return folder + u'/' + name; }

    const QString folder;
    CallLog log;
    Complaints complaints;
    PosixFiles files;
    ProfileStore profiles{files};
    MemorySettings settings{log};
    ScriptedMessages messages{log, complaints};
    ScriptedChoosers choosers{log, complaints};
    FakeForms forms{log, complaints};
    VirtualEvents events{log, complaints};
    FakePlayer player;
    FakePlayer infoPlayer;
    FakeMixer mixer{log};
    FakeSound sound{log};
    std::unique_ptr<TagLibrary> tags;
    FakeTray tray{log};
    FakeClipboard clipboard{log};
    FakeLauncher launcher{log};
    FakeVolumes volumes{log};
    FakeInstance instance{log};
    FakeFonts fonts{log};
    FakeScreen screen;
    PosixFolderWalks walks;
    FakePriority priority{log};
    LibzipArchive zip;
    KeptVersions earlierVersions;
    Services services;
    Root root;
};

} // namespace orvantine::fake
