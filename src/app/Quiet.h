#pragma once

#include "platform/Files.h"

#include <QString>

namespace orvantine {

struct Root;

/// Why a file was not written, as a sentence.
[[nodiscard]] QString reasonOf(WriteFault fault);

/// Shows a line in the window for a few seconds, in the place of the one before: what a command that succeeds tells
/// without a box, or why something was not saved.
void showQuietly(Root& root, const QString& text);

/// Says what the command that ends now could not save, if there is anything.
void tellFault(Root& root);

/// The line has been seen long enough.
void quietTimer_Tick(Root& root);

} // namespace orvantine
