#pragma once

#include "platform/ListView.h"

#include <optional>
#include <vector>

namespace orvantine {

/// The tracks in sight and the file that they are of: rows, file and lines change together, and only here. Rows are
/// written to no other file than their own, and only if a read vouched for all of them.
class TrackList
{
public:
    enum class Content {
        /// No playlist is in sight.
        None,
        /// A read has emptied the list and is at work.
        Reading,
        /// The rows, if there are any, are not those of the file, or not all of them.
        Stale,
        /// The rows are the playlist, as the file holds it or as the user has changed it since.
        Own
    };

    /// The right to read and change these very rows. Void, for good, once another list is in sight or this one is read
    /// again: every call then does nothing, and gives false.
    class Hold
    {
    public:
        /// Nobody has opened a list since; what is in sight may be stale.
        [[nodiscard]] bool inSight() const { return m_list->m_number == m_number; }
        [[nodiscard]] bool valid() const { return inSight() && m_list->content() == Content::Own; }

        /// The row comes last, or where a sorted list puts it.
        bool append(ListItem row);
        bool remove(int row);
        /// Moves the selected row; negative is up.
        bool move(int by);
        /// Sorts by the column, and stays sorted.
        bool sort(int column);
        bool endSorting();
        /// Gives the row the number of its place. Required: the mark of a track goes to the row that is last.
        bool renumber(int row);
        /// The track lies there now, and is not missing.
        bool setPath(int row, const QString& path);
        // What is shown of a track and not written to the list: stale rows take it too.
        bool setName(int row, const QString& name);
        bool setTime(int row, const QString& time);

        /// Adds a line for a track that was appended.
        bool appendLine(const QString& line);
        /// Makes the lines those of the rows, by their full paths.
        bool putRowsIntoLines();
        [[nodiscard]] bool linesAreOwn() const;

        /// The file of the list has another place.
        bool follow(const QString& path);
        /// The list may be written over `file`, the text that lies there now: it holds no more entries than the rows
        /// were made of.
        [[nodiscard]] bool mayReplace(const QString& file) const;
        /// The rows as they are written: their full paths, each with its line end, one empty line where there are none.
        /// Nothing where they may not stand in the place of `file`.
        [[nodiscard]] std::optional<QString> textFor(const QString& file) const;
        /// This text is what the file holds from now on.
        bool written(const QString& text);

    private:
        friend class TrackList;
        Hold(TrackList& list, int number) : m_list(&list), m_number(number) {}

        TrackList* m_list;
        int m_number;
    };

    /// One read. Events are served inside it, and one of them may begin another: that one then owns the list, and this
    /// one has nothing more to do. Dropped before rows were taken, it leaves them stale.
    class Reading
    {
    public:
        ~Reading() { finish(); }
        Reading(const Reading&) = delete;
        Reading& operator=(const Reading&) = delete;

        [[nodiscard]] bool overtaken() const { return m_list.m_number != m_number; }
        /// The path that the read has found to be the list's.
        void follow(const QString& path);
        /// Leaves the list sorted by its first column, and the sorting off.
        void endSorting();
        /// Puts the rows into the empty list. They are vouched for if they are all that the file holds.
        void take(std::vector<ListItem> rows, bool vouched);
        /// The rows stand, and may be changed and saved from now on.
        void finish();

    private:
        friend class TrackList;
        Reading(TrackList& list, int number) : m_list(list), m_number(number) {}

        TrackList& m_list;
        int m_number;
        Content m_verdict = Content::Stale;
    };

    /// `rows` and `lines` are the controls that show and hold them.
    TrackList(ListView& rows, TextBox& lines) : m_rows(rows), m_lines(lines) {}
    TrackList(const TrackList&) = delete;
    TrackList& operator=(const TrackList&) = delete;

    /// "" where none is in sight, and for tracks without a playlist.
    [[nodiscard]] const QString& path() const { return m_path; }
    /// The list in sight is the one of that file.
    [[nodiscard]] bool isOf(const QString& path) const;
    [[nodiscard]] Content content() const { return m_content.value(); }
    /// For a view: what the pane of the tracks tells hangs on it.
    [[nodiscard]] QProperty<Content>& watchedContent() { return m_content; }
    [[nodiscard]] Hold hold() { return {*this, m_number}; }

    /// Rows and lines are still those of the list before: the new one was too short to be taken in. Own rows never are,
    /// whatever an event has put into the field.
    [[nodiscard]] bool showsListBefore() const { return content() != Content::Own && m_linesOf != m_path; }

    /// Empties and renames the list in one step, for a read.
    [[nodiscard]] Reading open(const QString& path);
    /// A new list without rows: Own, or Stale for a file whose entries nobody has read yet.
    void begin(const QString& path, Content content = Content::Own);
    /// None is in sight any more.
    void close();
    /// The file has become another one: what is in sight is not all of it any more.
    void doubt();
    /// Puts the list's own rows in the place of those that were stale. What was held stays held.
    void takeOwn(std::vector<ListItem> rows, const QString& lines, qsizetype entries);

    /// The lines of a playlist file; the path says whose they are.
    void setLines(const QString& text, const QString& path);
    void clearLines();

private:
    void empty(const QString& path, Content content);
    void setRows(std::vector<ListItem> rows);
    /// Rows of the list before are shown greyed.
    void setContent(Content content);

    ListView& m_rows;
    TextBox& m_lines;
    QString m_path;
    /// Whose lines the field holds: a list that is too short to be read leaves those of another.
    QString m_linesOf;
    QProperty<Content> m_content{Content::None};
    /// Entries that the file held when the rows were taken from it or last written.
    qsizetype m_entries = 0;
    /// Counts the lists that came into sight.
    int m_number = 0;
};

} // namespace orvantine
