#pragma once

#include <QString>

namespace orvantine {

struct Root;
struct SystemVersion;

/// Without a trailing separator.
[[nodiscard]] QString WindowsFolder(const Root& root);
[[nodiscard]] QString TempFolder(const Root& root);

/// The numbers of the folders that SpecialFolder knows
namespace Csidl {
inline constexpr int Documents = 5;
inline constexpr int ApplicationData = 26;
} // namespace Csidl

/// "" for any other number and where there is none.
[[nodiscard]] QString SpecialFolder(const Root& root, int csidl);

/// Where a chooser begins: in `folder`, or else in what the setting "FolderView" holds, or else in the documents.
[[nodiscard]] QString chooserFolder(const Root& root, const QString& folder = {});

/// "95", "98", "Me", "XP", "Windows 16bit mit 32bit-Erweiterung" or "Unknown".
[[nodiscard]] QString WinVersionen(const SystemVersion& version);

/// Makes a font file usable; events are served by the caller.
void FontWinRegister(Root& root, const QString& path);

} // namespace orvantine
