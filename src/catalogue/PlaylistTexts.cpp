#include "catalogue/PlaylistTexts.h"

#include "app/Root.h"

namespace orvantine {

using namespace Qt::StringLiterals;

QString playlistFilter()
{
    return u"Mp3-Wiedergabeliste|*.m3u; *.pls; *.nml|Mp3 Playliste|*.m3u|Winamp Wiedergabeliste|*.pls|Traktor "
           u"Playliste|*.nml|Alle Dateitypen|*.*"_s;
}

QString addTracksHint()
{
    return u"Wenn Sie der aktuellen Wiedergabeliste weitere Audiodateien hinzufügen möchten, ziehen Sie die Datei(en) "
           u"einfach in die Tabelle mit den Sounddateien."_s;
}

bool isHint(const QString& text)
{
    return isSameHint(text, addTracksHint());
}

bool isSameHint(const QString& text, const QString& hint)
{
    constexpr qsizetype Compared = 38;
    return text.left(Compared) == hint.left(Compared);
}

void showHintForDescription(Root& root)
{
    root.LSoundCaption.Caption = addTracksHint();
    root.LSoundCaption.Tag = u"0"_s;
}

} // namespace orvantine
