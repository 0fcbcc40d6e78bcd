#pragma once

#include <QString>

namespace orvantine {

class ListView;
struct Root;

void setUpSuchen(Root& root);

/// Shows the search dialog afresh. One whose search is at work only comes to the front.
void mnuSuchen_Click(Root& root);

/// Switches the search display of the main window.
void mnuSuchDialog_Click(Root& root);

// The history: section `Finder` of the database, "01" for the first entry

/// Adds what stands under the first nine keys to the list of `Text1`.
void LoadFindText(Root& root);
/// Puts the whole list of `Text1` in the place of the section.
void SaveFindText(Root& root);

/// 0-based place of the text in the list of `Text1`, ignoring case as a list box does; -1 where it is not there.
[[nodiscard]] int FindExact(const Root& root, const QString& text);

/// The first row of the track list whose ID, track number or name holds the text, ignoring case; 0 for none. Characters
/// that would be wildcards elsewhere stand for themselves.
[[nodiscard]] int ListViewFind(const ListView& tracks, const QString& text);

} // namespace orvantine
