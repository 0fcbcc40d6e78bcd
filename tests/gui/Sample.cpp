#include "gui/Sample.h"

#include "app/Root.h"

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

void addPlaylist(Root& root, const QString& name, int tracks, const QString& icon, bool missing = false)
{
    ListView& list = root.LListView1;
    ListItem item;
    item.Text = u"%1"_s.arg(list.count() + 1, 3, 10, QChar(u'0'));
    item.SubItems = {
        {.Text = name}, {.Text = u"/home/anna/Playlisten/%1.m3u"_s.arg(name)}, {.Text = QString::number(tracks)}};
    const int row = list.append(item);
    list.setIcons(row, icon);
    if (missing)
        for (const int sub : {1, 3})
            list.setColor(row, sub, Color::DarkRed);
}

void addTrack(Root& root, const QString& name, bool missing = false)
{
    ListView& list = root.LListView2;
    const int number = list.count() + 1;
    ListItem item;
    item.Text = QString::number(number + 100);
    item.SubItems = {{.Text = u"%1"_s.arg(number, 2, 10, QChar(u'0'))},
                     {.Text = name},
                     {.Text = u"/home/anna/Musik/Sommerabend/%1.mp3"_s.arg(name)},
                     {.Text = name + u".mp3"_s}};
    const int row = list.append(item);
    list.setIcons(row, u"Icon_2"_s);
    if (missing)
        list.setColor(row, 3, Color::DarkRed);
}

} // namespace

void showSample(Root& root)
{
    addPlaylist(root, u"Sommerabend auf dem Balkon"_s, 18, u"Icon_C"_s);
    addPlaylist(root, u"Frühstück"_s, 24, u"Icon_6"_s);
    addPlaylist(root, u"Autobahn Süd"_s, 61, u"Icon_1"_s);
    addPlaylist(root, u"Alte Kassetten"_s, 9, u"Icon_1"_s, true);
    for (const QString& name : {u"Klavier leise"_s, u"Größte Erfolge"_s, u"Tanzfläche"_s, u"Straßenmusik"_s,
                                u"Hörspiele"_s, u"Regen"_s, u"Weihnachten"_s, u"Zum Arbeiten"_s})
        addPlaylist(root, name, 12, u"Icon_1"_s);

    root.LListView2.clearColumns();
    root.LListView2.addColumn(u"ID"_s, 0);
    root.LListView2.addColumn(u"Track"_s, 800);
    root.LListView2.addColumn(u"Name"_s, 3600);
    root.LListView2.addColumn(u"Path"_s, 2900);
    root.LListView2.addColumn(u"Datei"_s, 0);
    for (int i = 0; i < 3; ++i) {
        addTrack(root, u"Die Grillen - Übers Feld"_s);
        addTrack(root, u"Käthe Blum - Wenn der Abend kommt"_s);
        addTrack(root, u"Unbekannt - Verlorene Spur"_s, true);
        addTrack(root, u"Orchester der kleinen Straßen - Ein sehr langer Titel, der nicht in die Spalte passt"_s);
        addTrack(root, u"Trio Morgenrot - Halb sechs"_s);
        addTrack(root, u"Die Grillen - Glühwürmchen"_s);
    }

    root.LListView1.select(1);
    root.LListView2.select(2);
    root.nAnzeige.Caption = u"(12)"_s;
    root.tSoundzahl.Caption = u"(18)"_s;
    root.tPlaylisteinträge.Caption = u"Sommerabend auf dem Balkon"_s;
    root.tDatum.Caption = u"14.07.2026"_s;
    root.pDatum.Visible = true;
    root.LSoundCaption.Caption = u"Für lange Abende: ruhiger Anfang, in der Mitte etwas zum Mitsingen, am Ende Grillen "
                                 u"und Glühwürmchen. Zusammengestellt mit Käthe."_s;
    root.pCoverBack.BackColor = 0xEBEBEB;
    root.pCoverBack.Visible = true;
    root.sAnzeige[0].Caption = u"0:03:47"_s;
    root.sAnzeige[1].Caption = u"Wenn der Abend kommt"_s;
    root.sAnzeige[2].Caption = u"Käthe Blum"_s;
    root.sAnzeige[5].Caption = u"192 kBit (VBR)"_s;
    root.tDateiname.Caption = u"Käthe Blum - Wenn der Abend kommt"_s;
    root.pDateiname.Visible = true;
    root.pVolume.Visible = true;
    root.sVolume.Value = 5;
    root.pSoundPlayer.Enabled = false;
    root.pPausePlayer.Enabled = true;
    root.playback = PlaybackStatus::Playing;
    root.LListView2.setSubItem(2, 3, u"/home/anna/Musik/Käthe Blum/Wenn der Abend kommt.mp3"_s);
    root.LListView2.setPlaying(3, root.LListView2.subItem(2, 3));
}

} // namespace orvantine::fake
