#pragma once

#include "platform/Bindings.h"

#include <QMenu>
#include <QWidget>

namespace orvantine {

struct Root;
class ReportList;

/// The left half of the window: the catalogue under its heading, with the buttons that move a row.
class CataloguePane final : public QWidget
{
public:
    CataloguePane(Root& root, QWidget* parent);

    [[nodiscard]] ReportList& list() const { return *m_list; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void placeHint();
    /// The commands of the menu bar that act on the selected playlist.
    void popUp(const QPoint& point);

    Root& m_root;
    QMenu m_popup;
    ReportList* m_list;
    /// pHinweistext: stands over the list while the catalogue is empty.
    QWidget* m_hint;
    Bindings m_bindings;
};

} // namespace orvantine
