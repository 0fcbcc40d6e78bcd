#pragma once

#include "platform/Files.h"
#include "platform/FolderWalk.h"
#include "support/CallLog.h"

#include <deque>

namespace orvantine::fake {

/// Walks that have read all before they begin and hand it over folder by folder.
class FakeWalks final : public FolderWalks
{
public:
    explicit FakeWalks(CallLog& log) : m_log(log) {}

    [[nodiscard]] std::unique_ptr<FolderWalk> begin(const QString& folder, const QString& patterns,
                                                    int levels) override;

    /// Reads the folders of this disk; without one nothing is found.
    void readFrom(const Files& files);
    /// Reads those of a real one.
    void readHost(const QMap<QString, QString>& drives);
    /// A dead mount: what comes behind so many folders never comes.
    int hangsBehind = -1;

private:
    CallLog& m_log;
    std::function<std::deque<WalkedFolder>(const QString& folder, const QString& patterns, int levels)> m_read;
};

} // namespace orvantine::fake
