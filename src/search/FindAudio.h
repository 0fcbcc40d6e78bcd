#pragma once

#include "platform/Form.h"

namespace orvantine {

/// The audio finder: scans a folder tree for playlists or audio files.
struct FindAudio : Form
{
    FindAudio();
};

} // namespace orvantine
