#include "desktop/qt/widgets/Labels.h"

#include "desktop/qt/widgets/Theme.h"

#include <QEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

struct Lines
{
    QStringList texts;
    bool complete = true;
};

/// The lines of a wrapped text that fit, the last one with an ellipsis if there were more.
Lines wrapped(const QString& text, const QFont& font, int width, int most)
{
    Lines lines;
    QString shown = text;
    shown.replace(u'\n', QChar::LineSeparator);
    QTextLayout layout(shown, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        const QString rest = shown.mid(line.textStart());
        if (lines.texts.size() + 1 == most && line.textLength() < rest.size()) {
            QString last = rest;
            last.replace(QChar::LineSeparator, u' ');
            lines.texts.append(QFontMetrics(font).elidedText(last, Qt::ElideRight, width));
            lines.complete = false;
            break;
        }
        lines.texts.append(shown.mid(line.textStart(), line.textLength()).remove(QChar::LineSeparator));
    }
    layout.endLayout();
    return lines;
}

} // namespace

TextLabel::TextLabel(Weight weight, QWidget* parent) : QLabel(parent), m_weight(weight)
{
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    applyWeight();
}

void TextLabel::setLines(int lines)
{
    m_lines = lines;
    updateGeometry();
}

void TextLabel::setWhole(bool whole)
{
    m_whole = whole;
    updateGeometry();
}

void TextLabel::setTip(const QString& tip)
{
    m_tip = tip;
    setToolTip(tip);
}

QSize TextLabel::sizeHint() const
{
    const QFontMetrics metrics(font());
    const int height = metrics.lineSpacing() * m_lines + 2;
    return {m_lines > 1 ? 40 : metrics.horizontalAdvance(text()) + 2, height};
}

QSize TextLabel::minimumSizeHint() const
{
    const QSize wished = sizeHint();
    return {m_whole ? wished.width() : std::min(wished.width(), 24), wished.height()};
}

void TextLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QRect area = contentsRect();
    if (m_color != Color::ButtonText)
        painter.setPen(Theme::textColor(m_color, palette()));
    else
        painter.setPen(m_weight == Weight::Dim ? Theme::dimText(palette()) : palette().color(QPalette::WindowText));

    const QFontMetrics metrics(font());
    Lines lines;
    if (m_lines > 1) {
        lines = wrapped(text(), font(), area.width(), std::max(1, area.height() / metrics.lineSpacing()));
    } else {
        const QString line = QString(text()).replace(u'\n', u' ');
        lines.texts.append(metrics.elidedText(line, Qt::ElideRight, area.width()));
        lines.complete = lines.texts.front() == line;
    }

    const int height = metrics.lineSpacing() * static_cast<int>(lines.texts.size());
    int top = area.top();
    if (alignment().testFlag(Qt::AlignVCenter))
        top += std::max(0, (area.height() - height) / 2);
    for (const QString& line : lines.texts) {
        const QRect place(area.left(), top, area.width(), metrics.lineSpacing());
        painter.drawText(place, static_cast<int>(alignment() & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter, line);
        top += metrics.lineSpacing();
    }

    const QString tip = lines.complete ? m_tip : text();
    if (toolTip() != tip)
        setToolTip(tip);
}

void TextLabel::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && m_doubleClicked)
        m_doubleClicked();
    else
        QLabel::mouseDoubleClickEvent(event);
}

void TextLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::ApplicationFontChange)
        applyWeight();
}

void TextLabel::applyWeight()
{
    if (m_weight != Weight::Heading)
        return;
    QFont heading = parentWidget() != nullptr ? parentWidget()->font() : QFont();
    heading.setBold(true);
    if (heading.pointSizeF() > 0)
        heading.setPointSizeF(heading.pointSizeF() * 1.12);
    setFont(heading);
}

ControlLabel::ControlLabel(Label& control, Weight weight, QWidget* parent) : TextLabel(weight, parent)
{
    setObjectName(control.fullName());
    m_doubleClicked = [&control] {
        if (control.DblClick)
            control.DblClick();
    };
    m_bindings.follow(control.Caption, [this](const QString& caption) {
        setText(caption);
        updateGeometry();
    });
    m_bindings.follow(control.ForeColor, [this](Color color) {
        m_color = color;
        update();
    });
    m_bindings.follow(control.Visible, [this](bool visible) { setVisible(visible); });
    m_bindings.follow(control.Enabled, [this](bool enabled) { setEnabled(enabled); });
    m_bindings.follow(control.ToolTipText, [this](const QString& tip) { setTip(tip); });
}

} // namespace orvantine
