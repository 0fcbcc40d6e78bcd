#include "platform/CaseFold.h"
#include "platform/CodePage.h"
#include "search/FolderReplacement.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>

using namespace orvantine;

namespace {

constexpr int MostPasses = 64;
constexpr qsizetype Head = 2;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void compareWithLoop(const QString& text, const QString& old, const QString& fresh)
{
    TextReplacement walk(text, old, fresh);
    QString told = text;
    for (int pass = 0; pass < MostPasses; ++pass) {
        const qsizetype at = old.isEmpty() ? -1 : folded(told).indexOf(folded(old));
        require(walk.next() == (at >= 0));
        if (at < 0)
            break;
        told = told.left(at) + fresh + told.mid(at + old.size());
        require(walk.count() == pass + 1);
        require(walk.result() == told);
    }
}

} // namespace

/// Two lengths, the old text, the new one, and a file. The walk gives what the loop gives, and a file without a match
/// stays as it is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr qsizetype LongestText = 16;
    constexpr qsizetype LongestFile = 4096;
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    if (bytes.size() < Head || bytes.size() > LongestFile)
        return 0;
    const qsizetype ofOld = bytes[0] % LongestText;
    const qsizetype ofFresh = bytes[1] % LongestText;
    const CodePage page;
    const QString old = page.decode(bytes.mid(Head, std::max<qsizetype>(ofOld, 0)));
    const QString fresh = page.decode(bytes.mid(Head + std::max<qsizetype>(ofOld, 0), std::max<qsizetype>(ofFresh, 0)));
    const QByteArray file = bytes.mid(Head + std::max<qsizetype>(ofOld, 0) + std::max<qsizetype>(ofFresh, 0));

    compareWithLoop(page.decode(file), old, fresh);
    FileReplacement replacement(file, old, fresh);
    while (replacement.count() < MostPasses && replacement.next()) {
    }
    if (replacement.count() == 0)
        require(replacement.result() == file);
    return 0;
}
