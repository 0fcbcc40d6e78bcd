#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace orvantine {

/// Names of the sounds that the program carries.
[[nodiscard]] QStringList cueNames();

/// The WAV image of the cue with that name, which is found ignoring case; empty for a name that there is none of.
[[nodiscard]] QByteArray cueNamed(const QString& name);

} // namespace orvantine
