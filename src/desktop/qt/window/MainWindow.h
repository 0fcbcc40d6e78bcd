#pragma once

#include "desktop/qt/window/MenuBuilder.h"
#include "platform/Bindings.h"

#include <QMainWindow>
#include <QTimer>

#include <memory>
#include <optional>

class QSplitter;

namespace orvantine {

struct Root;
class Balloons;
class CataloguePane;
class PlaylistPane;
class TextLabel;

/// The main window over Root. Place, size and state go both ways; the close button asks Form_QueryUnload.
class MainWindow final : public QMainWindow
{
public:
    explicit MainWindow(Root& root);
    ~MainWindow() override;

    /// The session ends, and the program with it.
    void endSession();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeBusyPanel(QWidget* centre);
    void placeBusyPanel();
    void makeQuietLine(QWidget* centre);
    void placeQuietLine();
    void placeOverlays();
    void keepSplitter();
    void noteSplitter();
    void openMenuBar();
    void showPlace();
    void showSize();
    void placeFrame();
    void showState();
    void showVisible();
    void minimise();
    /// The window's own place and size go to Root.
    void notePlace();
    /// What was drawn and moved a moment ago goes to Root at once: nobody waits for it any more.
    void noteNow();

    Root& m_root;
    CataloguePane* m_catalogue = nullptr;
    PlaylistPane* m_playlist = nullptr;
    QWidget* m_busy = nullptr;
    QWidget* m_quiet = nullptr;
    TextLabel* m_quietText = nullptr;
    QSplitter* m_splitter = nullptr;
    QTimer m_splitterLater;
    std::unique_ptr<Balloons> m_tips;
    QTimer m_minimiseLater;
    int m_exposeLooks = 0;
    /// A window that is being maximised reports its new size before its new state.
    QTimer m_noteLater;
    bool m_noting = false;
    /// Where the desktop put the window when it was shown last.
    std::optional<QPoint> m_shownAt;
    bool m_moved = false;
    bool m_closing = false;
    MenuBuilder m_menus;
    Bindings m_bindings;
};

} // namespace orvantine
