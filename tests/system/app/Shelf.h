#pragma once

#include "system/app/Desk.h"

namespace orvantine::desk {

/// Something in one of the formats that programs hand to each other.
struct Content
{
    QString format;
    QByteArray bytes;
};

/// A window of another program, from which content is drawn and on which content is let fall by the mouse.
class Shelf
{
public:
    enum class Way { Drag, Copy };

    /// With Copy the content lies on the clipboard. Waits until the window stands.
    explicit Shelf(const Desk& desk, const QList<Content>& content = {}, Way way = Way::Drag);

    /// What is drawn out of it from now on.
    void fill(const QList<Content>& content) const;
    /// Draws its content to that place of the screen and lets it fall once the program there takes it; what came of it
    /// is told as the number of a drop action, 0 for none.
    [[nodiscard]] std::optional<int> dragTo(QPoint target);
    /// The same, but `meanwhile` runs in front of letting it fall.
    [[nodiscard]] std::optional<int> dragTo(QPoint target, const std::function<void()>& meanwhile);
    /// Draws what lies at that place of the screen onto it; the list of URIs that it got, in percent form.
    [[nodiscard]] QByteArray dragFrom(QPoint source);

private:
    void hear();
    void findMiddle();
    void moveMouse(QPoint point) const;
    void button(const QString& way) const;
    /// Shakes the mouse at a place until that line has been told that often.
    [[nodiscard]] bool shakeUntil(QPoint place, const QByteArray& line, qsizetype times);

    const Desk& m_desk;
    QStringList m_files;
    QList<QByteArray> m_told;
    QPoint m_middle;
    Process m_process;
};

} // namespace orvantine::desk
