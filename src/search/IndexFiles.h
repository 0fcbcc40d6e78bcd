#pragma once

#include <QString>

#include <vector>

namespace orvantine {

struct Root;

/// True if the index was written today; a missing one was not.
[[nodiscard]] bool indexIsOfToday(const Root& root);

/// Writes the paths of all tracks of the catalogue into the index file, one a line. Root.Tag "2" stops it; what stands
/// in the file by then is whole.
void SetIndexFile(Root& root);

/// The index file as it stood when this was made. A missing, unreadable or enormous one holds nothing.
class PlaylistIndex
{
public:
    explicit PlaylistIndex(const Root& root);

    /// 1 if the text stands anywhere in the index, ignoring case, else 0. Required: a part of a longer path counts.
    [[nodiscard]] int CheckPlaylistFile(const QString& text) const;

private:
    [[nodiscard]] bool mayHold(const QString& folded) const;

    QString m_folded;
    /// A bit for each run of some characters that stands in the index: most texts that do not, are known by them.
    std::vector<bool> m_runs;
};

} // namespace orvantine
