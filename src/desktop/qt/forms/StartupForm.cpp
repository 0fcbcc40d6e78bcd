#include "desktop/qt/forms/Builders.h"
#include "desktop/qt/forms/FormWindow.h"
#include "desktop/qt/widgets/Emblem.h"
#include "shell/Startup.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QVBoxLayout>

#include <cmath>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr QSize PictureSize{520, 280};

/// The start picture: one drawing, its texts the form's.
class StartPicture final : public QWidget
{
public:
    StartPicture(const Startup& form, QWidget* parent) : QWidget(parent), m_form(form) { setFixedSize(PictureSize); }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        const QRectF area(rect());
        QLinearGradient ground(area.topLeft(), area.bottomRight());
        ground.setColorAt(0, QColor(0x1f6f9c));
        ground.setColorAt(0.55, QColor(0x184f77));
        ground.setColorAt(1, QColor(0x12293c));
        painter.fillRect(area, ground);
        drawGrooves(painter, area);
        drawWave(painter, area);

        drawEmblem(painter, QRectF(40, 62, 116, 116));
        painter.setPen(Qt::white);
        QFont face = font();
        face.setPointSizeF(21);
        face.setWeight(QFont::DemiBold);
        painter.setFont(face);
        painter.drawText(QRectF(180, 78, area.width() - 200, 44), Qt::AlignLeft | Qt::AlignVCenter,
                         m_form.RTitle.Caption.value());
        face.setPointSizeF(11);
        face.setWeight(QFont::Normal);
        painter.setFont(face);
        painter.setPen(QColor(255, 255, 255, 200));
        painter.drawText(QRectF(182, 124, area.width() - 200, 24), Qt::AlignLeft | Qt::AlignVCenter,
                         m_form.RVersion.Caption.value());
        face.setPointSizeF(9.5);
        painter.setFont(face);
        painter.setPen(QColor(255, 255, 255, 170));
        painter.drawText(QRectF(40, area.height() - 44, area.width() - 80, 24), Qt::AlignLeft | Qt::AlignVCenter,
                         m_form.RStatus.Caption.value());
    }

private:
    /// A large record that looks in from the right.
    static void drawGrooves(QPainter& painter, const QRectF& area)
    {
        const QPointF middle(area.right() - 30, area.bottom() + 30);
        painter.setBrush(Qt::NoBrush);
        for (int ring = 0; ring < 15; ++ring) {
            painter.setPen(QPen(QColor(255, 255, 255, ring % 4 == 0 ? 26 : 13), 1.2));
            const double radius = 60 + ring * 15;
            painter.drawEllipse(middle, radius, radius);
        }
    }

    static void drawWave(QPainter& painter, const QRectF& area)
    {
        painter.setPen(Qt::NoPen);
        const double base = area.height() - 62;
        for (int bar = 0; bar * 8 + 48 < area.width(); ++bar) {
            const double swell = std::sin(bar * 0.19) * std::sin(bar * 0.047 + 0.6);
            const double height = 3 + 17 * swell * swell * (0.6 + 0.4 * std::sin(bar * 1.7));
            painter.setBrush(QColor(255, 198, 92, 60 + static_cast<int>(90 * swell * swell)));
            painter.drawRoundedRect(QRectF(40 + bar * 8, base - height, 4, height), 2, 2);
        }
    }

    const Startup& m_form;
};

} // namespace

void buildStartup(FormWindow& window)
{
    auto& form = static_cast<Startup&>(window.form());
    // The list of windows and a screen reader name it, though it has no frame.
    window.setWindowTitle(form.RTitle.Caption.value());
    window.setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
    window.layout()->setContentsMargins(0, 0, 0, 0);
    window.layout()->setSpacing(0);
    window.layout()->setSizeConstraint(QLayout::SetFixedSize);
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    window.move(screen.center() - QPoint(PictureSize.width() / 2, PictureSize.height() / 2));
    auto* const picture = new StartPicture(form, &window);
    picture->setAccessibleName(form.RTitle.Caption.value());
    window.content().addWidget(picture);
    for (Label* text : {&form.RTitle, &form.RVersion, &form.RStatus})
        window.bindings().watch(text->Caption, [picture] { picture->update(); });
}

} // namespace orvantine
