#pragma once

#include "desktop/tags/TrackFacts.h"
#include "platform/Files.h"
#include "platform/TagLibrary.h"

#include <optional>

namespace orvantine {

/// Tags and heads of the files on the disk. TagLib takes the tags of the second kind and the APE tags apart, and reads
/// WAV, WMA and other kinds, which their content tells. For MP3 its own reading and writing would not do: it trims
/// texts and always writes the form with a track number; it knows no free format and trusts what a stream says of
/// itself; and it writes in place, so that a full disk tears a track.
///
/// Nothing is ever written to another kind, by name or by content.
class TagLibTags final : public TagLibrary
{
public:
    explicit TagLibTags(Files& files) : m_files(files) {}

    void Mp3FileInfo(const QString& path, Mp3Record& record) override;
    /// False, and the file stays, where it could not be written, where it is write-protected or no frame is found.
    bool WriteID3V1(const QString& path, const Mp3Record& record) override;
    /// False as above, also where no two whole frames follow the leading tag or where this claims to be longer than the
    /// file; true also where there is no such tag.
    bool EraseID3V2(const QString& path) override;

private:
    /// Nothing for a file that nothing is written to.
    [[nodiscard]] static bool isWritable(const QString& path);

    /// The program asks twice for one selection: the last answer, kept while the file stays the same.
    struct Known
    {
        FileStamp stamp;
        TrackFacts facts;
    };

    Files& m_files;
    std::optional<Known> m_known;
};

} // namespace orvantine
