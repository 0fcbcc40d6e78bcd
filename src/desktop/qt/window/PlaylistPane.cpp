#include "desktop/qt/window/PlaylistPane.h"

#include "app/Root.h"
#include "desktop/qt/widgets/FlatButton.h"
#include "desktop/qt/widgets/Labels.h"
#include "desktop/qt/widgets/ReportList.h"
#include "desktop/qt/widgets/Surfaces.h"
#include "desktop/qt/widgets/Theme.h"
#include "desktop/qt/window/CoverView.h"
#include "metadata/ShowTrackInfo.h"
#include "platform/FileDirPath.h"
#include "playback/CoverArt.h"
#include "playback/CoverPane.h"

#include <QContextMenuEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr int HeadHeight = 30;
constexpr int DescriptionLines = 5;

/// A picture box that holds other controls: it is seen while the control is.
QWidget* makePanel(PictureBox& control, Bindings& bindings, QWidget* parent)
{
    auto* const panel = new QWidget(parent);
    panel->setObjectName(control.fullName());
    bindings.follow(control.Visible, [panel](bool visible) { panel->setVisible(visible); });
    return panel;
}

/// The unit of a bit rate that is told as a bare number.
QWidget* makeUnit(Label& rate, Bindings& bindings, QWidget* parent)
{
    auto* const unit = new TextLabel(TextLabel::Weight::Dim, parent);
    unit->setText(u"kBit/s"_s);
    unit->setWhole(true);
    const auto show = [unit, &rate] {
        bool number = false;
        rate.Caption.value().toInt(&number);
        unit->setVisible(number && rate.Visible.value());
    };
    bindings.watch(rate.Caption, show);
    bindings.watch(rate.Visible, show);
    show();
    return unit;
}

/// Why no tracks are shown and what can be done; "" while they are read.
QString absenceOf(const Root& root)
{
    const QString path = root.trackList.path();
    if (path.isEmpty() || root.trackList.content() == TrackList::Content::Reading)
        return {};
    const QString name = FileDirPath::FileNameOf(path);
    if (!root.files.exists(path))
        return u"Die Datei „%1“ ist nicht da.\nEin Klick auf die Wiedergabeliste sucht sie noch einmal; „Löschen“ im "
               u"Menü „Vorgänge“ nimmt den Eintrag aus der Orvante."_s.arg(name);
    return u"„%1“ enthält keine Titel.\n„Sounddateien ...“ im Menü „Vorgänge“, „Hinzufügen“ nimmt welche auf."_s.arg(
        name);
}

} // namespace

PlaylistPane::PlaylistPane(Root& root, QWidget* parent) : QWidget(parent), m_root(root), m_popup(this)
{
    m_list = new ReportList(root.LListView2, this);
    m_list->setAccessibleName(u"Einträge in der Playliste"_s);
    m_list->PopUp = [this](const QPoint& point) {
        // The row was selected without a click.
        showSelectedTrack(m_root);
        if (!m_root.services.events.ended())
            m_popup.exec(point);
    };
    m_menus.fill(m_popup, trackPopup(root));

    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(Theme::Gap, Theme::Gap, Theme::Margin, Theme::Margin);
    layout->setSpacing(Theme::Gap);
    layout->addWidget(makeHead());
    layout->addWidget(m_frame = makeInformation());
    layout->addWidget(makeStaleNote());
    layout->addWidget(m_list, 1);
    layout->addWidget(makeAbsence(), 1);
    layout->addWidget(makeTrackStrip());
}

QWidget* PlaylistPane::makeHead()
{
    auto* const head = new QWidget(this);
    auto* const layout = new QHBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(Theme::Gap);
    layout->addWidget(new ControlLabel(m_root.tPlaylisteinträge, TextLabel::Weight::Heading, head));
    auto* const count = new ControlLabel(m_root.tSoundzahl, TextLabel::Weight::Dim, head);
    count->setWhole(true);
    layout->addWidget(count);
    layout->addStretch();

    QWidget* const date = makePanel(m_root.pDatum, m_bindings, head);
    auto* const dateLayout = new QHBoxLayout(date);
    dateLayout->setContentsMargins(0, 0, 0, 0);
    auto* const day = new ControlLabel(m_root.tDatum, TextLabel::Weight::Dim, date);
    day->setWhole(true);
    dateLayout->addWidget(day);
    layout->addWidget(date);

    layout->addWidget(new ControlButton(m_root.bEntryUp, 28, u"Track nach oben verschieben"_s, u"go-up"_s, head));
    layout->addWidget(new ControlButton(m_root.bEntryDown, 28, u"Track nach unten verschieben"_s, u"go-down"_s, head));
    layout->addStrut(HeadHeight);
    return head;
}

