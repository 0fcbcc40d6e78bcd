#pragma once

#include <QStringView>

/// What counts as an audio file. Each way in which one comes into a list asks in its own manner.
namespace orvantine::AudioTypes {

/// The files that a folder adds: for `Files::list`.
inline constexpr QStringView Pattern = u"*.mp3;*.wma;*.wav";
/// The kinds that the chooser offers, and the ending that it adds to a bare name.
inline constexpr QStringView Filter = u"Sounddateien|*.mp3; *.wma; *.wav|Alle Dateitypen|*.*";
inline constexpr QStringView Extension = u"mp3";

/// A dropped file is taken by point and ending, whatever the case.
[[nodiscard]] bool isDropped(QStringView path);

/// A pasted one by its last three characters, whose case counts.
[[nodiscard]] bool isPasted(QStringView path);

/// A bare name that loses its ending where it is shown: its last three characters are "mp3" in any case.
[[nodiscard]] bool endsInMp3(QStringView name);

} // namespace orvantine::AudioTypes
