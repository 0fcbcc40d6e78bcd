#include "playlists/PlaylistText.h"
#include "runner/Run.h"

#include "support/Printing.h"
#include "support/Quoting.h"

#include <QDir>
#include <QHash>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <utility>

namespace orvantine::scenario {

using namespace Qt::StringLiterals;

namespace {

using fake::quoted;

QString yesNo(bool value)
{
    return value ? u"yes"_s : u"no"_s;
}

QString nameOf(WindowState state)
{
    switch (state) {
    case WindowState::Normal:
        return u"normal"_s;
    case WindowState::Minimized:
        return u"minimized"_s;
    case WindowState::Maximized:
        return u"maximized"_s;
    }
    return u"?"_s;
}

QString nameOf(MousePointer pointer)
{
    switch (pointer) {
    case MousePointer::Default:
        return u"default"_s;
    case MousePointer::Hourglass:
        return u"hourglass"_s;
    case MousePointer::ArrowHourglass:
        return u"arrow-hourglass"_s;
    }
    return u"?"_s;
}

QString quotedList(const QStringList& texts)
{
    QStringList parts;
    for (const QString& text : texts)
        parts += quoted(text);
    return parts.join(u' ');
}

using Getter = std::function<QString()>;

void addTexts(QHash<QString, Getter>& all, Control& control)
{
    if (auto* item = dynamic_cast<MenuItem*>(&control)) {
        all[u"Caption"_s] = [item] { return quoted(item->Caption.value()); };
        all[u"Checked"_s] = [item] { return yesNo(item->Checked.value()); };
        all[u"Shortcut"_s] = [item] { return quoted(item->Shortcut); };
        all[u"Available"_s] = [item] { return yesNo(item->available()); };
    } else if (auto* label = dynamic_cast<Label*>(&control)) {
        all[u"Caption"_s] = [label] { return quoted(label->Caption.value()); };
        all[u"ForeColor"_s] = [label] { return fake::nameOf(label->ForeColor.value()); };
    } else if (auto* button = dynamic_cast<Button*>(&control)) {
        all[u"Caption"_s] = [button] { return quoted(button->Caption.value()); };
    } else if (auto* box = dynamic_cast<CheckBox*>(&control)) {
        all[u"Caption"_s] = [box] { return quoted(box->Caption.value()); };
        all[u"Value"_s] = [box] { return yesNo(box->Value.value()); };
    } else if (auto* field = dynamic_cast<TextBox*>(&control)) {
        all[u"Text"_s] = [field] { return quoted(field->Text.value()); };
        all[u"SelStart"_s] = [field] { return QString::number(field->SelStart.value()); };
        all[u"SelLength"_s] = [field] { return QString::number(field->SelLength.value()); };
    } else if (auto* picture = dynamic_cast<PictureBox*>(&control)) {
        all[u"Picture"_s] = [picture] { return quoted(picture->Picture.value()); };
        all[u"BackColor"_s] = [picture] { return u"0x"_s + QString::number(picture->BackColor.value(), 16).toUpper(); };
    }
}

void addValues(QHash<QString, Getter>& all, Control& control)
{
    if (auto* slider = dynamic_cast<Slider*>(&control)) {
        all[u"Min"_s] = [slider] { return QString::number(slider->Min.value()); };
        all[u"Max"_s] = [slider] { return QString::number(slider->Max.value()); };
        all[u"Value"_s] = [slider] { return QString::number(slider->Value.value()); };
        all[u"Text"_s] = [slider] { return quoted(slider->Text.value()); };
    } else if (auto* bar = dynamic_cast<ProgressBar*>(&control)) {
        all[u"Min"_s] = [bar] { return QString::number(bar->Min.value()); };
        all[u"Max"_s] = [bar] { return QString::number(bar->Max.value()); };
        all[u"Value"_s] = [bar] { return QString::number(bar->Value.value()); };
    } else if (auto* lines = dynamic_cast<ListBox*>(&control)) {
        all[u"List"_s] = [lines] { return quotedList(lines->List.value()); };
        all[u"ListCount"_s] = [lines] { return QString::number(lines->List.value().size()); };
        all[u"ListIndex"_s] = [lines] { return QString::number(lines->ListIndex.value()); };
        all[u"Checked"_s] = [lines] {
            QStringList marks;
            for (const bool mark : lines->Checked.value())
                marks += yesNo(mark);
            return marks.join(u' ');
        };
        if (auto* combo = dynamic_cast<ComboBox*>(lines))
            all[u"Text"_s] = [combo] { return quoted(combo->Text.value()); };
    } else if (auto* timer = dynamic_cast<Timer*>(&control)) {
        all[u"Interval"_s] = [timer] { return QString::number(timer->Interval.count()); };
    } else if (auto* animation = dynamic_cast<Animation*>(&control)) {
        all[u"Running"_s] = [animation] { return yesNo(animation->Running.value()); };
    } else if (auto* files = dynamic_cast<FileList*>(&control)) {
        all[u"Path"_s] = [files] { return quoted(files->Path); };
        all[u"Pattern"_s] = [files] { return quoted(files->Pattern); };
    } else if (auto* tree = dynamic_cast<FolderTree*>(&control)) {
        all[u"RootCaption"_s] = [tree] { return quoted(tree->RootCaption.value()); };
        all[u"SelectedFolder"_s] = [tree] { return quoted(tree->SelectedFolder.value()); };
    } else if (auto* list = dynamic_cast<ListView*>(&control)) {
        all[u"Count"_s] = [list] { return QString::number(list->count()); };
        all[u"SelectedRow"_s] = [list] { return QString::number(list->selectedRow()); };
        all[u"GridLines"_s] = [list] { return yesNo(list->GridLines.value()); };
        all[u"FontName"_s] = [list] { return quoted(list->FontName.value()); };
        all[u"FontSize"_s] = [list] { return QString::number(list->FontSize.value()); };
        all[u"Sorted"_s] = [list] { return yesNo(list->sorted()); };
        all[u"SortColumn"_s] = [list] { return QString::number(list->sortColumn()); };
    }
}

QHash<QString, Getter> propertiesOf(Control& control)
{
    QHash<QString, Getter> all;
    all[u"Visible"_s] = [&control] { return yesNo(control.Visible.value()); };
    all[u"Enabled"_s] = [&control] { return yesNo(control.Enabled.value()); };
    all[u"Tag"_s] = [&control] { return quoted(control.Tag); };
    all[u"ToolTipText"_s] = [&control] { return quoted(control.ToolTipText.value()); };
    all[u"Left"_s] = [&control] { return QString::number(control.Left.value()); };
    all[u"Top"_s] = [&control] { return QString::number(control.Top.value()); };
    all[u"Width"_s] = [&control] { return QString::number(control.Width.value()); };
    all[u"Height"_s] = [&control] { return QString::number(control.Height.value()); };
    addTexts(all, control);
    addValues(all, control);
    return all;
}

QHash<QString, Getter> propertiesOf(Form& form)
{
    QHash<QString, Getter> all;
    all[u"Visible"_s] = [&form] { return yesNo(form.Visible.value()); };
    all[u"Caption"_s] = [&form] { return quoted(form.Caption.value()); };
    all[u"Tag"_s] = [&form] { return quoted(form.Tag); };
    all[u"State"_s] = [&form] { return nameOf(form.State.value()); };
    all[u"Pointer"_s] = [&form] { return nameOf(form.Pointer.value()); };
    all[u"Left"_s] = [&form] { return QString::number(form.Left.value()); };
    all[u"Top"_s] = [&form] { return QString::number(form.Top.value()); };
    all[u"Width"_s] = [&form] { return QString::number(form.Width.value()); };
    all[u"Height"_s] = [&form] { return QString::number(form.Height.value()); };
    return all;
}

/// "tDatum.Caption", "Info.BMail.Visible", "Root.State": the value, or a mistake.
QString propertyValue(Run& run, const QString& written)
{
    const qsizetype cut = written.lastIndexOf(u'.');
    const QString name = written.left(cut);
    const QString property = written.mid(cut + 1);
    if (cut <= 0) {
        run.fail(u"\"%1\" names no property of a control"_s.arg(written));
        return {};
    }
    QHash<QString, Getter> all;
    const std::vector<Form*> forms = formsOf(run.root());
    const auto form =
        std::find_if(forms.begin(), forms.end(), [&](const Form* one) { return one != nullptr && one->name == name; });
    if (form != forms.end()) {
        all = propertiesOf(**form);
    } else if (run.currentForm().name == name) {
        all = propertiesOf(run.currentForm());
    } else if (Control* control = run.control(name)) {
        all = propertiesOf(*control);
    } else {
        return {};
    }
    const auto getter = all.constFind(property);
    if (getter == all.constEnd()) {
        QStringList names = all.keys();
        names.sort();
        run.fail(u"%1 has no property \"%2\"; there are: %3"_s.arg(name, property, names.join(u", "_s)));
        return {};
    }
    return getter.value()();
}

QStringList property(Run& run, const Command& command)
{
    return {propertyValue(run, command.words[1].keyword())};
}

QStringList state(Run& run, const Command& command)
{
    // The block names what it wants to see: each line begins with the property.
    QStringList lines;
    for (const RawLine& line : command.text) {
        if (line.text.isEmpty() || line.text.startsWith(u'#'))
            continue;
        const QString name = line.text.section(u' ', 0, 0);
        lines += name + u' ' + propertyValue(run, name);
        if (run.failed())
            return {};
    }
    return lines;
}

QStringList rows(Run& run, const Command& command)
{
    const ListView* list = run.list(run.text(command, 2));
    return list == nullptr ? QStringList() : fake::rowLines(*list);
}

QStringList columns(Run& run, const Command& command)
{
    const ListView* list = run.list(run.text(command, 2));
    return list == nullptr ? QStringList() : fake::columnLines(*list);
}

QStringList lines(Run& run, const Command& command)
{
    auto* box = dynamic_cast<ListBox*>(run.control(run.text(command, 2)));
    if (box == nullptr) {
        run.fail(u"%1 is no list of lines"_s.arg(command.words[2].keyword()));
        return {};
    }
    QStringList printed;
    const QList<bool> marks = box->Checked.value();
    for (qsizetype i = 0; i < box->List.value().size(); ++i) {
        const QString mark = i < marks.size() ? (marks[i] ? u"[x] "_s : u"[ ] "_s) : QString();
        printed += (box->ListIndex.value() == i ? u"> "_s : QString()) + mark + quoted(box->List.value()[i]);
    }
    return printed;
}

QStringList boxes(Run& run, const Command&)
{
    return fake::messageLines(run.desktop().messages.take());
}

const QHash<QString, QStringList>& callKinds()
{
    static const QHash<QString, QStringList> kinds{
        {u"player"_s, {u"Mediaplayer."_s}},
        {u"mediainfo"_s, {u"MediaInfo."_s}},
        {u"launcher"_s, {u"launcher."_s}},
        {u"tray"_s, {u"tray."_s}},
        {u"mixer"_s, {u"mixer."_s}},
        {u"cues"_s, {u"cue."_s}},
        {u"files"_s, fake::LoggingFiles::actions()},
        {u"allfiles"_s, {u"files."_s}},
        {u"forms"_s, {u"forms."_s}},
        {u"clipboard"_s, {u"clipboard."_s}},
        {u"settings"_s, {u"settings.createKey"_s, u"settings.setValue"_s, u"settings.removeValue"_s}},
        {u"allsettings"_s, {u"settings."_s}},
        {u"choosers"_s, {u"choosers."_s}},
        {u"messages"_s, {u"messages."_s}},
        {u"instance"_s, {u"instance."_s}},
        {u"fonts"_s, {u"fonts."_s}},
        {u"volumes"_s, {u"volumes."_s}},
        {u"tags"_s, {u"tags."_s}},
        {u"events"_s, {u"events."_s}},
        {u"zip"_s, {u"zip."_s}},
    };
    return kinds;
}

QStringList calls(Run& run, const Command& command)
{
    QHash<QString, qsizetype> from;
    for (qsizetype i = 2; i < command.words.size(); ++i) {
        const QString kind = command.words[i].keyword();
        if (!callKinds().contains(kind)) {
            QStringList names = callKinds().keys();
            names.sort();
            run.fail(u"there are no calls of the kind \"%1\"; there are: %2"_s.arg(kind, names.join(u", "_s)));
            return {};
        }
        from[kind] = run.seenCalls.value(kind, 0);
    }
    const QStringList& log = run.desktop().log.lines();
    QStringList found;
    for (qsizetype at = 0; at < log.size(); ++at) {
        for (auto kind = from.constBegin(); kind != from.constEnd(); ++kind) {
            const QStringList& starts = callKinds()[kind.key()];
            if (at >= kind.value() && std::any_of(starts.begin(), starts.end(),
                                                  [&](const QString& start) { return log[at].startsWith(start); })) {
                found += log[at];
                break;
            }
        }
    }
    for (auto kind = from.constBegin(); kind != from.constEnd(); ++kind)
        run.seenCalls[kind.key()] = log.size();
    return found;
}

QStringList contents(Run& run, const Command& command)
{
    const QByteArray path = run.path(command, 2);
    struct stat info = {};
    if (::stat(path.constData(), &info) != 0)
        return {u"(missing)"_s};
    QFile file(QFile::decodeName(path));
    if (!S_ISREG(info.st_mode) || !file.open(QIODevice::ReadOnly))
        return {u"(no file)"_s};
    const QByteArray bytes = file.readAll();
    QStringList printed;
    for (qsizetype at = 0; at < bytes.size();) {
        const qsizetype feed = bytes.indexOf('\n', at);
        const qsizetype end = feed < 0 ? bytes.size() : feed + 1;
        printed += fake::quotedBytes(bytes.mid(at, end - at));
        at = end;
    }
    return printed.isEmpty() ? QStringList{u"\"\""_s} : printed;
}

void addTree(const QByteArray& folder, const QByteArray& prefix, bool sizes, QStringList& printed)
{
    QDir dir(QFile::decodeName(folder));
    QStringList names = dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    std::sort(names.begin(), names.end());
    for (const QString& name : names) {
        const QByteArray path = folder + '/' + QFile::encodeName(name);
        const QByteArray below = prefix + QFile::encodeName(name);
        struct stat info = {};
        if (::lstat(path.constData(), &info) != 0)
            continue;
        if (S_ISDIR(info.st_mode)) {
            printed += fake::quotedBytes(below + '/');
            addTree(path, below + '/', sizes, printed);
        } else if (S_ISLNK(info.st_mode)) {
            std::array<char, 4096> target = {};
            const ssize_t length = ::readlink(path.constData(), target.data(), target.size());
            printed +=
                fake::quotedBytes(below) + u" -> "_s +
                fake::quotedBytes(QByteArray(target.data(), static_cast<qsizetype>(std::max<ssize_t>(length, 0))));
        } else if (S_ISFIFO(info.st_mode)) {
            printed += fake::quotedBytes(below) + u" fifo"_s;
        } else {
            printed += fake::quotedBytes(below) + (sizes ? u' ' + QString::number(info.st_size) : QString());
        }
    }
}

QStringList tree(Run& run, const Command& command)
{
    QStringList printed;
    addTree(run.path(command, 2), {}, false, printed);
    return printed;
}

QStringList sizes(Run& run, const Command& command)
{
    QStringList printed;
    addTree(run.path(command, 2), {}, true, printed);
    return printed;
}

/// In the order of the archive.
QStringList archive(Run& run, const Command& command)
{
    QFile file(QFile::decodeName(run.path(command, 2)));
    if (!file.open(QIODevice::ReadOnly))
        return {u"(missing)"_s};
    const auto entries = fake::FakeArchive::unpacked(file.readAll());
    if (!entries)
        return {u"(no archive)"_s};
    QStringList printed;
    for (const auto& packed : *entries)
        printed += quoted(packed.entry.name);
    return printed;
}

QStringList modified(Run& run, const Command& command)
{
    struct stat info = {};
    if (::stat(run.path(command, 2).constData(), &info) != 0)
        return {u"missing"_s};
    return {QDateTime::fromSecsSinceEpoch(info.st_mtim.tv_sec).toString(u"yyyy-MM-dd hh:mm:ss"_s)};
}

QStringList rights(Run& run, const Command& command)
{
    struct stat info = {};
    if (::stat(run.path(command, 2).constData(), &info) != 0)
        return {u"missing"_s};
    return {QString::number(info.st_mode & 07777U, 8).rightJustified(4, u'0')};
}

QStringList keys(Run& run, const Command& command)
{
    if (command.words.size() < 3 || command.words.size() > 4) {
        run.fail(u"the form is: keys SECTION [FILE]"_s);
        return {};
    }
    const QString section = run.text(command, 2);
    const QString file = command.words.size() > 3
                             ? QString::fromUtf8(run.path(command, 3))
                             : run.desktop().folders.applicationData + u"/Orvanten Manager/Orvantine.dat"_s;
    // A reader of its own: it sees the file as it stands on the disk.
    ProfileStore profiles(run.desktop().disk());
    QStringList printed;
    for (const QString& key : profiles.keys(file, section))
        printed += quoted(key) + u' ' + quoted(profiles.value(file, section, key));
    return printed;
}

QStringList settings(Run& run, const Command& command)
{
    Hive hive = Hive::CurrentUser;
    QString key = u"Software\\Verdanis\\Orvant Manager"_s;
    if (command.words.size() > 2)
        key = run.text(command, 2);
    QStringList printed;
    for (const QString& name : run.desktop().settings.names(hive, key))
        printed += name + u' ' + fake::described(*run.desktop().settings.peek(hive, key, name));
    return printed;
}

QStringList setting(Run& run, const Command& command)
{
    const std::optional<SettingValue> value =
        run.desktop().settings.peek(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, run.text(command, 2));
    return {value ? fake::described(*value) : u"none"_s};
}

QStringList forms(Run& run, const Command&)
{
    QStringList printed;
    for (const Form* form : formsOf(run.root()))
        if (form != nullptr && form->Visible.value())
            printed += run.desktop().forms().modal().contains(form->name) ? form->name + u" modal"_s : form->name;
    return printed;
}

QStringList window(Run& run, const Command&)
{
    const Root& root = run.root();
    return {u"caption "_s + quoted(root.Caption.value()),
            u"visible "_s + yesNo(root.Visible.value()),
            u"state "_s + nameOf(root.State.value()),
            u"left %1 top %2 width %3 height %4"_s.arg(root.Left.value())
                .arg(root.Top.value())
                .arg(root.Width.value())
                .arg(root.Height.value()),
            u"pointer "_s + nameOf(root.Pointer.value()),
            u"tag "_s + quoted(root.Tag)};
}

QStringList clipboard(Run& run, const Command&)
{
    return {quoted(run.desktop().clipboard.content)};
}

QStringList mixer(Run& run, const Command& command)
{
    return {QString::number(run.desktop().mixer.lines.value(run.number(command, 2)).level)};
}

QStringList tray(Run& run, const Command&)
{
    const fake::FakeTray& there = run.desktop().tray();
    return {there.shown() ? u"shown "_s + quoted(there.tip()) : u"hidden"_s};
}

QStringList ended(Run& run, const Command&)
{
    return {yesNo(run.started && run.desktop().events().ended())};
}

/// A fixed field of a record, without the blanks that fill it up.
template <std::size_t width>
QString field(const char (&bytes)[width])
{
    QByteArray text(bytes, width);
    while (text.endsWith(' '))
        text.chop(1);
    return fake::quotedBytes(text);
}

QStringList written(Run& run, const Command&)
{
    QStringList printed;
    for (const Mp3Record& record : std::exchange(run.desktop().tags.written, {})) {
        printed += u"title "_s + field(record.title) + u" artist "_s + field(record.artist) + u" album "_s +
                   field(record.album) + u" year "_s + field(record.year) + u" comment "_s + field(record.comment) +
                   u" genre %1 track %2 flags %3 %4 bitrate %5"_s.arg(record.genre)
                       .arg(record.track)
                       .arg(record.trackFlagA)
                       .arg(record.trackFlagB)
                       .arg(record.bitRate);
        printed += u"extended title "_s + field(record.extendedTitle) + u" artist "_s + field(record.extendedArtist) +
                   u" album "_s + field(record.extendedAlbum) + u" year "_s + field(record.extendedYear) +
                   u" comment "_s + field(record.extendedComment) + u" genre "_s + field(record.extendedGenre) +
                   u" track "_s + field(record.extendedTrack) + u" bitrate "_s + field(record.extendedBitRate);
    }
    return printed;
}

QStringList player(Run& run, const Command&)
{
    const fake::FakePlayer& there = run.desktop().mediaplayer();
    return {u"url "_s + quoted(there.URL()), u"status "_s + quoted(there.status()),
            u"playState "_s + QString::number(static_cast<int>(there.playState())),
            u"current "_s + quoted(there.currentSourceURL())};
}

QStringList clock(Run& run, const Command&)
{
    return {run.desktop().events().now().toString(u"yyyy-MM-dd hh:mm:ss.zzz"_s)};
}

} // namespace

const QList<SubjectEntry>& subjects()
{
    static const QList<SubjectEntry> all{
        {u"CONTROL.PROPERTY"_s, u"CONTROL.PROPERTY VALUE"_s, 0, false, property},
        {u"state"_s, u"state … end"_s, 0, true, state},
        {u"rows"_s, u"rows LIST … end"_s, 1, true, rows},
        {u"columns"_s, u"columns LIST … end"_s, 1, true, columns},
        {u"lines"_s, u"lines LISTBOX … end"_s, 1, true, lines},
        {u"boxes"_s, u"boxes … end"_s, 0, true, boxes},
        {u"calls"_s, u"calls KIND … … end"_s, -1, true, calls},
        {u"bytes"_s, u"bytes PATH … end"_s, 1, true, contents},
        {u"tree"_s, u"tree PATH … end"_s, 1, true, tree},
        {u"sizes"_s, u"sizes PATH … end"_s, 1, true, sizes},
        {u"archive"_s, u"archive PATH … end"_s, 1, true, archive},
        {u"keys"_s, u"keys SECTION [FILE] … end"_s, -1, true, keys},
        {u"settings"_s, u"settings [KEY] … end"_s, -1, true, settings},
        {u"forms"_s, u"forms … end"_s, 0, true, forms},
        {u"window"_s, u"window … end"_s, 0, true, window},
        {u"player"_s, u"player … end"_s, 0, true, player},
        {u"written"_s, u"written … end"_s, 0, true, written},
        {u"time"_s, u"time PATH YYYY-MM-DD HH:MM:SS"_s, 1, false, modified},
        {u"mode"_s, u"mode PATH OCTAL"_s, 1, false, rights},
        {u"setting"_s, u"setting NAME TYPE VALUE"_s, 1, false, setting},
        {u"clipboard"_s, u"clipboard \"TEXT\""_s, 0, false, clipboard},
        {u"mixer"_s, u"mixer LINE LEVEL"_s, 1, false, mixer},
        {u"tray"_s, u"tray shown \"TIP\" or tray hidden"_s, 0, false, tray},
        {u"ended"_s, u"ended yes|no"_s, 0, false, ended},
        {u"clock"_s, u"clock YYYY-MM-DD HH:MM:SS.ZZZ"_s, 0, false, clock},
    };
    return all;
}

} // namespace orvantine::scenario
