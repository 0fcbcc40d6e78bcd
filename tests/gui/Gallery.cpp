#include "app/DataFolder.h"
#include "app/Direkthilfe.h"
#include "desktop/qt/services/QtForms.h"
#include "desktop/qt/widgets/Theme.h"
#include "desktop/qt/window/MainWindow.h"
#include "gui/Sample.h"
#include "operations/Eigenschaften.h"
#include "operations/Positionen.h"
#include "search/ErrorListe.h"
#include "search/FindAudio.h"
#include "search/FolderCheck.h"
#include "search/Suchen.h"
#include "shell/Dialoge.h"
#include "shell/Info.h"
#include "shell/Optionen.h"
#include "shell/Startup.h"
#include "shell/Tastatur.h"
#include "support/FakeDesktop.h"
#include "transfer/Datenbank.h"
#include "transfer/Fassungen.h"
#include "transfer/FolderDialogs.h"
#include "transfer/Kopieren.h"
#include "transfer/Trackcopy.h"

#include <QApplication>
#include <QDir>
#include <QPalette>

using namespace orvantine;
using namespace Qt::StringLiterals;

namespace {

QPalette darkPalette()
{
    QPalette palette(QColor(0x2a2e32), QColor(0x2a2e32));
    const QColor text(0xfcfcfc);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText})
        palette.setColor(role, text);
    palette.setColor(QPalette::Base, QColor(0x1b1e20));
    palette.setColor(QPalette::AlternateBase, QColor(0x232629));
    palette.setColor(QPalette::ToolTipBase, QColor(0x31363b));
    palette.setColor(QPalette::Button, QColor(0x31363b));
    palette.setColor(QPalette::Highlight, QColor(0x3daee9));
    palette.setColor(QPalette::HighlightedText, text);
    palette.setColor(QPalette::Link, QColor(0x1d99f3));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(0x888e93));
    return palette;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const QString folder = arguments.value(1, u"."_s);
    const bool dark = arguments.contains(u"dark"_s);
    const QString suffix = (dark ? u"-dark"_s : u"-light"_s) + arguments.value(dark ? 3 : 2);
    if (dark)
        QApplication::setPalette(darkPalette());
    Theme::setUpIcons();

    const auto save = [&](QWidget& window, const QString& name) {
        QCoreApplication::processEvents();
        window.grab().save(QDir(folder).filePath(name + suffix + u".png"_s));
    };

    {
        fake::FakeDesktop desktop;
        Root& root = desktop.root();
        MainWindow window(root);
        desktop.memory()->put(u"/m/a.mp3"_s, "x");
        desktop.mediaplayer().setDuration(283);
        desktop.mediaplayer().setURL(u"/m/a.mp3"_s);
        desktop.mediaplayer().pretendPosition(97);
        fake::showSample(root);
        root.Visible = true;
        save(window, u"main"_s);
        desktop.mediaplayer().pretendPaused();
        root.playback = PlaybackStatus::Paused;
        root.LListView2.setPlaying(3, root.LListView2.subItem(2, 3), true);
        save(window, u"main-paused"_s);
        window.resize(window.minimumSize());
        save(window, u"main-least"_s);
        window.resize(1400, 860);
        save(window, u"main-large"_s);
        root.pVolume.Visible = false;
        for (Button* button : {&root.bMoveUp, &root.bMoveDown, &root.bEntryUp, &root.bEntryDown})
            button->Visible = true;
        root.pDatum.Visible = false;
        root.pAnimations.Visible = true;
        window.resize(860, 640);
        save(window, u"main-busy"_s);
    }
    {
        fake::FakeDesktop desktop;
        Root& root = desktop.root();
        MainWindow window(root);
        root.pHinweistext.Visible = true;
        root.Visible = true;
        save(window, u"main-empty"_s);
    }
    {
        fake::FakeDesktop desktop;
        Root& root = desktop.root();
        QtForms forms;
        const auto picture = [&](Form& form, const QString& name) {
            forms.show(form);
            QCoreApplication::processEvents();
            const QWidgetList windows = QApplication::topLevelWidgets();
            for (QWidget* window : windows)
                if (window->objectName() == form.name && window->isVisible())
                    save(*window, name);
        };
        picture(*root.startup, u"startup"_s);
        picture(*root.info, u"info"_s);
        picture(*root.dialoge, u"dialoge-1"_s);
        root.dialoge->page = 1;
        picture(*root.dialoge, u"dialoge-2"_s);
        root.dialoge->page = 2;
        root.dialoge->working = true;
        root.dialoge->progress.Caption = u"3 von 12: Nachtzug nach Lissabon"_s;
        picture(*root.dialoge, u"dialoge-3"_s);
        root.dialoge->working = false;
        root.dialoge->Label1.Visible = false;
        root.dialoge->Label2.Visible = false;
        root.dialoge->LFindDir.List = QStringList{u"Sommerabend (14)"_s, u"Nachtzug nach Lissabon (9)"_s};
        root.dialoge->progress.Caption = u"Hinzugefügt: 2 Wiedergabelisten mit 23 Sounddateien."_s;
        picture(*root.dialoge, u"dialoge-4"_s);
        picture(*root.optionen, u"optionen"_s);
        picture(*root.tastatur, u"tastatur"_s);
        root.direkthilfe->Caption = u"Orvanten Manager\rOrdner durchsuchen"_s;
        root.direkthilfe->RHelpID.Caption = u"113"_s;
        root.direkthilfe->RText.Caption =
            u"Der Befehl sucht in einem Ordner und drei Ebenen darunter nach Playlisten oder Sounddateien. Sie haken "
            u"an, was Sie übernehmen möchten.\n\nBis zum OK wird nur gelesen. Übernommene Listen stehen danach im "
            u"Katalog, übernommene Titel in der geöffneten Liste. Rückgängig: die neuen Einträge löschen."_s;
        picture(*root.direkthilfe, u"direkthilfe"_s);
        root.filesCopy->Load = [&root] {
            root.filesCopy->LTreeview.RootCaption = u"Arbeitsplatz"_s;
            root.filesCopy->LTreeview.SelectedFolder = u"/usr/share"_s;
        };
        picture(*root.filesCopy, u"filescopy"_s);
        fake::showSample(root);
        root.trackcopy->tTrackname.Caption = u"Nachtzug nach Lissabon - Abfahrt"_s;
        picture(*root.trackcopy, u"trackcopy"_s);
        fake::showSample(root);
        picture(*root.positionen, u"positionen"_s);
        Eigenschaften& properties = *root.eigenschaften;
        properties.tName.Caption = u"Sommerabend"_s;
        properties.tTracks.Caption = u"12 Tracks"_s;
        properties.tPlaylistname.Text = u"Sommerabend"_s;
        properties.tPlayliste.Text = u"/home/anna/Musik/Playlisten/Sommerabend.m3u"_s;
        properties.tBeschreibung.Text = u"Ruhiges für die Terrasse"_s;
        properties.tDatum.Text = u"21.06.2026"_s;
        properties.tAlbumCover.Text = u"/home/anna/.local/share/Orvanten Manager/Resource/Sommerabend.jpg"_s;
        picture(properties, u"eigenschaften"_s);
        FolderCheck& folders = *root.folderCheck;
        folders.Load = [&folders] {
            folders.tFolderOld.Text = u"/home/anna/Musik"_s;
            folders.tFolderNew.Text = u"/media/anna/Platte/Musik"_s;
            folders.LVorschau.Caption = u"1.240 Einträge würden sich ändern (in 17 Playlisten). "
                                        u"1.238 der neuen Dateien sind vorhanden."_s;
        };
        picture(folders, u"foldercheck"_s);
        root.datenbank->Load = [&root] {
            root.datenbank->tDatabase.Text = u"/home/anna/.local/share/Orvanten Manager/"_s;
        };
        picture(*root.datenbank, u"datenbank"_s);
        ErrorListe& faults = *root.errorListe;
        root.tDatenbank.Text = u"/home/anna/.local/share/Orvanten Manager/"_s;
        desktop.memory()->put(databaseFile(root), "[Index]\r\n1b=Sommerabend\r\n1c=/home/anna/Musik/Sommer.m3u\r\n"
                                                  "2b=Auf dem Dachboden\r\n2c=/media/anna/Platte/Dach.m3u\r\n");
        desktop.memory()->put(u"/home/anna/Musik/Sommer.m3u"_s,
                              "/home/anna/Musik/Nachtzug nach Lissabon.mp3\r\n/home/anna/Musik/Abfahrt.mp3\r\n");
        const auto load = faults.Load;
        faults.Load = [&faults, load] {
            load();
            faults.LErrorView.select(1);
            faults.LErrorView.Click();
        };
        picture(faults, u"errorliste"_s);
        const QString summer = u"/home/anna/.local/share/Orvanten Manager/Playlisten/Sommerabend.m3u"_s;
        desktop.memory()->put(summer, "/m/1.mp3\r\n/m/2.mp3\r\n/m/3.mp3\r\n/m/4.mp3\r\n");
        const auto keep = [&desktop](const QString& path, int hours, const QString& reason, const QByteArray& bytes) {
            const QDateTime when = QDateTime(QDate(2026, 11, 20), QTime(11, 42, 7)).addSecs(-3600 * hours);
            desktop.memory()->AllKept.prepend({path, when, reason, bytes});
        };
        desktop.memory()->AllKept.clear();
        keep(summer, 0, u"Sounddatei entfernen"_s, "/m/1.mp3\r\n/m/2.mp3\r\n/m/3.mp3\r\n/m/4.mp3\r\n/m/5.mp3\r\n");
        keep(summer, 3, u"Playliste sortieren: Namen sortieren"_s,
             "/m/4.mp3\r\n/m/2.mp3\r\n/m/3.mp3\r\n/m/1.mp3\r\n/m/5.mp3\r\n");
        keep(summer, 26, u"Frühere Fassungen"_s, "/m/1.mp3\r\n/m/2.mp3\r\n/m/3.mp3\r\n/m/4.mp3\r\n");
        keep(summer, 200, {}, "/m/2.mp3\r\n/m/9.mp3\r\n");
        keep(u"/media/anna/Stick/Nachtzug nach Lissabon.m3u"_s, 30, u"Löschen"_s, "/m/1.mp3\r\n");
        keep(u"/home/anna/.local/share/Orvanten Manager/Resource/Sommerabend.jpg"_s, 50, u"CD-Cover"_s, "x");
        keep(databaseFile(root), 51, u"Datenbank speichern"_s, "[Index]\r\n1b=Sommerabend\r\n");
        const auto loadVersions = root.fassungen->Load;
        root.fassungen->Load = [&desktop, loadVersions] {
            loadVersions();
            desktop.events().run(std::chrono::seconds{1});
        };
        picture(*root.fassungen, u"fassungen"_s);
        const QWidgetList all = QApplication::topLevelWidgets();
        for (QWidget* window : all)
            if (window->objectName() == root.fassungen->name && window->isVisible()) {
                window->resize(window->minimumSizeHint());
                save(*window, u"fassungen-least"_s);
            }
        forms.unload(*root.fassungen);
        Fassung& version = *root.fassung;
        version.LKopf.Caption = u"„Sommerabend“, Stand bis 20.11.2026 11:42:07: 2 Titel"_s;
        version.tInhalt.Text = u"    1  /home/anna/Musik/Nachtzug nach Lissabon/Abfahrt.mp3\n"
                               u"    2  /home/anna/Musik/Nachtzug nach Lissabon/Ankunft.mp3"_s;
        version.pBild.Visible = false;
        picture(version, u"fassung"_s);
        picture(*root.findAudio, u"findaudio"_s);
        FindAudio& finder = *root.findAudio;
        finder.TDrives.Text = u"/home/anna/Musik"_s;
        finder.LFindType.ListIndex = FindAudio::NamesAndFolders;
        QStringList found;
        for (int i = 1; i <= 40; ++i)
            found += u"/home/anna/Musik/Nachtzug nach Lissabon\tAbfahrt %1.mp3"_s.arg(i);
        finder.LFileList.Checked = QList<bool>(found.size(), true);
        finder.LFileList.List = found;
        finder.progress.Caption = u"40 Sounddateien in 12 Ordnern gefunden."_s;
        picture(finder, u"findaudio-found"_s);
        root.kopieren->Caption = u" Katalogisierung"_s;
        root.kopieren->Label2.Caption = u"Bitte warten Sie, bis die Indexerstellung vollständig abgeschlossen wurde."_s;
        picture(*root.kopieren, u"kopieren"_s);
        forms.unload(*root.kopieren);
        Kopieren& carrying = *root.kopieren;
        carrying.LDatei.Caption = u"Nachtzug nach Lissabon - Abfahrt.mp3"_s;
        carrying.LMenge.Caption = u"128,4 MB von 514,0 MB"_s;
        carrying.LTempo.Caption = u"4,2 MB/s, noch etwa 2 Minuten"_s;
        carrying.pFortschritt.Max = 1000;
        carrying.pFortschritt.Value = 250;
        for (Label* const label : {&carrying.LDatei, &carrying.LMenge, &carrying.LTempo})
            label->Visible = true;
        carrying.pFortschritt.Visible = true;
        picture(carrying, u"kopieren-dateien"_s);
        picture(*root.suchen, u"suchen"_s);
        root.suchen->Text1.Text = u"Nachtzug"_s;
        root.suchen->Text1.Change();
        root.suchen->progress.Caption = u"Durchsucht wird „Sommerabend“, noch 12 Playlisten."_s;
        picture(*root.suchen, u"suchen-busy"_s);
        forms.dropAll();
    }
    return 0;
}
