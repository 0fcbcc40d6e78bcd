#pragma once

#include "platform/Bindings.h"

#include <QWidget>

namespace orvantine {

struct Root;

/// The lower edge of the window: the player's buttons, what is playing or being worked on, and the volume.
class PlayerBar final : public QWidget
{
public:
    PlayerBar(Root& root, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    [[nodiscard]] QWidget* makeVolume();
    [[nodiscard]] QWidget* makeStatus();
    void keepRoom();

    Root& m_root;
    Bindings m_bindings;
    QWidget* m_status = nullptr;
};

} // namespace orvantine
