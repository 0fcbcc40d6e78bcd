#include "desktop/qt/widgets/PlainTips.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QTextDocument>
#include <QToolTip>
#include <QWidget>

namespace orvantine {

namespace {

/// Of the widget, or of the item of a view that lies there.
QString tipAt(const QWidget& widget, const QPoint& place)
{
    const auto* const view = qobject_cast<const QAbstractItemView*>(widget.parentWidget());
    if (view != nullptr && view->viewport() == &widget)
        return view->indexAt(place).data(Qt::ToolTipRole).toString();
    return widget.toolTip();
}

} // namespace

QString plainTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpaceNormal) : text;
}

PlainTips::PlainTips()
{
    qApp->installEventFilter(this);
}

bool PlainTips::eventFilter(QObject* watched, QEvent* event)
{
    auto* const widget = event->type() == QEvent::ToolTip ? qobject_cast<QWidget*>(watched) : nullptr;
    if (widget == nullptr)
        return QObject::eventFilter(watched, event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    const QString tip = tipAt(*widget, help->pos());
    if (!Qt::mightBeRichText(tip))
        return QObject::eventFilter(watched, event);
    QToolTip::showText(help->globalPos(), plainTip(tip), widget);
    return true;
}

} // namespace orvantine
