#pragma once

#include "desktop/tags/TrackFacts.h"
#include "platform/Files.h"
#include "platform/TagLibrary.h"

#include <optional>

namespace orvantine {

/// Tags and heads of the files on the disk. TagLib takes the tags of the second kind and the APE tags apart. Its own
/// reading and writing of the rest would not do: it trims texts and always writes the form with a track number; it
/// knows no free format and trusts what a stream says of itself; and it writes in place, so that a full disk tears a
/// track.
///
/// WAV, WMA and other kinds are told by name and content: their record stays and nothing is ever written to them.
class TagLibTags final : public TagLibrary
{
public:
    explicit TagLibTags(const Files& files) : m_files(files) {}

    void Mp3FileInfo(const QString& path, Mp3Record& record) override;
    /// False, and the file stays, where it could not be written, where it is write-protected, no two frames follow its
    /// leading tag, or this claims to be longer than the file.
    bool WriteID3V1(const QString& path, const Mp3Record& record) override;
    /// False as above; true also where there is no such tag.
    bool EraseID3V2(const QString& path) override;

private:
    [[nodiscard]] std::optional<QByteArray> trackPath(const QString& path) const;

    /// The program asks twice for one selection: the last answer, kept while the file stays the same.
    struct Known
    {
        FileStamp stamp;
        std::optional<TrackFacts> facts;
    };

    const Files& m_files;
    std::optional<Known> m_known;
};

} // namespace orvantine
