#include "operations/ListKeys.h"

#include "app/Root.h"

#include <span>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

struct KeyAction
{
    QStringView word;
    int code;
    void (*act)(Root& root);
};

/// Only a single shift key has a word; several at once count as none.
QStringView wordOf(int shift)
{
    switch (shift) {
    case 1:
        return u"UMSCHALT";
    case 2:
        return u"STRG";
    case 4:
        return u"ALT";
    default:
        return {};
    }
}

void forward(Root& root)
{
    root.services.mediaplayer.fastForward();
    root.services.mediaplayer.play();
}

void reverse(Root& root)
{
    root.services.mediaplayer.fastReverse();
    root.services.mediaplayer.play();
}

void next(Root& root)
{
    root.services.mediaplayer.next();
}

void previous(Root& root)
{
    root.services.mediaplayer.previous();
}

void pauseOrResume(Root& root)
{
    if (root.pPausePlayer.Enabled.value())
        root.pPausePlayer.Click();
}

void properties(Root& root)
{
    root.mnuEigenschaften.press();
}

void playUnlessPaused(Root& root)
{
    if (root.services.mediaplayer.status() != u"Angehalten"_s)
        root.pSoundPlayer.Click();
}

void play(Root& root)
{
    root.pSoundPlayer.Click();
}

void quit(Root& root)
{
    root.mnuBeenden.press();
}

void entryUp(Root& root)
{
    root.mnuMoveEntry[1].press();
}

void entryDown(Root& root)
{
    root.mnuMoveEntry[2].press();
}

void playlistUp(Root& root)
{
    root.mnuVerschiebung[1].press();
}

void playlistDown(Root& root)
{
    root.mnuVerschiebung[2].press();
}

void doubleClick(ListView& list)
{
    if (list.selectedRow() > 0 && list.DblClick)
        list.DblClick();
}

void playPlaylist(Root& root)
{
    doubleClick(root.LListView1);
}

void playTrack(Root& root)
{
    doubleClick(root.LListView2);
}

constexpr KeyAction BothLists[] = {
    {u"ALT", 39, forward},       {u"ALT", 37, reverse},          {u"ALT", 40, next},     {u"ALT", 38, previous},
    {u"ALT", 32, pauseOrResume}, {u"ALT", 96, pauseOrResume},    {u"ALT", 33, previous}, {u"ALT", 34, next},
    {u"ALT", 13, properties},    {u"ALT", 36, playUnlessPaused}, {u"ALT", 35, play},     {u"ALT", 81, quit},
};

constexpr KeyAction TracksOnly[] = {
    {u"UMSCHALT", 226, entryUp},
    {u"STRG", 33, entryUp},
    {u"STRG", 34, entryDown},
    {{}, 13, playTrack},
};

constexpr KeyAction CatalogueOnly[] = {
    {u"STRG", 33, playlistUp},
    {u"STRG", 34, playlistDown},
    {{}, 13, playPlaylist},
};

bool run(Root& root, std::span<const KeyAction> actions, QStringView word, int code)
{
    bool used = false;
    for (const KeyAction& action : actions) {
        if (action.code != code || action.word != word)
            continue;
        action.act(root);
        used = true;
    }
    return used;
}

bool pressed(Root& root, std::span<const KeyAction> own, int shift, int code)
{
    const QStringView word = wordOf(shift);
    const bool shared = run(root, BothLists, word, code);
    return run(root, own, word, code) || shared;
}

} // namespace

bool LListView1_KeyDown(Root& root, int shift, int keyCode)
{
    return pressed(root, CatalogueOnly, shift, keyCode);
}

bool LListView2_KeyDown(Root& root, int shift, int keyCode)
{
    return pressed(root, TracksOnly, shift, keyCode);
}

} // namespace orvantine
