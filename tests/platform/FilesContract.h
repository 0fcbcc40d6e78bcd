#pragma once

#include "platform/EarlierVersions.h"
#include "platform/Files.h"

#include <QByteArrayList>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>

namespace orvantine {

/// An implementation of `Files` with an empty folder to work in; all of it goes when the world ends.
class FilesWorld
{
public:
    virtual ~FilesWorld() = default;
    [[nodiscard]] virtual Files& files() = 0;
    /// Without a trailing separator.
    [[nodiscard]] virtual QString folder() const = 0;
    /// The old bytes that were kept, in order.
    [[nodiscard]] virtual QByteArrayList kept() const = 0;
    /// The same as the user is shown it.
    [[nodiscard]] virtual const EarlierVersions& versions() const = 0;
    /// From now on no old bytes can be kept.
    virtual void breakStore() = 0;
};

struct FilesFactory
{
    const char* name = "";
    std::function<std::unique_ptr<FilesWorld>()> make;
};

inline void PrintTo(const FilesFactory& factory, std::ostream* out)
{
    *out << factory.name;
}

/// What every implementation of `Files` does alike. To run it: link FilesContract.cpp and
/// INSTANTIATE_TEST_SUITE_P(Name, FilesContract, testing::Values(FilesFactory{"Name", …}), FilesContract::nameOf);
class FilesContract : public testing::TestWithParam<FilesFactory>
{
public:
    static std::string nameOf(const testing::TestParamInfo<FilesFactory>& info) { return info.param.name; }

protected:
    [[nodiscard]] Files& files() { return m_world->files(); }
    /// A path in the empty folder.
    [[nodiscard]] QString at(const QString& name) const { return m_world->folder() + u'/' + name; }
    /// The file's bytes; "<missing>" and "<failed>" for the other outcomes.
    [[nodiscard]] QByteArray bytes(const QString& name)
    {
        const ReadBytes read = files().readBytes(at(name));
        if (read.done())
            return read.bytes;
        return read.outcome == ReadOutcome::Missing ? "<missing>" : "<failed>";
    }
    bool put(const QString& name, const QByteArray& content) { return files().writeBytes(at(name), content); }

    std::unique_ptr<FilesWorld> m_world = GetParam().make();
};

} // namespace orvantine
