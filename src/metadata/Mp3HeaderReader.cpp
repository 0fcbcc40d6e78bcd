#include "metadata/Mp3HeaderReader.h"

#include "app/Root.h"
#include "app/TextLimits.h"
#include "metadata/SelectedTrack.h"
#include "metadata/frmID3.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

/// Halves go to the even neighbour. A number that does not fit into 16 bits leaves the field as it is.
void setRounded(qint16& field, double number)
{
    using Limits = std::numeric_limits<qint16>;
    const double whole = std::nearbyint(number);
    if (whole >= Limits::min() && whole <= Limits::max())
        field = static_cast<qint16>(whole);
}

QString twoDigits(int number)
{
    return number < 0 ? u"-"_s + padded(-number, 2) : padded(number, 2);
}

} // namespace

void ReadMp3Header(Root& root)
{
    if (root.LListView2.selectedRow() > 0) {
        // With the record in the library's form, and back.
        Mp3Record record = narrow(root.mp3Record);
        root.services.tags.Mp3FileInfo(selectedTrackPath(root), record);
        root.mp3Record = widen(record);
    }
    const WideMp3Record& tag = root.mp3Record;

    root.sTitle.Caption = NullTrim(tag.title);
    root.sArtist.Caption = NullTrim(tag.artist);
    root.sAlbum.Caption = NullTrim(tag.album);
    root.sKommentar.Caption = NullTrim(tag.comment);
    root.sTrack.Caption = QString::number(tag.track);
    root.sJahr.Caption = NullTrim(tag.year);
    // An unknown rate is not shown.
    root.sBitrate.Caption = tag.bitRate > 0 ? QString::number(tag.bitRate) : QString();

    frmID3V1& form = *root.tagForm;
    form.ID3Titel.Text = NullTrim(tag.title);
    form.ID3Interpret.Text = NullTrim(tag.artist);
    form.ID3Album.Text = NullTrim(tag.album);
    form.ID3Kommentar.Text = NullTrim(tag.comment);
    form.ID3Track.Text = QString::number(tag.track);
    form.ID3Jahr.Text = NullTrim(tag.year);
    form.ID3Bitrate.Caption = QString::number(tag.bitRate);

    root.sAnzeige[0].Visible = true;
    root.sAnzeige[0].Caption = playingTimeText(tag.playingTime);
}

void WriteMp3Tag(Root& root)
{
    const frmID3V1& form = *root.tagForm;
    WideMp3Record& tag = root.mp3Record;
    const QString artist = form.ID3Interpret.Text;
    const QString album = form.ID3Album.Text;
    const QString title = form.ID3Titel.Text;
    const QString comment = form.ID3Kommentar.Text;
    const QString year = form.ID3Jahr.Text;
    const QString genre = form.ID3Genre.Text;
    const QString bitRate = form.ID3Bitrate.Caption;

    setText(tag, &WideMp3Record::artist, artist);
    setText(tag, &WideMp3Record::album, album);
    setText(tag, &WideMp3Record::title, title);
    setText(tag, &WideMp3Record::comment, comment);
    setText(tag, &WideMp3Record::year, year);
    setRounded(tag.genre, leadingNumber(genre));
    setRounded(tag.bitRate, leadingNumber(bitRate));

    setText(tag, &WideMp3Record::extendedArtist, artist);
    setText(tag, &WideMp3Record::extendedAlbum, album);
    setText(tag, &WideMp3Record::extendedTitle, title);
    setText(tag, &WideMp3Record::extendedYear, year);
    setText(tag, &WideMp3Record::extendedComment, comment);
    setText(tag, &WideMp3Record::extendedGenre, genre);
    setText(tag, &WideMp3Record::extendedBitRate, bitRate);

    const double track = leadingNumber(form.ID3Track.Text.value());
    const bool hasTrack = track > 0;
    tag.trackFlagA = hasTrack ? 2 : 1;
    tag.trackFlagB = tag.trackFlagA;
    setRounded(tag.track, hasTrack ? track : 0);
    setText(tag, &WideMp3Record::extendedTrack, QString::number(track == 0 ? 0.0 : track, 'g', 15));

    if (root.LListView2.selectedRow() == 0)
        return root.files.failWhole();
    root.CurrentMp3File = selectedTrackPath(root);
    Mp3Record record = narrow(tag);
    if (!root.services.tags.WriteID3V1(root.CurrentMp3File, record))
        root.files.failWhole();
    tag = widen(record);
}

QString NullTrim(const QString& text)
{
    const auto last = std::find_if(text.crbegin(), text.crend(), [](QChar c) { return c != u' '; });
    return text.left(last.base() - text.cbegin());
}

QString playingTimeText(int seconds)
{
    const int hours = seconds / 3600;
    const int minutes = (seconds - hours * 3600) / 60;
    const int rest = seconds - hours * 3600 - minutes * 60;
    const QString text = twoDigits(hours) + u':' + twoDigits(minutes) + u':' + twoDigits(rest);
    return text == u"00:00:-01"_s ? u"00:00:00"_s : text;
}

} // namespace orvantine
