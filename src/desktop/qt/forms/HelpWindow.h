#pragma once

#include <QMainWindow>
#include <QString>
#include <QTemporaryDir>

class QAction;
class QTextBrowser;

namespace orvantine {

/// Shows the topics of the help file, a Qt resource container whose pages stand below "/hilfe".
class HelpWindow final : public QMainWindow
{
public:
    HelpWindow();
    ~HelpWindow() override;

    /// Opens the file, if it is not open, and shows a topic by its name: "/1.0 Erste Schritte.htm". False, and nothing
    /// is shown, if there is no such file or topic.
    bool showTopic(const QString& file, const QString& topic);

    /// Puts the page that is shown into a file that can be printed, until this window goes; "" where it fails.
    QString printed();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool open(const QString& file);
    void go(const QString& topic);

    QString m_file;
    QTextBrowser* m_page;
    QAction* m_back;
    QAction* m_forward;
    QAction* m_print;
    QTemporaryDir m_prints;
    int m_printCount = 0;
};

} // namespace orvantine
