#pragma once

#include <QIcon>
#include <QRectF>
#include <QWidget>

namespace orvantine {

/// The program's sign, a list with two records on it, drawn to any size.
void drawEmblem(QPainter& painter, const QRectF& area);

/// The sign as an icon of the window and the notification area.
[[nodiscard]] QIcon emblemIcon();

class Emblem final : public QWidget
{
public:
    Emblem(int side, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace orvantine
