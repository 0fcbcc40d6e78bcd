#include "platform/ProfileStore.h"

#include "platform/ProfileText.h"

#include <algorithm>
#include <chrono>
#include <unordered_map>
#include <utility>

using namespace Qt::StringLiterals;

namespace orvantine {
namespace {

// A file that nobody asked for during so many calls is let go: the database's copy is read during a save only.
constexpr quint64 keptCalls = 4096;

// A file written a moment ago can be written once more under the same time. The host's own times move in steps of
// some milliseconds, a stick's in steps of two seconds; those of our own writes are exact.
bool isSettled(const FileStamp& stamp, bool ownWrite)
{
    using namespace std::chrono;
    const auto now = duration_cast<nanoseconds>(system_clock::now().time_since_epoch()).count();
    const qint64 age = now - stamp.modifiedNanoseconds;
    const bool coarseTimes = stamp.modifiedNanoseconds % 1'000'000 == 0;
    if (ownWrite && !coarseTimes)
        return true;
    const qint64 window = coarseTimes ? 2'100'000'000 : 20'000'000;
    return age > window || age < -window;
}

// Lines that end in CR alone: all of it would be one line without a key, and a save would put its own in the place of
// what nobody has seen.
bool hidesItsLines(const QByteArray& bytes)
{
    const qsizetype end = bytes.contains('\n') ? -1 : bytes.indexOf('\r');
    return end >= 0 && !bytes.sliced(end).trimmed().isEmpty();
}

QString oneLine(const QString& value)
{
    const auto ends = [](QChar unit) { return unit == u'\r' || unit == u'\n' || unit == u'\0'; };
    const auto end = std::find_if(value.begin(), value.end(), ends);
    return end == value.end() ? value : value.left(end - value.begin());
}

} // namespace

class ProfileStore::Cache
{
public:
    struct Entry
    {
        FileStamp stamp;
        bool settled = false;
        quint64 lastCall = 0;
        ProfileText text;
    };

    struct Loaded
    {
        ReadOutcome outcome = ReadOutcome::Failed;
        /// Set if the outcome is Done; valid until the next load.
        Entry* entry = nullptr;
    };

    explicit Cache(Files& files) : m_files(files) {}

    Loaded load(const QString& file)
    {
        if (++m_call % 256 == 0)
            letGo();
        const auto found = m_entries.find(file);
        if (found != m_entries.end() && file == m_steady) {
            found->second->lastCall = m_call;
            return {ReadOutcome::Done, found->second.get()};
        }
        const std::optional<FileStamp> stamp = m_files.stamp(file);
        if (found != m_entries.end()) {
            Entry& entry = *found->second;
            const bool same = stamp && entry.stamp == *stamp;
            if (same && (entry.settled || isUnchanged(file, entry))) {
                entry.lastCall = m_call;
                return {ReadOutcome::Done, &entry};
            }
            m_entries.erase(found);
        }
        return read(file);
    }

    /// The file that is not asked for its stamp; "" for none.
    void keepSteady(const QString& file)
    {
        m_steady.clear();
        if (!file.isEmpty() && load(file).outcome == ReadOutcome::Done)
            m_steady = file;
    }

    /// The edit goes to the disk, then to the entry, which may be gone afterwards.
    bool write(const QString& file, Entry& entry, const ProfileText::Edit& edit)
    {
        const bool append = edit.length == 0 && edit.offset == entry.text.bytes().size();
        const bool done = append ? m_files.appendBytes(file, edit.bytes)
                                 : m_files.replaceBytes(file, edit.offset, edit.length, edit.bytes);
        const std::optional<FileStamp> stamp = done ? m_files.stamp(file) : std::nullopt;
        if (done)
            entry.text.apply(edit);
        if (!stamp || stamp->size != entry.text.bytes().size()) {
            m_entries.erase(file); // a failed write or somebody else's: read again at the next call
            return done;
        }
        entry.stamp = *stamp;
        entry.settled = isSettled(*stamp, true);
        return true;
    }

    [[nodiscard]] int failedReads() const { return m_failedReads; }

private:
    bool isUnchanged(const QString& file, Entry& entry)
    {
        const bool settled = isSettled(entry.stamp, false);
        const ReadBytes read = m_files.readBytes(file);
        if (!read.done() || read.bytes != entry.text.bytes())
            return false;
        entry.settled = settled;
        return true;
    }

