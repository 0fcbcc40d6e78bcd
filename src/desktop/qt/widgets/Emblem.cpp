#include "desktop/qt/widgets/Emblem.h"

#include <QPainter>

namespace orvantine {

void drawEmblem(QPainter& painter, const QRectF& area)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(area.topLeft());
    painter.scale(area.width() / 256, area.height() / 256);
    painter.setPen(Qt::NoPen);

    QLinearGradient ground(0, 16, 0, 240);
    ground.setColorAt(0, QColor(0x2d9bc4));
    ground.setColorAt(1, QColor(0x1b5c86));
    painter.setBrush(ground);
    painter.drawRoundedRect(QRectF(16, 16, 224, 224), 48, 48);

    struct Line
    {
        double top, width, opacity;
    };
    painter.setBrush(Qt::white);
    for (const Line& line : {Line{48, 92, 1.0}, Line{96, 58, 0.88}, Line{144, 44, 0.76}, Line{192, 56, 0.64}}) {
        painter.setOpacity(line.opacity);
        painter.drawRoundedRect(QRectF(40, line.top, line.width, 16), 8, 8);
    }

    painter.setOpacity(0.55);
    painter.setBrush(QColor(0x0e3c5a));
    painter.drawEllipse(QPointF(172, 116), 62, 62);
    painter.setOpacity(1);
    painter.setBrush(QColor(0x14212b));
    painter.drawEllipse(QPointF(164, 152), 70, 70);

    painter.setOpacity(0.28);
    painter.setBrush(Qt::NoBrush);
    for (const double radius : {57.5, 42.5}) {
        painter.setPen(QPen(Qt::white, radius > 50 ? 5 : 4, Qt::SolidLine, Qt::RoundCap));
        const QRectF groove(164 - radius, 152 - radius, 2 * radius, 2 * radius);
        painter.drawArc(groove, 90 * 16, 50 * 16);
        painter.drawArc(groove, 270 * 16, 50 * 16);
    }

    painter.setOpacity(1);
    painter.setPen(Qt::NoPen);
    QLinearGradient label(135, 123, 193, 181);
    label.setColorAt(0, QColor(0xffc65c));
    label.setColorAt(1, QColor(0xf08a24));
    painter.setBrush(label);
    painter.drawEllipse(QPointF(164, 152), 29, 29);
    painter.setBrush(QColor(0x14212b));
    painter.drawEllipse(QPointF(164, 152), 7.5, 7.5);
    painter.restore();
}

QIcon emblemIcon()
{
    QIcon icon;
    for (const int side : {16, 22, 32, 48, 64}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        drawEmblem(painter, QRectF(0, 0, side, side));
        painter.end();
        icon.addPixmap(picture);
    }
    return icon;
}

Emblem::Emblem(int side, QWidget* parent) : QWidget(parent)
{
    setFixedSize(side, side);
}

void Emblem::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    drawEmblem(painter, QRectF(rect()));
}

} // namespace orvantine
