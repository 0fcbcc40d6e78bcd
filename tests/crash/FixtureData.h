#pragma once

#include "support/DiskDesktop.h"

#include <functional>

namespace orvantine::crash {

/// A desktop that answers every box with its first button.
struct Machine : fake::DiskDesktop
{
    explicit Machine(const QString& where);

    [[nodiscard]] QString data() const;
    [[nodiscard]] QString archive() const;

    /// Runs a command on the loaded catalogue, whose last list is open then.
    void run(const std::function<void(Machine&)>& command);
    void answer(Answer answer);
    /// With room for everything.
    void setStick();
};

/// The first list is a new one, which has no file in "Playlisten" yet; another lies elsewhere.
[[nodiscard]] QString listFile(const QString& folder, int row);
/// Sound files beside the catalogue, with a picture.
[[nodiscard]] QString soundFolder(const QString& folder);
[[nodiscard]] QStringList soundFiles(const QString& folder);
/// Two lists that are in no catalogue.
[[nodiscard]] QString foreignFolder(const QString& folder);
[[nodiscard]] QString stick(const QString& folder);

/// Lists with tracks, descriptions, a favourite, covers, names of tracks before the catalogue.
void prepare(const QString& folder);
/// Prints everything that a user would miss: the lists and pictures with what they hold, the sections beside the
/// catalogue, and, behind the line "Index", the keys of the catalogue.
void show(Machine& machine);

} // namespace orvantine::crash
