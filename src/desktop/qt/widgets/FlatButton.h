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
    [[nodiscard]] const QString& iconName() const { return m_iconName; }
    /// Where the focus goes when this one is switched off under the hand of the user.
    void setFocusPartner(FlatButton* partner) { m_partner = partner; }

    [[nodiscard]] QSize sizeHint() const override { return {m_side, m_side}; }

    void enable(bool enabled);

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
    FlatButton* m_partner = nullptr;
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

    /// What a press does from now on.
    void setMeaning(const QString& name, const QString& icon);

private:
    const QProperty<QString>& m_tip;
    Bindings m_bindings;
};

/// The compact disc of the player: turns to the accent colour while something plays, and shows two bars while it is
/// paused.
class DiscButton final : public FlatButton
{
public:
    enum class Look { Still, Playing, Paused };

    DiscButton(PictureBox& control, const QString& name, QWidget* parent);

    void setLook(Look look);
    [[nodiscard]] Look look() const { return m_look; }

protected:
    void drawFace(QPainter& painter, const QRect& area) override;

private:
    Look m_look = Look::Still;
    Bindings m_bindings;
};

} // namespace orvantine
