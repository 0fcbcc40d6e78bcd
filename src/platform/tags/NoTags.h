#pragma once

#include "platform/TagLibrary.h"

namespace orvantine {

/// Reads and writes nothing.
class NoTags final : public TagLibrary
{
public:
    void Mp3FileInfo(const QString&, Mp3Record&) override {}
    bool WriteID3V1(const QString&, const Mp3Record&) override { return false; }
    bool EraseID3V2(const QString&) override { return false; }
};

} // namespace orvantine
