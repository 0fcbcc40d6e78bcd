#pragma once

#include "playback/PlaybackWorld.h"

#include "playback/PlayerControl.h"
#include "playback/Timer1.h"

namespace orvantine::fake {

/// The lists that follow one another, without the housekeeping until a test asks for it.
class Sequencing : public PlaybackWorld
{
protected:
    void SetUp() override
    {
        startPlayback();
        root().Timer2.Enabled = false;
    }

    /// The list of that row plays, and its end comes.
    void playToTheEnd(int row)
    {
        if (row != 1)
            click(row);
        pSoundPlayer_Click(root());
        player().pretendEnded();
        forgetCalls();
    }

    void chooseMode(int mode) { mnuWiederholung_Click(root(), mode); }
};

} // namespace orvantine::fake