    Loaded read(const QString& file)
    {
        Loaded loaded;
        const std::optional<FileStamp> before = m_files.stamp(file);
        ReadBytes read = m_files.readBytes(file);
        loaded.outcome = read.outcome;
        const std::optional<FileStamp> after = m_files.stamp(file);
        if (read.done() && (!after || hidesItsLines(read.bytes)))
            loaded.outcome = ReadOutcome::Failed;
        if (loaded.outcome == ReadOutcome::Failed) {
            ++m_failedReads;
            m_files.failWhole();
        }
        if (loaded.outcome != ReadOutcome::Done)
            return loaded;
        const bool quiet = before && *before == *after;
        auto entry = std::unique_ptr<Entry>(
            new Entry{*after, quiet && isSettled(*after, false), m_call, ProfileText(m_files, std::move(read.bytes))});
        loaded.entry = entry.get();
        m_entries[file] = std::move(entry);
        return loaded;
    }

    void letGo()
    {
        for (auto entry = m_entries.begin(); entry != m_entries.end();) {
            if (m_call - entry->second->lastCall > keptCalls)
                entry = m_entries.erase(entry);
            else
                ++entry;
        }
    }

    Files& m_files;
    std::unordered_map<QString, std::unique_ptr<Entry>> m_entries;
    quint64 m_call = 0;
    int m_failedReads = 0;
    QString m_steady;
};

ProfileStore::Steady::Steady(ProfileStore& store, const QString& file) : m_store(store)
{
    m_store.m_cache->keepSteady(file);
}

ProfileStore::Steady::~Steady()
{
    m_store.m_cache->keepSteady({});
}

ProfileStore::ProfileStore(Files& files) : m_files(files), m_cache(std::make_unique<Cache>(files)) {}

ProfileStore::~ProfileStore() = default;

QString ProfileStore::value(const QString& file, const QString& section, const QString& key)
{
    const Cache::Loaded loaded = m_cache->load(file);
    return loaded.entry != nullptr ? loaded.entry->text.value(section, key) : QString();
}

int ProfileStore::failedReads() const
{
    return m_cache->failedReads();
}

QStringList ProfileStore::keys(const QString& file, const QString& section)
{
    const Cache::Loaded loaded = m_cache->load(file);
    return loaded.entry != nullptr ? loaded.entry->text.keys(section) : QStringList();
}

bool ProfileStore::setValue(const QString& file, const QString& section, const QString& key, const QString& value)
{
    if (!ProfileText::canHoldSection(section) || !ProfileText::canHoldKey(key))
        return false;
    const QString line = oneLine(value);
    Cache::Loaded loaded = m_cache->load(file);
    if (loaded.outcome == ReadOutcome::Missing) {
        ProfileText empty(m_files, {});
        return m_files.appendBytes(file, empty.planSet(section, key, line)->bytes);
    }
    if (loaded.entry == nullptr)
        return false;
    std::optional<ProfileText::Edit> edit = loaded.entry->text.planSet(section, key, line);
    if (!edit)
        return true;
    if (section.trimmed().compare(u"Index"_s, Qt::CaseInsensitive) == 0) {
        if (const std::optional<ProfileText::Edit> move = loaded.entry->text.planMoveToEnd(section)) {
            if (!m_cache->write(file, *loaded.entry, *move))
                return false;
            loaded = m_cache->load(file);
            if (loaded.entry == nullptr)
                return false;
            edit = loaded.entry->text.planSet(section, key, line);
        }
    }
    return !edit || m_cache->write(file, *loaded.entry, *edit);
}

bool ProfileStore::removeKey(const QString& file, const QString& section, const QString& key)
{
    const Cache::Loaded loaded = m_cache->load(file);
    if (loaded.entry == nullptr)
        return loaded.outcome == ReadOutcome::Missing;
    const std::optional<ProfileText::Edit> edit = loaded.entry->text.planRemoveKey(section, key);
    return !edit || m_cache->write(file, *loaded.entry, *edit);
}

bool ProfileStore::removeSection(const QString& file, const QString& section)
{
    const Cache::Loaded loaded = m_cache->load(file);
    if (loaded.entry == nullptr)
        return loaded.outcome == ReadOutcome::Missing;
    const std::optional<ProfileText::Edit> edit = loaded.entry->text.planRemoveSection(section);
    return !edit || m_cache->write(file, *loaded.entry, *edit);
}

} // namespace orvantine
