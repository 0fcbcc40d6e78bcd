#pragma once

#include "platform/Form.h"

namespace orvantine {

struct Root;

/// The dialog in which the whole catalogue is put into another order.
struct Positionen : Form
{
    Positionen();

    /// A line is name, tab, path, tab, row number. No record stands behind it.
    DragListBox LSortView{controls, u"LSortView"};
    Label sHilfe{controls, u"sHilfe"};
    Label sPlaylisten{controls, u"sPlaylisten"};
    Button BReady{controls, u"BReady"};
    Button bAbbrechen{controls, u"bAbbrechen"};
    Button bHilfe{controls, u"bHilfe"};
};

/// Fills the list at each load and wires the buttons.
void setUpPositionen(Root& root);

/// What `BReady` takes from a line; `number` is 1 where the rest behind the second tab is no number.
struct SortLine
{
    QString name;
    QString path;
    int number = 1;
};
[[nodiscard]] SortLine sortLineOf(const QString& line);

} // namespace orvantine
