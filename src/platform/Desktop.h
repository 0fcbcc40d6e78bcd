#pragma once

#include "platform/Twips.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <optional>

namespace orvantine {

/// The program's item in the notification area.
class TrayIcon
{
public:
    virtual ~TrayIcon() = default;

    /// False where the desktop has no tray; an item that stands already stays.
    virtual bool add(const QString& tip) = 0;
    virtual void remove() = 0;
    [[nodiscard]] virtual bool available() const = 0;
    /// X of the callback in twips: 7695 for the left button, 7740 for the right one.
    std::function<void(int)> Callback = [](int) {};
};

struct MixerRange
{
    long minimum = 0;
    long maximum = 0;
};

/// An open mixer, closed when it goes. Its lines are named by component type: 4 speakers, 4099 microphone, 4104 wave
/// out, 4100 synthesizer, 4101 compact disc, 4098 line, 4105 auxiliary.
class MixerHandle
{
public:
    virtual ~MixerHandle() = default;

    /// Nothing for a line that is not there.
    [[nodiscard]] virtual std::optional<MixerRange> line(int componentType) = 0;
    /// 0 on failure.
    [[nodiscard]] virtual long level(int componentType) = 0;
    /// A level between the bounds of the line; false on failure.
    virtual bool setLevel(int componentType, long level) = 0;
};

class MixerDevice
{
public:
    virtual ~MixerDevice() = default;

    /// Null if no sound server answers. Every handle stands by itself: one may be opened before another is closed.
    [[nodiscard]] virtual std::unique_ptr<MixerHandle> open() = 0;
};

/// Bits that a sound is played with.
namespace SoundFlag {
inline constexpr int Async = 1;
inline constexpr int NoDefault = 2;
inline constexpr int Memory = 4;
} // namespace SoundFlag

class SoundOutput
{
public:
    virtual ~SoundOutput() = default;

    [[nodiscard]] virtual int deviceCount() const = 0;
    /// Plays a WAV image, `Memory` set; with `Async` it returns at once, else at the sound's end, and serves no events
    /// in between. What cannot be played is silence.
    virtual void play(const QByteArray& wave, int flags) = 0;
};

class Clipboard
{
public:
    virtual ~Clipboard() = default;

    [[nodiscard]] virtual QString text() const = 0;
    /// Local files and folders that were copied in a file manager, as the Files service names them; empty for none.
    [[nodiscard]] virtual QStringList files() const = 0;
    virtual void setText(const QString& text) = 0;
};

/// Volumes by their root: "C:\", "/media/user/STICK".
class Volumes
{
public:
    virtual ~Volumes() = default;

    /// The root that a path lies on.
    [[nodiscard]] virtual QString rootOf(const QString& path) const = 0;
    /// Upper case, "FAT32" for the stick's file systems; "" if there is no such volume.
    [[nodiscard]] virtual QString fileSystem(const QString& root) const = 0;
    /// Bytes.
    [[nodiscard]] virtual std::optional<quint64> freeBytes(const QString& root) const = 0;
    [[nodiscard]] virtual std::optional<quint64> totalBytes(const QString& root) const = 0;
};

/// One running program a user, by a lock that the kernel frees when its holder dies.
class Instance
{
public:
    virtual ~Instance() = default;

    /// True if this process holds the lock now.
    virtual bool acquire(const QString& title) = 0;
    /// Asks the holder to come to the front; false if it does not answer.
    virtual bool activateOther() = 0;
    /// A later instance asked this one to come to the front.
    std::function<void()> Activated = [] {};
};

class Fonts
{
public:
    virtual ~Fonts() = default;

    /// True if a font of that family name can be used.
    [[nodiscard]] virtual bool known(const QString& family) const = 0;
    /// Makes a font file usable for this and later runs.
    virtual bool registerFont(const QString& path) = 0;
};

struct ScreenSize
{
    Twips width = 0;
    Twips height = 0;
};

class Screen
{
public:
    virtual ~Screen() = default;

    [[nodiscard]] virtual ScreenSize size() const = 0;
};

} // namespace orvantine
