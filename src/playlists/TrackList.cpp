#include "playlists/TrackList.h"

#include "app/Columns.h"
#include "app/LisviewMoveEntrys.h"
#include "app/TextLimits.h"
#include "platform/FileDirPath.h"
#include "playlists/PlaylistText.h"

#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

bool TrackList::Hold::append(ListItem row)
{
    if (valid())
        m_list->m_rows.append(std::move(row));
    return valid();
}

bool TrackList::Hold::remove(int row)
{
    if (valid())
        m_list->m_rows.remove(row);
    return valid();
}

bool TrackList::Hold::move(int by)
{
    if (!valid())
        return false;
    const ListView::Batch together(m_list->m_rows);
    if (by < 0)
        LisviewMoveEntrys::MoveUp(m_list->m_rows, {}, -by, false);
    else
        LisviewMoveEntrys::MoveDown(m_list->m_rows, {}, by, false);
    return true;
}

bool TrackList::Hold::sort(int column)
{
    if (valid())
        m_list->m_rows.sortBy(column);
    return valid();
}

bool TrackList::Hold::endSorting()
{
    if (valid())
        m_list->m_rows.setSorted(false);
    return valid();
}

bool TrackList::Hold::renumber(int row)
{
    if (!valid())
        return false;
    ListView& rows = m_list->m_rows;
    rows.setSubItem(row, TrackItem::Number, padded(row, 2));
    rows.setText(row, padded(row, 3));
    rows.setIcons(rows.count(), u"Icon_2"_s);
    return true;
}

bool TrackList::Hold::setName(int row, const QString& name)
{
    if (inSight())
        m_list->m_rows.setSubItem(row, TrackItem::Name, name);
    return inSight();
}

bool TrackList::Hold::setPath(int row, const QString& path)
{
    if (!valid())
        return false;
    ListView& rows = m_list->m_rows;
    rows.setSubItem(row, TrackItem::Path, path);
    rows.setColor(row, TrackItem::Number, Color::ButtonText);
    rows.setColor(row, TrackItem::Path, Color::ButtonText);
    return true;
}

bool TrackList::Hold::setTime(int row, const QString& time)
{
    if (inSight())
        m_list->m_rows.setSubItem(row, TrackItem::File, time);
    return inSight();
}

bool TrackList::Hold::appendLine(const QString& line)
{
    if (!valid())
        return false;
    // Taken out meanwhile: a text that the field holds too would be copied whole for each line.
    QString text = m_list->m_lines.Text.value();
    m_list->m_lines.Text = QString();
    text += line;
    text += u"\r\n"_s;
    m_list->m_lines.Text = std::move(text);
    return true;
}

bool TrackList::Hold::putRowsIntoLines()
{
    if (!valid())
        return false;
    const ListView& rows = m_list->m_rows;
    QString lines;
    for (int row = 1; row <= rows.count(); ++row)
        lines += rows.subItem(row, TrackItem::Path) + u"\r\n"_s;
    m_list->setLines(lines, m_list->m_path);
    return true;
}

bool TrackList::Hold::linesAreOwn() const
{
    return valid() && m_list->m_linesOf == m_list->m_path;
}

bool TrackList::Hold::follow(const QString& path)
{
    if (!inSight())
        return false;
    if (m_list->m_linesOf == m_list->m_path)
        m_list->m_linesOf = path;
    m_list->m_path = path;
    return true;
}

bool TrackList::Hold::mayReplace(const QString& file) const
{
    return valid() && entryLines(file) <= m_list->m_entries;
}

std::optional<QString> TrackList::Hold::textFor(const QString& file) const
{
    if (!mayReplace(file))
        return {};
    const ListView& rows = m_list->m_rows;
    QStringList paths;
    paths.reserve(rows.count());
    for (int row = 1; row <= rows.count(); ++row)
        paths.append(rows.subItem(row, TrackItem::Path));
    return paths.join(u"\r\n"_s) + u"\r\n"_s;
}

bool TrackList::Hold::written(const QString& text)
{
    if (valid())
        m_list->m_entries = entryLines(text);
    return valid();
}

void TrackList::Reading::follow(const QString& path)
{
    if (!overtaken())
        m_list.m_path = path;
}

void TrackList::Reading::endSorting()
{
    if (overtaken())
        return;
    m_list.m_rows.sortBy(1);
    m_list.m_rows.setSorted(false);
}

void TrackList::Reading::take(std::vector<ListItem> rows, bool vouched)
{
    if (overtaken())
        return;
    m_list.m_entries = vouched ? static_cast<qsizetype>(rows.size()) : 0;
    m_list.setRows(std::move(rows));
    m_verdict = vouched ? Content::Own : Content::Stale;
}

void TrackList::Reading::finish()
{
    if (!overtaken() && m_list.content() == Content::Reading)
        m_list.setContent(m_verdict);
}

bool TrackList::isOf(const QString& path) const
{
    return !m_path.isEmpty() && FileDirPath::isSameFile(m_path, path);
}

TrackList::Reading TrackList::open(const QString& path)
{
    empty(path, Content::Reading);
    return {*this, m_number};
}

void TrackList::begin(const QString& path, Content content)
{
    empty(path, content);
}

void TrackList::close()
{
    empty({}, Content::None);
}

void TrackList::doubt()
{
    if (content() == Content::Own)
        setContent(Content::Stale);
}

void TrackList::takeOwn(std::vector<ListItem> rows, const QString& lines, qsizetype entries)
{
    m_rows.clear();
    setLines(lines, m_path);
    setRows(std::move(rows));
    m_entries = entries;
    setContent(Content::Own);
}

void TrackList::setLines(const QString& text, const QString& path)
{
    m_lines.Text = text;
    m_linesOf = path;
}

void TrackList::clearLines()
{
    setLines({}, {});
}

void TrackList::empty(const QString& path, Content content)
{
    ++m_number;
    m_path = path;
    m_entries = 0;
    m_rows.clear();
    m_rows.setSorted(false);
    setContent(content);
}

void TrackList::setContent(Content content)
{
    m_rows.Ghosted = content == Content::Stale && m_rows.count() > 0;
    m_content = content;
}

void TrackList::setRows(std::vector<ListItem> rows)
{
    const ListView::Batch together(m_rows);
    for (ListItem& row : rows)
        m_rows.append(std::move(row));
}

} // namespace orvantine
