#pragma once

#include <QObject>
#include <QString>

namespace orvantine {

/// The text for a tip, which the toolkit would take for markup where it looks like that: what comes from files must
/// neither load pictures nor change its looks.
[[nodiscard]] QString plainTip(const QString& text);

/// While one lives, every tip of a widget or an item is shown as it stands.
class PlainTips : public QObject
{
public:
    PlainTips();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace orvantine
