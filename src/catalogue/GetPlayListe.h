#pragma once

#include <QString>

namespace orvantine {

struct Root;

/// Appends a row for the playlist file and opens it. An empty path is a no-op.
void GetPlayListe(Root& root, const QString& path);

} // namespace orvantine
