#pragma once

namespace orvantine {

struct Root;

/// Fills the tag dialog at each load and wires the buttons of both forms.
void setUpTagForms(Root& root);

/// Writes the dialog's fields into the file, takes a leading tag away and closes. With neither title nor artist the
/// dialog stays open and nothing is written.
void cmdUpdate_Click(Root& root);

} // namespace orvantine
