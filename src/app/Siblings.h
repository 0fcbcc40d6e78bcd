#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Starts a program of the program's own folder; `arguments` are parted by blanks. False if it is not there or may not
/// be started.
[[nodiscard]] bool startSibling(Root& root, const QString& name, const QString& arguments = {});

} // namespace orvantine
