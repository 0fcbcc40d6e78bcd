#pragma once

#include "app/TooltipsClass.h"

#include <QObject>

class QPoint;
class QWidget;

namespace orvantine {

/// Shows the tips of a window's controls as TooltipsClass tells: text, colours, place and time. Other tips stay those
/// of the toolkit.
class Balloons final : public QObject
{
public:
    Balloons(const TooltipsClass& tips, QWidget& window);

    /// What the tip shows, as rich text where anything is told of it that plain text does not show.
    [[nodiscard]] static QString content(const TooltipsClass& tips, const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void show(const QWidget& control, const QPoint& mouse) const;

    const TooltipsClass& m_tips;
};

} // namespace orvantine
