#pragma once

#include "platform/Files.h"
#include "platform/ZipArchive.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>

namespace orvantine {

/// A service for archives with an empty folder to work in.
class ArchiveWorld
{
public:
    virtual ~ArchiveWorld() = default;
    [[nodiscard]] virtual Files& files() = 0;
    [[nodiscard]] virtual ZipArchive& zip() = 0;
    /// Without a trailing separator.
    [[nodiscard]] virtual QString folder() const = 0;
    virtual void setModified(const QString& path, const QDateTime& time) = 0;
};

struct ArchiveFactory
{
    const char* name = "";
    std::function<std::unique_ptr<ArchiveWorld>()> make;
};

inline void PrintTo(const ArchiveFactory& factory, std::ostream* out)
{
    *out << factory.name;
}

/// What every ZipArchive does alike. To run it: link ArchiveContract.cpp and
/// INSTANTIATE_TEST_SUITE_P(Name, ArchiveContract, testing::Values(ArchiveFactory{"Name", …}),
/// ArchiveContract::nameOf);
class ArchiveContract : public testing::TestWithParam<ArchiveFactory>
{
public:
    static std::string nameOf(const testing::TestParamInfo<ArchiveFactory>& info) { return info.param.name; }

protected:
    [[nodiscard]] Files& files() { return m_world->files(); }
    [[nodiscard]] QString at(const QString& name) const { return m_world->folder() + u'/' + name; }
    void put(const QString& name, const QByteArray& bytes)
    {
        for (qsizetype cut = name.indexOf(u'/'); cut >= 0; cut = name.indexOf(u'/', cut + 1))
            files().makeFolder(at(name.left(cut)));
        ASSERT_TRUE(files().writeBytes(at(name), bytes)) << name.toStdString();
    }
    [[nodiscard]] QByteArray bytes(const QString& path)
    {
        const ReadBytes read = files().readBytes(path);
        return read.done() ? read.bytes : "<missing>";
    }
    ArchiveOutcome add(const QString& archive, const QStringList& folders, bool foldersToo = true)
    {
        ArchiveJob job{.archive = at(archive), .trees = {}, .compression = Compression::Strong, .takes = {}};
        for (const QString& folder : folders)
            job.trees.push_back({at(folder), foldersToo});
        return m_world->zip().add(job, {});
    }
    [[nodiscard]] std::unique_ptr<OpenedArchive> open(const QString& archive, qint64 most = 1000)
    {
        return m_world->zip().open(at(archive), most);
    }
    /// "name: bytes" for a file, "name" for a folder, sorted; "<none>" for what is no archive.
    [[nodiscard]] std::string content(const QString& archive);

    std::unique_ptr<ArchiveWorld> m_world = GetParam().make();
};

} // namespace orvantine
