#pragma once

#include "platform/Controls.h"

#include <QAbstractTableModel>

#include <optional>

namespace orvantine {

/// What hardly any row or sub-item has; long lists would carry it for nothing.
struct ListExtras
{
    QString Key;
    QString Tag;
    QString ToolTipText;
    /// Of the entry that the row stands for, where that is not its place; else 0.
    int Number = 0;
};

struct ListSubItem
{
    QString Text;
    QString ReportIcon;
    Color ForeColor = Color::ButtonText;
    bool Bold = false;
    /// Null for none.
    std::shared_ptr<const ListExtras> Extras;
};

struct ListItem
{
    QString Text;
    QString Icon;
    QString SmallIcon;
    Color ForeColor = Color::ButtonText;
    bool Bold = false;
    bool Checked = false;
    bool Ghosted = false;
    /// Null for none.
    std::shared_ptr<const ListExtras> Extras;
    std::vector<ListSubItem> SubItems;
};

struct ColumnHeader
{
    QString Text;
    Twips Width = 0;
};

/// A report list: rows of a text and sub-items, one selected row, columns with stored widths. The logic counts rows,
/// sub-items and columns from 1, as they are told; the model's own indexes are Qt's. Column 1 shows the row text,
/// column c the sub-item c - 1.
///
/// A mutator with a row or sub-item that does not exist changes nothing; a query gives an empty text.
class ListView : public QAbstractTableModel, public Control
{
public:
    using QAbstractTableModel::index;

    ListView(ControlSet& owner, QStringView listName);

    // Rows
    [[nodiscard]] int count() const { return static_cast<int>(m_rows.size()); }
    [[nodiscard]] bool has(int row) const { return row >= 1 && row <= count(); }
    [[nodiscard]] const ListItem& item(int row) const;
    [[nodiscard]] QString text(int row) const;
    [[nodiscard]] QString subItem(int row, int sub) const;
    [[nodiscard]] Color color(int row, int sub) const;
    [[nodiscard]] QString tag(int row) const;
    [[nodiscard]] QString key(int row) const;
    [[nodiscard]] int number(int row) const;

    void clear();
    /// Adds at the end, or in the place that the sort key gives the row; gives the row's number.
    int append(ListItem item);
    /// 1 to count() + 1.
    void insert(int row, ListItem item);
    void remove(int row);
    void setText(int row, const QString& text);
    /// Sub-items between the present last one and `sub` come into being empty.
    void setSubItem(int row, int sub, const QString& text);
    void setColor(int row, int sub, Color color);
    /// Small icon of the row and report icon of its first sub-item.
    void setIcons(int row, const QString& icon);
    void setTag(int row, const QString& tag);
    void setNumber(int row, int number);
    /// The rows whose sub-item has this text show that they play, or are paused, beside their icons; "" for none.
    void setPlaying(int sub, const QString& text, bool paused = false);

    // Selection; 0 is no row
    [[nodiscard]] int selectedRow() const { return m_selected.value(); }
    [[nodiscard]] const QProperty<int>& selection() const { return m_selected; }
    QProperty<int>& selection() { return m_selected; }
    /// Selects the row; one that does not exist leaves the selection as it is and gives false.
    bool select(int row);
    void clearSelection();
    /// Asks the view to scroll the row into sight.
    std::function<void(int row)> EnsureVisible = [](int) {};
    /// The first row that the view shows; and asks it to begin with that one, as far as the rows reach.
    std::function<int()> TopRow = [] { return 1; };
    std::function<void(int row)> ShowFromRow = [](int) {};
    /// Asks the view to draw nothing until it is unlocked.
    std::function<void(bool locked)> LockUpdate = [](bool) {};

    // Columns
    [[nodiscard]] int columns() const { return static_cast<int>(m_columns.size()); }
    [[nodiscard]] QString columnText(int column) const;
    [[nodiscard]] Twips columnWidth(int column) const;
    void clearColumns();
    void addColumn(const QString& text, Twips width);
    void setColumnText(int column, const QString& text);
    void setColumnWidth(int column, Twips width);
    /// The user drew the column wider or narrower: stored without telling the views.
    void noteColumnWidth(int column, Twips width);
    /// The user has let go of the edge of a column.
    std::function<void(int column)> WidthDrawn;
    /// Told after every change of a width by the logic.
    std::function<void(int column, Twips width)> WidthChanged = [](int, Twips) {};

