#pragma once

#include "platform/Form.h"

namespace orvantine {

/// The search dialog. While it is visible, the checks of the track display stay silent. What it does stands in
/// search/mnuSuchen.h.
struct Suchen : Form
{
    Suchen();

    Label Label1{controls, u"Label1"};
    /// Its list is the history.
    ComboBox Text1{controls, u"Text1"};
    Label Frame1{controls, u"Frame1"};
    // Required: the choice between them has no effect, the search runs from the first row to the last.
    OptionButton OVorwärts{controls, u"OVorwärts"};
    OptionButton ORückwärts{controls, u"ORückwärts"};
    CheckBox bIndexFinder{controls, u"bIndexFinder"};
    Label LIndexKey{controls, u"LIndexKey"};
    Button CSuchen{controls, u"CSuchen"};
    /// Tag: "1" once the search is to end.
    Button CAbbrechen{controls, u"CAbbrechen"};
    /// Which list is read, and how many are left.
    Label progress{controls, u"progress"};

    /// A search is at work.
    bool searching = false;
    /// Its history could not be read.
    bool historyDoubted = false;
};

} // namespace orvantine
