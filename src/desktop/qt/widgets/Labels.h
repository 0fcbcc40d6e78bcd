#pragma once

#include "platform/Bindings.h"
#include "platform/Controls.h"

#include <QLabel>

namespace orvantine {

/// Draws a text in the room that there is: one line, or as many as fit when wrapping is on. What does not fit ends in
/// an ellipsis and stands in the tool tip. Takes plain text only.
class TextLabel : public QLabel
{
public:
    enum class Weight { Normal, Dim, Heading };

    explicit TextLabel(Weight weight, QWidget* parent = nullptr);

    /// Wraps, and asks for the height of so many lines whatever the text is.
    void setLines(int lines);
    /// Never takes less room than its one line needs.
    void setWhole(bool whole);
    /// The tip that is shown while the whole text can be seen.
    void setTip(const QString& tip);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    friend class ControlLabel;
    void applyWeight();

    Weight m_weight;
    int m_lines = 1;
    bool m_whole = false;
    QString m_tip;
    Color m_color = Color::ButtonText;
    std::function<void()> m_doubleClicked;
};

/// A text label that shows a label control.
class ControlLabel final : public TextLabel
{
public:
    ControlLabel(Label& control, Weight weight, QWidget* parent = nullptr);

private:
    Bindings m_bindings;
};

} // namespace orvantine
