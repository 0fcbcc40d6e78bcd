#pragma once

#include <QString>

namespace orvantine {

struct Mp3Record;

/// Fills and takes the record of a track's tag and header.
class TagLibrary
{
public:
    virtual ~TagLibrary() = default;

    /// A file that cannot be read leaves the record as it was.
    virtual void Mp3FileInfo(const QString& path, Mp3Record& record) = 0;
    virtual bool WriteID3V1(const QString& path, const Mp3Record& record) = 0;
    virtual bool EraseID3V2(const QString& path) = 0;
};

} // namespace orvantine
