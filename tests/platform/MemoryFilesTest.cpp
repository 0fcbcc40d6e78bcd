#include "FilesContract.h"

#include "support/FakeVersions.h"
#include "support/MemoryFiles.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

class MemoryWorld : public FilesWorld
{
public:
    MemoryWorld() { m_files.putFolder(folder()); }
    [[nodiscard]] Files& files() override { return m_files; }
    [[nodiscard]] QString folder() const override { return u"/welt/ordner"_s; }
    [[nodiscard]] QByteArrayList kept() const override { return m_files.recovered(); }
    [[nodiscard]] const EarlierVersions& versions() const override { return m_versions; }
    void breakStore() override { m_files.breakStore(); }

private:
    fake::MemoryFiles m_files;
    fake::FakeVersions m_versions{m_files};
};

/// The logic is tested on the files in memory: they must do what the disk does.
INSTANTIATE_TEST_SUITE_P(Fake, FilesContract,
                         testing::Values(FilesFactory{"Memory", [] { return std::make_unique<MemoryWorld>(); }}),
                         FilesContract::nameOf);

} // namespace
} // namespace orvantine
