#include "desktop/qt/window/Balloons.h"

#include "desktop/qt/widgets/FlatButton.h"

#include <QApplication>
#include <QColor>
#include <QHelpEvent>
#include <QTimer>
#include <QToolTip>
#include <QWindow>

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString nameOf(Color color)
{
    const auto bgr = static_cast<quint32>(color);
    return QColor(static_cast<int>(bgr & 0xFF), static_cast<int>(bgr >> 8 & 0xFF), static_cast<int>(bgr >> 16 & 0xFF))
        .name();
}

QString signOf(TooltipsClass::TipIcon icon)
{
    switch (icon) {
    case TooltipsClass::TipIcon::None:
        break;
    case TooltipsClass::TipIcon::Info:
        return u"ℹ "_s;
    case TooltipsClass::TipIcon::Warning:
        return u"⚠ "_s;
    case TooltipsClass::TipIcon::Error:
        return u"✖ "_s;
    }
    return {};
}

QString wordOf(TooltipsClass::TipAlignment alignment)
{
    switch (alignment) {
    case TooltipsClass::TipAlignment::Left:
        break;
    case TooltipsClass::TipAlignment::Centre:
        return u"center"_s;
    case TooltipsClass::TipAlignment::Right:
        return u"right"_s;
    }
    return u"left"_s;
}

QWindow* shownTip()
{
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto tip = std::find_if(windows.begin(), windows.end(), [](const QWidget* window) {
        return window->isVisible() && window->inherits("QTipLabel");
    });
    return tip == windows.end() ? nullptr : (*tip)->windowHandle();
}

} // namespace

Balloons::Balloons(const TooltipsClass& tips, QWidget& window) : m_tips(tips)
{
    const QList<FlatButton*> buttons = window.findChildren<FlatButton*>();
    for (FlatButton* button : buttons)
        button->installEventFilter(this);
}

QString Balloons::content(const TooltipsClass& tips, const QString& text)
{
    const QString title = signOf(tips.Icon) + tips.Title;
    if (title.isEmpty() && !tips.ForeColor && !tips.BackColor && tips.Margin == 0 && tips.Width == 0 &&
        tips.Alignment == TooltipsClass::TipAlignment::Left)
        return text;
    QString style;
    if (tips.ForeColor)
        style += u"color:%1;"_s.arg(nameOf(*tips.ForeColor));
    const QString ground = tips.BackColor ? u" bgcolor=\"%1\""_s.arg(nameOf(*tips.BackColor)) : QString();
    const QString width = tips.Width > 0 ? u" width=\"%1\""_s.arg(tips.Width) : QString();
    const QString lines = text.toHtmlEscaped().replace(u'\n', u"<br>"_s);
    const QString head = title.isEmpty() ? QString() : u"<b>%1</b><br>"_s.arg(title.toHtmlEscaped());
    return u"<table cellspacing=\"0\" cellpadding=\"%1\"%2%3><tr><td align=\"%4\" style=\"%5\">%6%7</td></tr></table>"_s
        .arg(tips.Margin)
        .arg(ground, width, wordOf(tips.Alignment), style, head, lines);
}

bool Balloons::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QObject::eventFilter(watched, event);
    auto* const control = static_cast<QWidget*>(watched);
    if (m_tips.ShowMode == TooltipsClass::TipShowMode::Never)
        return true;
    const QPoint mouse = static_cast<QHelpEvent*>(event)->globalPos();
    const std::chrono::milliseconds rest = QToolTip::isVisible() ? m_tips.ReShow : m_tips.Show;
    if (rest.count() == 0) {
        show(*control, mouse);
        return true;
    }
    // On top of the time that the toolkit has waited already.
    QTimer::singleShot(rest, control, [this, control, mouse] {
        if (control->underMouse())
            show(*control, mouse);
    });
    return true;
}

void Balloons::show(const QWidget& control, const QPoint& mouse) const
{
    QPoint place = mouse;
    if (m_tips.CenteredTooltip)
        place = control.mapToGlobal(QPoint(control.width() / 2, control.height()));
    else if (m_tips.Baloon)
        place = control.mapToGlobal(QPoint(0, control.height()));
    const int shown = m_tips.AutoHide.count() > 0 ? static_cast<int>(m_tips.AutoHide.count()) : -1;
    QToolTip::showText(place, content(m_tips, control.toolTip()), const_cast<QWidget*>(&control), control.rect(),
                       shown);
    if (QWindow* const tip = shownTip())
        tip->setFlag(Qt::WindowTransparentForInput, m_tips.Transparent);
}

} // namespace orvantine
