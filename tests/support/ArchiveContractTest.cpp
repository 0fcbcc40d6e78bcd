#include "ArchiveContract.h"
#include "support/FakeArchive.h"
#include "support/MemoryFiles.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

class FakeWorld final : public ArchiveWorld
{
public:
    FakeWorld()
    {
        m_files.putFolder(folder());
        m_zip.SetModified = [this](const QString& path, const QDateTime& time) { m_files.setModified(path, time); };
    }
    [[nodiscard]] Files& files() override { return m_files; }
    [[nodiscard]] ZipArchive& zip() override { return m_zip; }
    [[nodiscard]] QString folder() const override { return u"/home/anna"_s; }
    void setModified(const QString& path, const QDateTime& time) override { m_files.setModified(path, time); }

private:
    CallLog m_log;
    MemoryFiles m_files;
    FakeArchive m_zip{m_log, m_files, u"/home/staging"_s};
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Fake, ArchiveContract,
                         testing::Values(ArchiveFactory{"Fake", [] { return std::make_unique<FakeWorld>(); }}),
                         ArchiveContract::nameOf);

} // namespace orvantine::fake
