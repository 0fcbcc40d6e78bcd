#pragma once

#include "desktop/qt/window/MenuBuilder.h"
#include "platform/Bindings.h"

#include <QMenu>
#include <QWidget>

namespace orvantine {

struct Root;
class ReportList;

/// The right half of the window: the open playlist's name and date, its description and cover, its tracks, and what
/// the selected track says about itself.
class PlaylistPane final : public QWidget
{
public:
    PlaylistPane(Root& root, QWidget* parent);

    [[nodiscard]] ReportList& list() const { return *m_list; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    [[nodiscard]] QWidget* makeHead();
    [[nodiscard]] QWidget* makeInformation();
    [[nodiscard]] QWidget* makeStaleNote();
    [[nodiscard]] QWidget* makeAbsence();
    [[nodiscard]] QWidget* makeTrackStrip();

    Root& m_root;
    ReportList* m_list;
    QWidget* m_frame;
    QMenu m_popup;
    MenuBuilder m_menus;
    Bindings m_bindings;
};

} // namespace orvantine