QWidget* PlaylistPane::makeInformation()
{
    auto* const frame = new Card(this);
    frame->setObjectName(m_root.xpFrame1.fullName());

    auto* const title = new ControlLabel(m_root.tBeschreibung, TextLabel::Weight::Dim, frame);
    auto* const edit = new ControlButton(m_root.pTrayicon, FlatButton::Form::Flat, 24, u"Beschriftung bearbeiten"_s,
                                         u"document-edit"_s, frame);
    auto* const text = new ControlLabel(m_root.LSoundCaption, TextLabel::Weight::Normal, frame);
    text->setLines(DescriptionLines);
    text->setAlignment(Qt::AlignLeft | Qt::AlignTop);

    auto* const titleRow = new QHBoxLayout;
    titleRow->setSpacing(Theme::Gap);
    titleRow->addWidget(title);
    titleRow->addWidget(edit);
    titleRow->addStretch();

    auto* const texts = new QVBoxLayout;
    texts->setSpacing(2);
    texts->addLayout(titleRow);
    texts->addWidget(text);
    texts->addStretch();

    auto* const layout = new QHBoxLayout(frame);
    layout->setContentsMargins(Theme::Margin, Theme::Gap, Theme::Gap, Theme::Gap);
    layout->setSpacing(Theme::Margin);
    layout->addLayout(texts, 1);
    const int side = pixelsOf(m_root.pCoverBack.Width.value());
    layout->addWidget(new CoverView(m_root, side, frame), 0, Qt::AlignTop);
    // The list below stays in its place while covers come and go.
    frame->setMinimumHeight(side + 2 * Theme::Gap);
    return frame;
}

/// Rows of the list before are shown, and no more.
QWidget* PlaylistPane::makeStaleNote()
{
    auto* const note = new TextLabel(TextLabel::Weight::Normal, this);
    note->setObjectName(u"staleNote"_s);
    note->setLines(2);
    m_bindings.follow(m_root.LListView2.Ghosted, [this, note](bool stale) {
        note->setText(m_root.trackList.showsListBefore()
                          ? u"Diese Titel gehören zur vorherigen Liste und werden nicht gespeichert."_s
                          : u"Die Liste wird nicht vollständig gezeigt; diese Titel werden nicht gespeichert."_s);
        note->setVisible(stale);
    });
    return note;
}

/// Stands in the place of the tracks while there are none to show.
QWidget* PlaylistPane::makeAbsence()
{
    auto* const note = new TextLabel(TextLabel::Weight::Dim, this);
    note->setObjectName(u"absenceNote"_s);
    note->setAlignment(Qt::AlignCenter);
    note->setLines(4);
    note->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
    const auto show = [this, note] {
        const QString text = m_root.LListView2.Visible.value() ? QString() : absenceOf(m_root);
        note->setText(text);
        note->setVisible(!text.isEmpty());
    };
    m_bindings.watch(m_root.LListView2.Visible, show);
    m_bindings.watch(m_root.trackList.watchedContent(), show);
    show();
    return note;
}

QWidget* PlaylistPane::makeTrackStrip()
{
    auto* const strip = new QWidget(this);
    auto* const titleWord = new ControlLabel(m_root.sAnzeige[3], TextLabel::Weight::Dim, strip);
    auto* const title = new ControlLabel(m_root.sAnzeige[1], TextLabel::Weight::Normal, strip);
    auto* const artistWord = new ControlLabel(m_root.sAnzeige[4], TextLabel::Weight::Dim, strip);
    auto* const artist = new ControlLabel(m_root.sAnzeige[2], TextLabel::Weight::Normal, strip);
    auto* const rate = new ControlLabel(m_root.sAnzeige[5], TextLabel::Weight::Dim, strip);
    auto* const time = new ControlLabel(m_root.sAnzeige[0], TextLabel::Weight::Dim, strip);
    for (ControlLabel* right : {rate, time})
        right->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    for (ControlLabel* whole : {titleWord, artistWord, rate, time})
        whole->setWhole(true);
    auto* const mpeg = new Badge(u"MP3"_s, strip);
    mpeg->setObjectName(m_root.pMpeg.fullName());
    mpeg->DoubleClicked = [this] {
        if (m_root.pMpeg.DblClick)
            m_root.pMpeg.DblClick();
    };
    const auto showBadge = [this, mpeg] {
        mpeg->setVisible(m_root.pMpeg.Visible.value() && m_root.LListView2.selectedRow() > 0);
    };
    m_bindings.watch(m_root.pMpeg.Visible, showBadge);
    m_bindings.watch(m_root.LListView2.selection(), showBadge);
    showBadge();

    auto* const layout = new QGridLayout(strip);
    layout->setContentsMargins(2, 0, 2, 0);
    layout->setHorizontalSpacing(Theme::Margin);
    layout->setVerticalSpacing(2);
    const int line = QFontMetrics(font()).lineSpacing() + 2;
    layout->setRowMinimumHeight(0, line);
    layout->setRowMinimumHeight(1, line);
    layout->addWidget(titleWord, 0, 0);
    layout->addWidget(title, 0, 1);
    layout->addWidget(artistWord, 1, 0);
    layout->addWidget(artist, 1, 1);
    layout->addWidget(mpeg, 0, 3, 2, 1, Qt::AlignVCenter);
    // Rate and time of no track would be noughts.
    auto* const facts = new QWidget(strip);
    auto* const columns = new QGridLayout(facts);
    columns->setContentsMargins(0, 0, 0, 0);
    columns->setHorizontalSpacing(Theme::Margin);
    columns->setVerticalSpacing(2);
    columns->addWidget(rate, 0, 0);
    columns->addWidget(makeUnit(m_root.sAnzeige[5], m_bindings, facts), 0, 1);
    columns->addWidget(time, 1, 0, 1, 2);
    layout->addWidget(facts, 0, 2, 2, 1);
    m_bindings.follow(m_root.LListView2.selection(), [facts](int row) { facts->setVisible(row > 0); });
    layout->setColumnStretch(1, 1);
    return strip;
}

void PlaylistPane::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const Twips width = twipsOf(m_frame->width());
    if (m_root.xpFrame1.Width.value() == width)
        return;
    m_root.xpFrame1.Width = width;
    fitDescription(m_root);
}

} // namespace orvantine
