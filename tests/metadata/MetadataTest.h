#pragma once

#include "metadata/frmID3.h"
#include "search/Suchen.h"
#include "support/DesktopTest.h"

#include <QRegularExpression>

namespace orvantine::fake {

/// A program that has come up, with tracks that the tag library can read.
class MetadataTest : public DesktopTest
{
protected:
    MetadataTest()
    {
        start();
        m_started = desktop.log.lines().size();
    }

    [[nodiscard]] static QString music(const QString& name) { return QStringLiteral("/music/") + name; }
    /// A row of the open list with its file on the disk.
    void addTrack(const QString& name, const FakeTrack& track)
    {
        put(music(name), "sound");
        desktop.tags.tracks[music(name)] = track;
        addRow(music(name));
    }
    void addRow(const QString& path, const QString& shown = QStringLiteral("Name"))
    {
        tracks().append({.Text = QString::number(tracks().count() + 1),
                         .SubItems = {{.Text = {}}, {.Text = shown}, {.Text = path}, {.Text = {}}}});
        tracks().select(tracks().count());
    }
    /// Artist, title, album, comment, year, track, bit rate and time, as the window shows them.
    [[nodiscard]] std::string labels()
    {
        Root& r = root();
        return lines({r.sArtist.Caption.value(), r.sTitle.Caption.value(), r.sAlbum.Caption.value(),
                      r.sKommentar.Caption.value(), r.sJahr.Caption.value(), r.sTrack.Caption.value(),
                      r.sBitrate.Caption.value(), r.sAnzeige[0].Caption.value()});
    }
    [[nodiscard]] QString name(int row) { return tracks().subItem(row, 2); }
    [[nodiscard]] QString stored(const QString& path)
    {
        return desktop.profiles().value(data() + QStringLiteral("Orvantine.dat"), QStringLiteral("TagInfo"), path);
    }
    /// The library's calls since the program has come up.
    [[nodiscard]] QStringList libraryCalls() const
    {
        return desktop.log.lines().mid(m_started).filter(QRegularExpression(QStringLiteral("^tags\\.")));
    }
    [[nodiscard]] int reads() const { return static_cast<int>(libraryCalls().size()); }

private:
    qsizetype m_started = 0;
};

} // namespace orvantine::fake
