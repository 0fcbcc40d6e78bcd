#pragma once

namespace orvantine {

struct Root;

/// Shows a topic, "/1.0 Erste Schritte.htm", of the help; without the help file nothing happens.
void showHelp(Root& root, const char16_t* topic);

} // namespace orvantine
