#pragma once

namespace orvantine {

struct Root;

/// Takes the tag as the name of every track of the open list; a selected track without one makes it a no-op.
void mnuSetTagName_Click(Root& root);

/// Takes the file name as the name of the selected track again.
void mnuSetFileName_Click(Root& root);

/// Takes the tag as the name of the selected track.
void mnuGetIDTag_Click(Root& root);

/// The property sheet of the selected track's file.
void mnuDateiEigenschaften_Click(Root& root);

} // namespace orvantine
