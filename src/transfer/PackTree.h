#pragma once

#include "playlists/TrackList.h"
#include "transfer/Carrier.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace orvantine {

class Command;
struct Root;

/// How Pack and Go leaves the catalogue.
enum class PackMode { Folder, Zip };

/// Builds the tree of Pack and Go: a folder for each row of the catalogue, and the database.
class PackTree
{
public:
    enum class Outcome {
        Built,
        /// By the user, or for lack of room.
        Stopped,
        /// The program has.
        Ended
    };

    /// `folder` has its separator. The room is measured where `measured` lies.
    PackTree(Root& root, Command& command, PackMode mode, const QString& folder, const QString& measured);

    Outcome build();
    /// The check mark of the error display was set when a list was loaded.
    [[nodiscard]] bool errorsWereShown() const { return m_errorsWereShown; }
    /// Its dialog goes, but for what could not be carried.
    [[nodiscard]] Carrier& carrier() { return *m_carrier; }

private:
    [[nodiscard]] bool spareTracks();
    Outcome packRow(int row);
    Outcome packTrack(int track);
    Outcome packTracks();
    [[nodiscard]] bool tellRoom();
    void packDatabase();
    void packAsFile(const QString& list);
    void packCover();
    void packList(const QString& list);
    void showShare();
    void freeze();
    [[nodiscard]] int countSteps() const;

    Root& m_root;
    Command& m_command;
    PackMode m_mode;
    QString m_folder;
    QString m_measured;
    std::optional<Carrier> m_carrier;
    bool m_errorsWereShown = false;
    int m_done = 0;
    QString m_log;
    // Of the row that is at work
    QString m_name;
    /// With its separator; "" for a name that no folder can have.
    QString m_place;
    QStringList m_tracks;
    QStringList m_lines;
    std::optional<TrackList::Hold> m_hold;
};

} // namespace orvantine
