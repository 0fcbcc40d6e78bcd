#include "support/FakeDevices.h"

#include "platform/CaseFold.h"
#include "platform/CodePage.h"
#include "platform/Cues.h"
#include "playlists/PlaylistText.h"

#include <algorithm>
#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

constexpr int LeftClickTwips = 7695;
constexpr int RightClickTwips = 7740;

/// Ignoring case, with "/" as the separator and one at the end.
QString comparable(const QString& path)
{
    QString text = folded(path);
    text.replace(u'\\', u'/');
    return text.endsWith(u'/') ? text : text + u'/';
}

/// One opening of the mixer.
class FakeMixerHandle final : public MixerHandle
{
public:
    FakeMixerHandle(FakeMixer& mixer, CallLog& log) : m_mixer(mixer), m_log(log) { ++m_mixer.handles; }
    ~FakeMixerHandle() override
    {
        m_log.call(u"mixer.close"_s);
        --m_mixer.handles;
    }
    FakeMixerHandle(const FakeMixerHandle&) = delete;
    FakeMixerHandle& operator=(const FakeMixerHandle&) = delete;

    std::optional<MixerRange> line(int componentType) override
    {
        if (!m_log.call(u"mixer.line %1"_s.arg(componentType)) || !has(componentType))
            return std::nullopt;
        return m_mixer.lines.value(componentType).range;
    }
    long level(int componentType) override
    {
        if (!m_log.call(u"mixer.level %1"_s.arg(componentType)) || !has(componentType))
            return 0;
        return m_mixer.lines.value(componentType).level;
    }
    bool setLevel(int componentType, long level) override
    {
        if (!m_log.call(u"mixer.setLevel %1 %2"_s.arg(componentType).arg(level)) || !has(componentType))
            return false;
        m_mixer.lines[componentType].level = level;
        return true;
    }

private:
    [[nodiscard]] bool has(int componentType) const { return m_mixer.present && m_mixer.lines.contains(componentType); }

    FakeMixer& m_mixer;
    CallLog& m_log;
};

} // namespace

bool FakeTray::add(const QString& tip)
{
    m_wanted = m_log.call(u"tray.add %1"_s.arg(quoted(tip)));
    if (!stands())
        return false;
    m_tip = tip;
    return true;
}

void FakeTray::setPresent(bool comes)
{
    if (std::exchange(present, comes) != comes && m_wanted)
        Changed();
}

void FakeTray::remove()
{
    if (m_log.call(u"tray.remove"_s))
        m_wanted = false;
}

bool FakeTray::click(MouseButton button)
{
    if (!stands())
        return false;
    Callback(button == MouseButton::Left ? LeftClickTwips : RightClickTwips);
    return true;
}

std::unique_ptr<MixerHandle> FakeMixer::open()
{
    if (!m_log.call(u"mixer.open"_s) || !present)
        return nullptr;
    return std::make_unique<FakeMixerHandle>(*this, m_log);
}

void FakeSound::play(const QByteArray& wave, int flags)
{
    const QStringList names = cueNames();
    const auto name =
        std::find_if(names.begin(), names.end(), [&](const QString& cue) { return cueNamed(cue) == wave; });
    const QString known = name == names.end() ? QString() : *name;
    if (m_log.call(u"cue.play %1 %2"_s.arg(known.isEmpty() ? u"%1 bytes"_s.arg(wave.size()) : known).arg(flags)))
        played.append({known, wave, flags});
}

void FakeClipboard::setText(const QString& text)
{
    if (m_log.call(u"clipboard.setText %1"_s.arg(quoted(text)))) {
        content = text;
        copied.clear();
    }
}

QString nameOf(LaunchKind kind)
{
    switch (kind) {
    case LaunchKind::Help:
        return u"help"_s;
    case LaunchKind::FileManager:
        return u"filemanager"_s;
    case LaunchKind::Properties:
        return u"properties"_s;
    case LaunchKind::DefaultPlayer:
        return u"defaultplayer"_s;
    case LaunchKind::Program:
        return u"program"_s;
    case LaunchKind::Link:
        return u"link"_s;
    }
    return u"?"_s;
}

bool FakeLauncher::start(const LaunchRequest& request)
{
    QString line = u"launcher.start %1 command %2 target %3"_s.arg(nameOf(request.kind), quoted(request.command),
                                                                   quoted(request.target));
    for (const QString& argument : request.arguments)
        line += u" argument "_s + quoted(argument);
    if (!m_log.call(line))
        return false;
    started.push_back(request);
    Started(request);
    return true;
}

