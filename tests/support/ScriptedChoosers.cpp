#include "support/ScriptedChoosers.h"

#include "playlists/PlaylistText.h"

#include <algorithm>
#include <utility>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

QString nameOf(ChooserKind kind)
{
    switch (kind) {
    case ChooserKind::Open:
        return u"open"_s;
    case ChooserKind::Save:
        return u"save"_s;
    case ChooserKind::Folder:
        return u"folder"_s;
    case ChooserKind::Font:
        return u"font"_s;
    }
    return u"?"_s;
}

ChosenFile chosen(const QString& path)
{
    const qsizetype cut = std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\'));
    return {path.left(std::max<qsizetype>(cut, 0)), path.mid(cut + 1)};
}

QString described(const FileRequest& request)
{
    return u"title %1 folder %2 name %3 filter %4 extension %5"_s.arg(quoted(request.title), quoted(request.folder),
                                                                      quoted(request.fileName), quoted(request.filter),
                                                                      quoted(request.defaultExtension));
}

} // namespace

ScriptedChoosers::ScriptedChoosers(CallLog& log, Complaints& complaints) : m_log(log), m_complaints(complaints) {}

std::optional<ScriptedChoice> ScriptedChoosers::next(ChooserKind kind, const QString& line)
{
    const bool works = m_log.call(u"choosers.%1 %2"_s.arg(nameOf(kind), line));
    std::optional<ScriptedChoice> choice = queue.pop();
    if (!choice && Unscripted)
        choice = Unscripted(kind);
    if (!choice) {
        m_complaints.add(u"a chooser came up that nobody scripted: %1 %2"_s.arg(nameOf(kind), line));
        return std::nullopt;
    }
    if (choice->kind != kind) {
        m_complaints.add(
            u"a chooser came up (%1 %2), but %3 was scripted"_s.arg(nameOf(kind), line, nameOf(choice->kind)));
        return std::nullopt;
    }
    if (choice->meanwhile)
        choice->meanwhile();
    if (!works)
        return std::nullopt;
    return choice;
}

std::optional<ChosenFile> ScriptedChoosers::openFile(const FileRequest& request)
{
    const std::optional<ScriptedChoice> choice = next(ChooserKind::Open, described(request));
    return choice ? choice->file : std::nullopt;
}

std::optional<ChosenFile> ScriptedChoosers::saveFile(const FileRequest& request)
{
    const std::optional<ScriptedChoice> choice = next(ChooserKind::Save, described(request));
    return choice ? choice->file : std::nullopt;
}

QString ScriptedChoosers::folder(const FolderRequest& request)
{
    const std::optional<ScriptedChoice> choice =
        next(ChooserKind::Folder, u"prompt %1 root %2 folder %3"_s.arg(quoted(request.prompt),
                                                                       QString::number(static_cast<int>(request.root)),
                                                                       quoted(request.folder)));
    return choice ? choice->folder : QString();
}

std::optional<FontChoice> ScriptedChoosers::font(const FontChoice& present)
{
    const std::optional<ScriptedChoice> choice =
        next(ChooserKind::Font, u"%1 %2"_s.arg(quoted(present.family), QString::number(present.size)));
    return choice ? choice->font : std::nullopt;
}

void ScriptedChoosers::open(const QString& path)
{
    queue.push({ChooserKind::Open, chosen(path), {}, {}, {}});
}

void ScriptedChoosers::save(const QString& path)
{
    queue.push({ChooserKind::Save, chosen(path), {}, {}, {}});
}

void ScriptedChoosers::chooseFolder(const QString& path)
{
    queue.push({ChooserKind::Folder, {}, path, {}, {}});
}

void ScriptedChoosers::chooseFont(const FontChoice& font)
{
    queue.push({ChooserKind::Font, {}, {}, font, {}});
}

void ScriptedChoosers::cancel(ChooserKind kind)
{
    queue.push({kind, {}, {}, {}, {}});
}

void ScriptedChoosers::complainOfUnused()
{
    for (const ScriptedChoice& choice : queue.waiting())
        m_complaints.add(u"no chooser of the kind %1 came up"_s.arg(nameOf(choice.kind)));
    queue.clear();
}

} // namespace orvantine::fake
