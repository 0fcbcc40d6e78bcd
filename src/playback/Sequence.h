#pragma once

#include <QString>

namespace orvantine {

enum class PlaybackStatus { Stopped, Playing, Paused };

/// What the timers and the user ask of the player, told apart: the sequence gives way to a user who starts, stops,
/// pauses or resumes while it waits.
class Sequence
{
public:
    /// One turn of the sequence: from the end of a list until the next one plays and the view is back.
    class Turn
    {
    public:
        explicit Turn(Sequence& sequence) : m_sequence(sequence), m_wish(sequence.m_wishes) { ++m_sequence.m_turns; }
        ~Turn() { --m_sequence.m_turns; }
        Turn(const Turn&) = delete;
        Turn& operator=(const Turn&) = delete;

        /// The user has asked nothing of the player since the turn began.
        [[nodiscard]] bool undisturbed() const { return m_sequence.m_wishes == m_wish; }

    private:
        Sequence& m_sequence;
        int m_wish;
    };

    /// The user starts, stops, pauses or resumes.
    void wish()
    {
        ++m_wishes;
        m_silentLists = 0;
    }
    /// Counts the wishes.
    [[nodiscard]] int wishes() const { return m_wishes; }

    [[nodiscard]] bool takesTurn() const { return m_turns > 0; }

    /// Path of the playlist that plays, or played last, and the key of its row, which may have moved.
    [[nodiscard]] const QString& playlist() const { return m_playlist; }
    [[nodiscard]] const QString& rowKey() const { return m_rowKey; }
    void setPlaylist(const QString& path, const QString& rowKey)
    {
        m_playlist = path;
        m_rowKey = rowKey;
    }

    /// A list is over, and something of it was heard or not. How many in a row were silent.
    int listEnded(bool heard) { return m_silentLists = heard ? 0 : m_silentLists + 1; }

private:
    int m_wishes = 0;
    int m_turns = 0;
    int m_silentLists = 0;
    QString m_playlist;
    QString m_rowKey;
};

} // namespace orvantine
