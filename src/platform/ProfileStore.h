#pragma once

#include "platform/Files.h"

#include <memory>

namespace orvantine {

/// Files in INI form, key by key. Section and key are found ignoring case; the first "=" splits; blanks around key and
/// value are dropped, and one pair of equal quotes around a value. Unknown lines, order and comments survive. Every
/// write is in the file when the call returns.
///
/// A file is held parsed and is read again when anybody else changed it. Section `Index` is kept last.
class ProfileStore
{
public:
    explicit ProfileStore(Files& files);
    ~ProfileStore();
    ProfileStore(const ProfileStore&) = delete;
    ProfileStore& operator=(const ProfileStore&) = delete;

    /// The whole value; "" for a missing file, section or key.
    [[nodiscard]] QString value(const QString& file, const QString& section, const QString& key);
    /// False if the file could not be read or written, or if the form cannot hold the key. A value is cut at its first
    /// CR, LF or NUL. An equal value is not written again.
    bool setValue(const QString& file, const QString& section, const QString& key, const QString& value);
    bool removeKey(const QString& file, const QString& section, const QString& key);
    bool removeSection(const QString& file, const QString& section);
    /// While one lives, the file is taken as it stood at its beginning: for a loop of reads that serves no events.
    class Steady
    {
    public:
        Steady(ProfileStore& store, const QString& file);
        ~Steady();
        Steady(const Steady&) = delete;
        Steady& operator=(const Steady&) = delete;

    private:
        ProfileStore& m_store;
    };

    /// How many reads have failed so far: what was told then is nothing to write back. A running change of the files
    /// fails with each.
    [[nodiscard]] int failedReads() const;

    /// Keys of a section in the file's order.
    [[nodiscard]] QStringList keys(const QString& file, const QString& section);

private:
    class Cache;
    Files& m_files;
    std::unique_ptr<Cache> m_cache;
};

} // namespace orvantine
