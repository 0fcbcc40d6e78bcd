#pragma once

#include "Measure.h"
#include "support/DiskDesktop.h"

#include <QTemporaryDir>

namespace orvantine::bench {

/// Stands before what lies in it.
struct BenchFolder
{
    QTemporaryDir temporary;
};

/// The logic over a temporary folder, with the real library for tags.
class BenchDesktop : private BenchFolder, public fake::DiskDesktop
{
public:
    BenchDesktop();

    /// The database file.
    [[nodiscard]] QString database() const;
};

/// Makes 300 folders with `tracks` empty files below `folder`; their paths in the order of a playlist.
[[nodiscard]] QStringList makeTracks(const QString& folder, int tracks);

/// Lines of `keys` keys of section `TagInfo`, the first ones for `tracks`.
[[nodiscard]] QByteArray tagInfoSection(int keys, const QStringList& tracks);

/// The longest time between two moments of the work at which the window can answer; at most 100 ms.
[[nodiscard]] Row longestWait(fake::VirtualEvents& events, const std::function<void()>& work);

/// Writes a file without going through anything of the program.
void layOut(const QString& path, const QByteArray& bytes);

} // namespace orvantine::bench
