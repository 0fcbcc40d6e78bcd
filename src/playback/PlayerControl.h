#pragma once

namespace orvantine {

struct Root;

// What a user presses counts as a wish: a sequence that waits gives way to it.

/// Play, resume or stop, by the state of the two buttons and of the player.
void pSoundPlayer_Click(Root& root);
/// Pause, or resume where that is possible.
void pPausePlayer_Click(Root& root);
/// Stops the player and the sequence.
void pStopPlayer_Click(Root& root);
/// The track before and the one after. Neither is a wish: the sequence goes on.
void pPlayBack_Click(Root& root);
void pPlayForward_Click(Root& root);
/// Goes on where the player is paused, else as pSoundPlayer_Click.
void mnuWiedergabe_Click(Root& root);
/// 1 next, 2 previous, 3 pause, 4 go on.
void mnuSoundplayer_Click(Root& root, int index);
/// 1 plays the track, 2 stops.
void mnuSpecials_Click(Root& root, int index);

// The same steps as of the program itself, which are no wish

/// Play, resume or stop, as pSoundPlayer_Click.
void runPlayButton(Root& root);
/// Stops and closes the player, puts the buttons back to idle and takes the mark of the playing row away.
void stopPlaying(Root& root);

} // namespace orvantine
