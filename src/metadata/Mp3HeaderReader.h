#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Asks the tag library for the selected track and shows the record on the labels and in the tag dialog. What the
/// library leaves alone keeps the value of the file read before.
void ReadMp3Header(Root& root);

/// Writes the tag dialog's fields into the selected track. Where that fails, so does a running change of the files.
void WriteMp3Tag(Root& root);

/// Takes trailing blanks away, and nothing but blanks.
[[nodiscard]] QString NullTrim(const QString& text);

/// Hours, minutes and seconds, at least two digits each; an unknown time shows as nought.
[[nodiscard]] QString playingTimeText(int seconds);

} // namespace orvantine
