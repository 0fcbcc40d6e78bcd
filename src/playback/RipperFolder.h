#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// From now on the folder is looked at, into which a CD ripper puts its files.
void beginRipperWatch(Root& root, const QString& folder);

/// Every few seconds: tells in passing of audio files that have come, once no more come.
void watchRipperFolder(Root& root);

} // namespace orvantine