std::unique_ptr<RunningProgram> FakeLauncher::run(const LaunchRequest& request)
{
    class Watched final : public RunningProgram
    {
    public:
        explicit Watched(const FakeLauncher& launcher) : m_launcher(launcher) {}
        [[nodiscard]] std::optional<int> exitCode() override
        {
            constexpr int FewLooks = 5;
            return ++m_looks > FewLooks ? m_launcher.ExitCode() : std::nullopt;
        }

    private:
        const FakeLauncher& m_launcher;
        int m_looks = 0;
    };
    return start(request) ? std::make_unique<Watched>(*this) : nullptr;
}

void FakePriority::set(ProcessPriority priority)
{
    if (m_log.call(u"priority.set %1"_s.arg(static_cast<int>(priority))))
        now = priority;
}

void FakeVolumes::set(const QString& root, const Volume& volume)
{
    const auto known = std::find_if(m_volumes.begin(), m_volumes.end(), [&](const std::pair<QString, Volume>& entry) {
        return comparable(entry.first) == comparable(root);
    });
    if (known == m_volumes.end())
        m_volumes.emplace_back(root, volume);
    else
        known->second = volume;
}

QString FakeVolumes::rootOf(const QString& path) const
{
    QString longest;
    for (const auto& [root, volume] : m_volumes)
        if (comparable(path).startsWith(comparable(root)) && root.size() > longest.size())
            longest = root;
    if (!longest.isEmpty())
        return longest;
    return path.size() >= 2 && path[1] == u':' ? path.left(2) + u'\\' : u"/"_s;
}

QString FakeVolumes::fileSystem(const QString& root) const
{
    if (!m_log.call(u"volumes.fileSystem %1"_s.arg(quoted(root))))
        return {};
    for (const auto& [known, volume] : m_volumes)
        if (comparable(known) == comparable(root))
            return volume.fileSystem.toUpper();
    return {};
}

std::optional<quint64> FakeVolumes::freeBytes(const QString& root) const
{
    if (!m_log.call(u"volumes.freeBytes %1"_s.arg(quoted(root))))
        return std::nullopt;
    for (const auto& [known, volume] : m_volumes)
        if (comparable(known) == comparable(root))
            return volume.free;
    return std::nullopt;
}

std::optional<quint64> FakeVolumes::totalBytes(const QString& root) const
{
    if (!m_log.call(u"volumes.totalBytes %1"_s.arg(quoted(root))))
        return std::nullopt;
    for (const auto& [known, volume] : m_volumes)
        if (comparable(known) == comparable(root))
            return volume.total;
    return std::nullopt;
}

bool FakeInstance::acquire(const QString& title)
{
    return m_log.call(u"instance.acquire %1"_s.arg(quoted(title))) && !taken;
}

bool FakeInstance::acquireFolder(const QString& folder)
{
    return m_log.call(u"instance.acquireFolder %1"_s.arg(quoted(folder))) && !folderTaken;
}

bool FakeInstance::activateOther()
{
    return m_log.call(u"instance.activateOther"_s) && answers;
}

bool FakeInstance::awaitEnd()
{
    m_log.call(u"instance.awaitEnd"_s);
    taken = taken && !ends;
    folderTaken = folderTaken && !ends;
    return ends;
}

bool FakeFonts::registerFont(const QString& path)
{
    return m_log.call(u"fonts.registerFont %1"_s.arg(quoted(path)));
}

bool FakeFonts::provide(const QString& family, const QString& path)
{
    if (!m_log.call(u"fonts.provide %1 %2"_s.arg(quoted(family), quoted(path))) || !readable)
        return false;
    families.insert(family);
    return true;
}

void FakeTags::Mp3FileInfo(const QString& path, Mp3Record& record)
{
    const auto found = tracks.constFind(path);
    if (!m_log.call(u"tags.Mp3FileInfo %1"_s.arg(quoted(path))) || found == tracks.cend())
        return;
    const auto put = [](char* field, qsizetype width, const QString& text) {
        const QByteArray bytes = CodePage::toWindows1252(text).leftJustified(width, ' ', true);
        std::copy(bytes.cbegin(), bytes.cend(), field);
    };
    put(record.title, sizeof record.title, found->title);
    put(record.artist, sizeof record.artist, found->artist);
    put(record.album, sizeof record.album, found->album);
    put(record.year, sizeof record.year, found->year);
    put(record.comment, sizeof record.comment, found->comment);
    record.track = static_cast<qint16>(found->track);
    record.bitRate = static_cast<qint16>(found->bitRate);
    record.playingTime = found->seconds;
}

bool FakeTags::WriteID3V1(const QString& path, const Mp3Record& record)
{
    if (!m_log.call(u"tags.WriteID3V1 %1"_s.arg(quoted(path))))
        return false;
    written << record;
    return tracks.contains(path);
}

bool FakeTags::EraseID3V2(const QString& path)
{
    return m_log.call(u"tags.EraseID3V2 %1"_s.arg(quoted(path))) && tracks.contains(path);
}

} // namespace orvantine::fake
