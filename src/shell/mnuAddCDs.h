#pragma once

#include <QString>

namespace orvantine {

struct Root;

enum class RipperKind { CDRIPPER, FREERIPPER, FREERIP3, Other };

/// By the file name of the program.
[[nodiscard]] RipperKind ripperKind(const QString& program);

/// Starts the CD ripper of the options, which puts its files into the folder for sound files.
void mnuAddCDs_Click(Root& root);

} // namespace orvantine
