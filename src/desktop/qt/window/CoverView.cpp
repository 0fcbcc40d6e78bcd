#include "desktop/qt/window/CoverView.h"

#include "app/Root.h"
#include "desktop/qt/widgets/CoverPicture.h"
#include "desktop/qt/widgets/Theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace orvantine {

using namespace Qt::StringLiterals;

CoverView::CoverView(Root& root, int side, QWidget* parent) : QAbstractButton(parent), m_root(root), m_side(side)
{
    setObjectName(root.pCovers.fullName());
    setAccessibleName(u"CD-Cover"_s);
    setToolTip(u"CD-Cover: klicken, um ein Bild auszuwählen;\nmit der rechten Maustaste löschen."_s);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_bindings.follow(root.pCovers.Picture, [this](const QString& path) { load(path); });
    m_bindings.follow(root.pCoverBack.Visible, [this](bool visible) { setVisible(visible); });
    connect(this, &QAbstractButton::clicked, this, [&root] {
        if (root.pCovers.Click)
            root.pCovers.Click();
    });
    m_bindings.watch(root.pCoverBack.BackColor, [this] { update(); });
}

void CoverView::load(const QString& path)
{
    const qint64 size = path.isEmpty() ? 0 : m_root.files.size(path).value_or(0);
    m_picture = size > 0 && size <= LargestCoverFile ? coverPicture(m_root.files.readBytes(path).bytes) : QImage();
    m_scaled = QPixmap();
    setAccessibleDescription(m_picture.isNull() ? u"Kein Bild"_s : u"Bild der Playliste"_s);
    update();
}

void CoverView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath frame;
    frame.addRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Theme::CornerRadius, Theme::CornerRadius);
    const quint32 told = m_root.pCoverBack.BackColor.value();
    const bool dark = Theme::isDark(palette());
    const QColor ground =
        dark || told == 0 ? Theme::mix(palette().color(QPalette::Window), palette().color(QPalette::WindowText), 0.10)
                          : Theme::textColor(static_cast<Color>(told), palette());
    painter.fillPath(frame, ground);

    if (m_picture.isNull()) {
        const int side = height() / 2;
        QRect place(0, 0, side, side);
        place.moveCenter(rect().center());
        Theme::icon(u"media-optical-audio"_s).paint(&painter, place, Qt::AlignCenter, QIcon::Disabled);
    } else {
        // That of what is painted on, which is not always the screen.
        const double ratio = painter.deviceTransform().m11();
        if (m_scaled.isNull() || m_scaled.devicePixelRatio() != ratio) {
            const QSize shape = m_picture.size().scaled(size() * ratio, Qt::KeepAspectRatio).expandedTo({1, 1});
            m_scaled = QPixmap::fromImage(m_picture.scaled(shape, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
            m_scaled.setDevicePixelRatio(ratio);
        }
        const QSizeF shown = m_scaled.deviceIndependentSize();
        painter.setClipPath(frame);
        painter.drawPixmap(QPointF((width() - shown.width()) / 2, (height() - shown.height()) / 2), m_scaled);
        painter.setClipping(false);
    }
    painter.setPen(hasFocus() ? QPen(palette().color(QPalette::Highlight), 2) : QPen(Theme::lineColor(palette()), 1));
    painter.drawPath(frame);
}

void CoverView::mousePressEvent(QMouseEvent* event)
{
    QAbstractButton::mousePressEvent(event);
    const bool right = event->button() == Qt::RightButton;
    if (m_root.pCovers.MouseDown && (right || event->button() == Qt::LeftButton))
        m_root.pCovers.MouseDown(right ? MouseButton::Right : MouseButton::Left);
}

void CoverView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete && m_root.pCovers.MouseDown)
        m_root.pCovers.MouseDown(MouseButton::Right);
    else
        QAbstractButton::keyPressEvent(event);
}

} // namespace orvantine
