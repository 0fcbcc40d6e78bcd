#pragma once

#include "platform/Bindings.h"
#include "platform/Controls.h"

#include <QAbstractButton>

namespace orvantine {

/// A round or softly cornered button that shows an icon and no text. The strong form stands on the accent colour.
class FlatButton : public QAbstractButton
{
public:
    enum class Form { Flat, Strong };

    FlatButton(Form form, int side, QWidget* parent);

    void setIconName(const QString& name);

    [[nodiscard]] QSize sizeHint() const override { return {m_side, m_side}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    /// Draws what stands on the ground of the button.
    virtual void drawFace(QPainter& painter, const QRect& area);

    [[nodiscard]] bool strong() const { return m_form == Form::Strong && isEnabled(); }

private:
    Form m_form;
    int m_side;
    QString m_iconName;
};

/// The picture boxes and buttons of the main window that act as buttons: name, visibility, tips and click.
/// `name` is what a screen reader says and what the tip shows as long as the control has none.
class ControlButton final : public FlatButton
{
public:
    ControlButton(PictureBox& control, Form form, int side, const QString& name, const QString& icon, QWidget* parent);
    ControlButton(Button& control, int side, const QString& name, const QString& icon, QWidget* parent);

private:
    Bindings m_bindings;
};

/// The compact disc of the player: turns to the accent colour while something plays.
class DiscButton final : public FlatButton
{
public:
    DiscButton(PictureBox& control, QProperty<bool>& playing, const QString& name, QWidget* parent);

protected:
    void drawFace(QPainter& painter, const QRect& area) override;

private:
    bool m_playing = false;
    Bindings m_bindings;
};

} // namespace orvantine
