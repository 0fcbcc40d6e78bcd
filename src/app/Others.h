#pragma once

#include <QString>

namespace orvantine {

struct Root;
struct SystemVersion;

/// Without a trailing separator.
[[nodiscard]] QString WindowsFolder(const Root& root);
[[nodiscard]] QString TempFolder(const Root& root);

/// 26 application data, 5 documents; "" for any other and where there is none.
[[nodiscard]] QString SpecialFolder(const Root& root, int csidl);

/// "95", "98", "Me", "XP", "Windows 16bit mit 32bit-Erweiterung" or "Unknown".
[[nodiscard]] QString WinVersionen(const SystemVersion& version);

/// Makes a font file usable; events are served by the caller.
void FontWinRegister(Root& root, const QString& path);

} // namespace orvantine
