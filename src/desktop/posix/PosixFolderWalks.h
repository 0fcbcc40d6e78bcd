#pragma once

#include "platform/FolderWalk.h"

#include <QMap>

#include <functional>
#include <utility>

namespace orvantine {

/// Walks in a thread of their own. One that a dead mount holds is left to itself.
class PosixFolderWalks final : public FolderWalks
{
public:
    /// `drives`: host folders by "C:".
    explicit PosixFolderWalks(QMap<QString, QString> drives = {}) : m_drives(std::move(drives)) {}

    [[nodiscard]] std::unique_ptr<FolderWalk> begin(const QString& folder, const QString& patterns,
                                                    int levels) override;

private:
    QMap<QString, QString> m_drives;
};

/// The walk itself, in the thread of the caller. `found` gives false to end it.
void walkFolders(const QMap<QString, QString>& drives, const QString& folder, const QString& patterns, int levels,
                 const std::function<bool(WalkedFolder)>& found);

} // namespace orvantine
