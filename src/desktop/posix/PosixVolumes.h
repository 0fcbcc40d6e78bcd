#pragma once

#include "platform/Volumes.h"

#include <QMap>

#include <functional>
#include <optional>

namespace orvantine {

struct VolumeInfo
{
    /// Where it is mounted.
    QString root;
    /// As the host names it: "ext4", "vfat".
    QString type;
    quint64 freeBytes = 0;
    quint64 totalBytes = 0;
};

/// Asks about the volume that an existing path lies on.
using VolumeQuery = std::function<std::optional<VolumeInfo>(const QString&)>;

[[nodiscard]] std::optional<VolumeInfo> mountedVolume(const QString& path);

/// A volume's root is its mount point; for a folder below "/media/<user>", "/run/media/<user>" and "/mnt" it is that
/// folder, mounted or not; for "C:\…" it is "C:\".
class PosixVolumes : public Volumes
{
public:
    /// `drives`: host folders by "C:".
    explicit PosixVolumes(const QMap<QString, QString>& drives = {}, VolumeQuery query = mountedVolume);

    [[nodiscard]] QString rootOf(const QString& path) const override;
    [[nodiscard]] QString fileSystem(const QString& root) const override;
    [[nodiscard]] std::optional<quint64> freeBytes(const QString& root) const override;
    [[nodiscard]] std::optional<quint64> totalBytes(const QString& root) const override;

private:
    [[nodiscard]] std::optional<VolumeInfo> volume(const QString& root) const;

    QMap<QString, QString> m_drives;
    VolumeQuery m_query;
};

} // namespace orvantine
