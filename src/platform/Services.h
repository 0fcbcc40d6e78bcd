#pragma once

#include "platform/Choosers.h"
#include "platform/Clipboard.h"
#include "platform/EarlierVersions.h"
#include "platform/Events.h"
#include "platform/Files.h"
#include "platform/FolderWalk.h"
#include "platform/Fonts.h"
#include "platform/Forms.h"
#include "platform/Instance.h"
#include "platform/Launcher.h"
#include "platform/MediaPlayer.h"
#include "platform/Messages.h"
#include "platform/MixerDevice.h"
#include "platform/Priority.h"
#include "platform/ProfileStore.h"
#include "platform/Screen.h"
#include "platform/SettingsStore.h"
#include "platform/SoundOutput.h"
#include "platform/TagLibrary.h"
#include "platform/TrayIcon.h"
#include "platform/Version.h"
#include "platform/Volumes.h"
#include "platform/ZipArchive.h"

namespace orvantine {

/// Folders of the host, each without a trailing separator; "" for one that there is none of.
struct StandardFolders
{
    QString program;
    QString applicationData;
    QString documents;
    QString music;
    /// Stands for the system's folder: its "FONTS" is the user's font folder.
    QString windows;
    QString temp;
};

struct SystemVersion
{
    int platform = 2;
    int major = 5;
    int minor = 1;
};

/// How the program was started.
struct StartContext
{
    /// The arguments joined by blanks.
    QString command;
    /// Stem of the program's file, "Orvantine".
    QString stem = QStringLiteral("Orvantine");
    int versionMajor = VersionMajor;
    int versionMinor = VersionMinor;
    int versionRevision = VersionRevision;
    int build = 0;
};

/// Everything that the logic asks of a desktop. Put together once, in main or in a fixture.
struct Services
{
    Files& files;
    ProfileStore& profiles;
    SettingsStore& settings;
    Messages& messages;
    Choosers& choosers;
    Forms& forms;
    Events& events;
    MediaPlayer& mediaplayer;
    MediaPlayer& mediaInfo;
    MixerDevice& mixer;
    SoundOutput& sound;
    TagLibrary& tags;
    TrayIcon& tray;
    Clipboard& clipboard;
    Launcher& launcher;
    Volumes& volumes;
    Instance& instance;
    Fonts& fonts;
    Screen& screen;
    FolderWalks& walks;
    Priority& priority;
    ZipArchive& zip;
    EarlierVersions& earlierVersions;
    StandardFolders folders;
    SystemVersion system;
    StartContext start;
};

} // namespace orvantine