    // Sorting: while Sorted is on, an added row takes the place that the sort key gives it.
    [[nodiscard]] bool sorted() const { return m_sorted; }
    void setSorted(bool sorted);
    [[nodiscard]] int sortColumn() const { return m_sortColumn; }
    /// Sorts ascending by the column's text, ignoring case, stable; the selection follows its row.
    void sortBy(int column);

    QProperty<bool> GridLines{false};
    /// The rows are shown and no more: they are not what the list stands for.
    QProperty<bool> Ghosted{false};
    QProperty<QString> FontName;
    /// Points.
    QProperty<double> FontSize{0};

    std::function<void()> Click;
    std::function<void()> DblClick;
    std::function<void(int column)> ColumnClick;
    std::function<void()> GotFocus;
    /// Shift word as a bit set (1 shift, 2 control, 4 alt) and the key's code; true when the key was used.
    std::function<bool(int shift, int keyCode)> KeyDown;
    /// Paths as the Files service names them.
    std::function<void(const QStringList& paths)> Drop;
    /// The view takes a drop at present.
    bool AllowDrop = true;
    /// The host's name of the file that a row stands for; nothing where there is none. The row can then be drawn to
    /// other programs.
    std::function<std::optional<QByteArray>(int row)> DragFile;

    /// While one lives, appended rows, changed cells and the selection reach the views together when it ends. They
    /// nest; only the selection waits for the outermost. A change that moves rows tells the views of what was held back
    /// first. The rows that are appended to a sorted list stand at its end until then, and take their places together.
    class Batch
    {
    public:
        explicit Batch(ListView& list) : m_list(list) { ++m_list.m_batches; }
        ~Batch();
        Batch(const Batch&) = delete;
        Batch& operator=(const Batch&) = delete;

    private:
        ListView& m_list;
    };

    [[nodiscard]] bool batching() const { return m_batches > 0; }
    /// Rows were appended that no view knows of.
    /// The views get at once what a Batch holds back, which goes on.
    void showNow();
    [[nodiscard]] bool holdsBackRows() const { return m_published < count(); }
    /// Told when the last batch has ended: the selection may be shown again.
    std::function<void()> BatchEnded = [] {};

    // Qt's side
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Role of data() for the name of the icon of a cell, and for its colour as Color.
    static constexpr int IconNameRole = Qt::UserRole + 1;
    static constexpr int ColorRole = Qt::UserRole + 2;
    /// Whether the file of the row is missing, in each of its cells.
    static constexpr int MissingRole = Qt::UserRole + 3;
    /// Whether the row is one that setPlaying names, as Playing.
    static constexpr int PlayingRole = Qt::UserRole + 4;
    enum Playing { NotPlaying = 0, IsPlaying = 1, IsPaused = 2 };

private:
    /// Gives the number that the row has afterwards.
    int publish(int row = 0);
    void changeExtras(int row, const std::function<void(ListExtras&)>& change);
    /// The rows behind the first `placed` take the places that one after the other would be given; so does `row`.
    [[nodiscard]] int placeFrom(int placed, int row);
    /// `order` holds the old index of each row. Gives the new index of each old one.
    std::vector<int> reorder(const std::vector<std::size_t>& order);
    [[nodiscard]] QString keyOf(const ListItem& item) const { return textAt(item, m_sortColumn).toCaseFolded(); }
    void changed(int row, int column);
    [[nodiscard]] Playing playingAt(const ListItem& item) const;
    [[nodiscard]] QString stateOf(const ListItem& item) const;
    [[nodiscard]] int placeFor(const ListItem& item) const;
    [[nodiscard]] static QString textAt(const ListItem& item, int column);

    std::vector<ListItem> m_rows;
    std::vector<ColumnHeader> m_columns;
    QProperty<int> m_selected{0};
    /// Rows the views know of; behind m_rows only while a batch lives.
    int m_published = 0;
    int m_batches = 0;
    /// First and last row with a cell that the views were not told of; none while the first is 0.
    int m_firstChanged = 0;
    int m_lastChanged = 0;
    bool m_sorted = false;
    int m_sortColumn = 1;
    int m_playingSub = 0;
    QString m_playing;
    bool m_playingPaused = false;
};

} // namespace orvantine
