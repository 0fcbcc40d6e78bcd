#pragma once

#include "platform/Bindings.h"

#include <QAbstractButton>
#include <QPixmap>

namespace orvantine {

struct Root;

/// The cover panel: pCoverBack with pCovers in it. A click chooses a cover, the right button removes it.
class CoverView final : public QAbstractButton
{
public:
    CoverView(Root& root, int side, QWidget* parent);

    [[nodiscard]] QSize sizeHint() const override { return {m_side, m_side}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void load(const QString& path);

    Root& m_root;
    int m_side;
    /// No larger than a few times the panel.
    QImage m_picture;
    QPixmap m_scaled;
    Bindings m_bindings;
};

} // namespace orvantine
