#pragma once

#include "system/app/Desk.h"

#include <QDBusConnection>

namespace orvantine::desk {

/// A control as assistive programs see it.
struct Control
{
    QString name;
    /// On the screen.
    QRect place;
    bool enabled = false;
};

/// The program as users start it, on a desk. What is told of its controls needs a session bus.
class Program
{
public:
    explicit Program(Desk& desk, const QStringList& arguments = {});
    ~Program();
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    /// Waits until it tells that its window stands. Boxes that come up on the way are closed by the return key.
    [[nodiscard]] bool awaitWindow();
    /// Titles of the boxes that were closed on the way, in their order.
    [[nodiscard]] const QStringList& boxes() const { return m_boxes; }

    [[nodiscard]] bool runs() const { return m_process.state() == QProcess::Running; }
    /// Whether it ended by itself with exit code 0. Waits for the end.
    [[nodiscard]] bool ends();
    /// Alt+F4 on the main window, boxes before it closed; whether that ended it with exit code 0.
    [[nodiscard]] bool closes();
    /// SIGTERM; whether that ended it.
    [[nodiscard]] bool terminates();
    /// Sends it a signal.
    void tell(int signal) const;

    /// The seen control of that accessible name.
    [[nodiscard]] std::optional<Control> control(const QString& name);
    /// Waits until the control of that name is seen and enabled, and clicks into its middle.
    void click(const QString& name);
    void doubleClick(const QString& name);

    /// Everything it wrote to its standard error, for messages of a test that failed.
    [[nodiscard]] std::string complaints() const { return m_complaints.toStdString(); }

private:
    struct Accessible
    {
        QString service;
        QString path;
    };

    [[nodiscard]] bool connectToControls();
    [[nodiscard]] QList<Accessible> children(const Accessible& parent) const;
    [[nodiscard]] std::optional<Control> find(const Accessible& from, const QString& name) const;
    [[nodiscard]] std::optional<QPoint> awaitControl(const QString& name);
    void closeBox();
    void hear();

    Desk& m_desk;
    Process m_process;
    QByteArray m_complaints;
    QStringList m_boxes;
    QString m_controlsBus;
};

} // namespace orvantine::desk
