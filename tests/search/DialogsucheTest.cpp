#include "search/Dialogsuche.h"

#include "playback/CoverArt.h"
#include "playback/CoverPane.h"
#include "playback/PlaybackWorld.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

/// The list "Erste" is open; it has a cover, which is shown.
class SearchDisplay : public PlaybackWorld
{
protected:
    void startWithCover()
    {
        startPlayback();
        root().pCovers.Picture = data() + u"Resource/Erste.jpg"_s;
        showCoverPane(root(), true);
    }
    [[nodiscard]] std::string state()
    {
        const auto word = [](bool on) { return on ? "on" : "off"; };
        return std::string("check ") + word(root().mnuSuchDialog.Checked.value()) + ", panel " +
               word(root().pAnimations.Visible.value()) + ", animation " + word(root().pAnimation.Running.value()) +
               ", cover " + word(root().pCoverBack.Visible.value()) + ", " +
               root().tBeschreibung.Caption.value().toStdString();
    }
};

} // namespace

TEST_F(SearchDisplay, OnShowsTheAnimationInPlaceOfTheCover)
{
    startWithCover();
    Dialogsuche(root(), true);
    EXPECT_EQ("check off, panel on, animation on, cover off, Audiodateien suchen", state());
}

TEST_F(SearchDisplay, OffBringsTheCoverBack)
{
    startWithCover();
    const Twips narrow = root().LSoundCaption.Width.value();
    Dialogsuche(root(), true);
    EXPECT_GT(root().LSoundCaption.Width.value(), narrow);
    Dialogsuche(root(), true);
    Dialogsuche(root(), false);
    EXPECT_EQ("check on, panel off, animation off, cover on, Beschreibung der Playliste", state());
    EXPECT_EQ(narrow, root().LSoundCaption.Width.value());
}

TEST_F(SearchDisplay, OffShowsNoCoverThatWasNotThere)
{
    startWithCover();
    showCoverPane(root(), false);
    Dialogsuche(root(), true);
    Dialogsuche(root(), false);
    EXPECT_EQ("check on, panel off, animation off, cover off, Beschreibung der Playliste", state());
}

TEST_F(SearchDisplay, OffShowsNoPaneForAListWithoutCover)
{
    startWithCover();
    Dialogsuche(root(), true);
    root().pCovers.Picture = QString();
    Dialogsuche(root(), false);
    EXPECT_FALSE(root().pCoverBack.Visible.value());
}

} // namespace orvantine::fake
