#include "search/Dialogsuche.h"

#include "app/Root.h"
#include "playback/CoverPane.h"

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// The cover goes once, however often the display is switched on, and comes back only if it was there.
void hideCover(Root& root)
{
    if (!root.pCoverBack.Visible.value())
        return;
    root.pAnimations.Tag = u"1"_s;
    showCoverPane(root, false);
}

void returnCover(Root& root)
{
    if (root.pAnimations.Tag == u"1"_s && !root.pCovers.Picture.value().isEmpty())
        showCoverPane(root, true);
    root.pAnimations.Tag = QString();
}

} // namespace

void Dialogsuche(Root& root, bool on)
{
    // Required: the check says that the display is off.
    root.mnuSuchDialog.Checked = !on;
    root.tBeschreibung.Caption = on ? u"Audiodateien suchen"_s : u"Beschreibung der Playliste"_s;
    root.pAnimations.Visible = on;
    if (on) {
        root.pAnimation.play();
        hideCover(root);
    } else {
        root.pAnimation.stop();
        returnCover(root);
    }
}

} // namespace orvantine
