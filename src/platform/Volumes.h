#pragma once

#include <QString>

#include <optional>

namespace orvantine {

/// Volumes by their root: "C:\", "/media/user/STICK".
class Volumes
{
public:
    virtual ~Volumes() = default;

    /// The root that a path lies on.
    [[nodiscard]] virtual QString rootOf(const QString& path) const = 0;
    /// Upper case, "FAT32" for the stick's file systems; "" if there is no such volume.
    [[nodiscard]] virtual QString fileSystem(const QString& root) const = 0;
    /// Bytes.
    [[nodiscard]] virtual std::optional<quint64> freeBytes(const QString& root) const = 0;
    [[nodiscard]] virtual std::optional<quint64> totalBytes(const QString& root) const = 0;
};

} // namespace orvantine
