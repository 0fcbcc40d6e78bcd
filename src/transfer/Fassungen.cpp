#include "transfer/Fassungen.h"

#include "app/Command.h"
#include "app/Help.h"
#include "app/Root.h"
#include "app/TextLimits.h"
#include "transfer/BringBack.h"
#include "transfer/VersionDifference.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <utility>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

struct Column
{
    const char16_t* title;
    Twips width;
};

constexpr std::array<Column, 4> FileColumns{
    {{u"Name", 4200}, {u"Art", 1400}, {u"Fassungen", 1300}, {u"Zuletzt geändert", 2400}}};
constexpr std::array<Column, 5> VersionColumns{
    {{u"Stand bis", 2400}, {u"Größe", 1200}, {u"Titel", 800}, {u"Ersetzt durch", 3300}, {u"Gegenüber jetzt", 2500}}};

namespace VersionItem {
constexpr int Tracks = 2;
constexpr int Difference = 4;
} // namespace VersionItem

/// A version that is larger is not taken apart to be compared.
constexpr qint64 LargestCompared = qint64{32} << 20;

template <std::size_t Count>
void setColumns(ListView& list, const std::array<Column, Count>& columns)
{
    list.clear();
    list.clearColumns();
    for (const Column& column : columns)
        list.addColumn(QString::fromUtf16(column.title), column.width);
}

QString sizeText(qint64 bytes)
{
    constexpr double Kilo = 1024;
    const QLocale german(QLocale::German);
    if (bytes < qint64{1024})
        return u"%1 Bytes"_s.arg(bytes);
    const double kilobytes = static_cast<double>(bytes) / Kilo;
    return kilobytes < Kilo ? german.toString(kilobytes, 'f', 1) + u" KB"_s
                            : german.toString(kilobytes / Kilo, 'f', 1) + u" MB"_s;
}

/// Null while none is selected.
const ShelvedFile* selectedFile(const Fassungen& form)
{
    const int row = form.LDateien.selectedRow();
    return row == 0 ? nullptr : &form.files[form.shown[static_cast<std::size_t>(row) - 1]];
}

std::optional<ChosenVersion> chosenVersion(const Fassungen& form)
{
    const ShelvedFile* const file = selectedFile(form);
    const int row = form.LFassungen.selectedRow();
    if (file == nullptr || row == 0)
        return {};
    return ChosenVersion{file->path, file->name, file->kind, file->versions[static_cast<std::size_t>(row) - 1]};
}

void enableButtons(Fassungen& form)
{
    const bool chosen = chosenVersion(form).has_value();
    for (Button* button : {&form.bAnsehen, &form.bZurückholen, &form.bSpeichernUnter})
        button->Enabled = chosen;
}

/// The versions of the selected file.
void showVersions(Fassungen& form)
{
    form.present.reset();
    form.compared.clear();
    const ShelvedFile* const file = selectedFile(form);
    form.LPfad.Caption = file != nullptr ? file->path : QString();
    {
        ListView& list = form.LFassungen;
        const ListView::Batch together(list);
        list.clear();
        if (file != nullptr)
            for (const EarlierVersion& version : file->versions) {
                ListItem item;
                item.Text = timeText(version.when);
                item.SubItems = {{.Text = sizeText(version.size)},
                                 {.Text = QString()},
                                 {.Text = version.reason.isEmpty() ? u"nicht bekannt"_s : version.reason},
                                 {.Text = QString()}};
                list.append(std::move(item));
            }
    }
    form.compared.resize(static_cast<std::size_t>(form.LFassungen.count()), false);
    form.LFassungen.select(1);
    enableButtons(form);
}

bool passes(const ShelvedFile& file, const QString& filter)
{
    return file.name.contains(filter, Qt::CaseInsensitive) || file.path.contains(filter, Qt::CaseInsensitive);
}

/// The files that pass the filter. The one at `path` is selected, or else the first.
void showFiles(Fassungen& form, const QString& path)
{
    const QString filter = form.tFilter.Text.value().trimmed();
    form.shown.clear();
    int selected = 1;
    {
        ListView& list = form.LDateien;
        const ListView::Batch together(list);
        list.clear();
        for (std::size_t index = 0; index < form.files.size(); ++index) {
            const ShelvedFile& file = form.files[index];
            if (!passes(file, filter))
                continue;
            ListItem item;
            item.Text = file.name;
            item.SubItems = {{.Text = kindText(file.kind)},
                             {.Text = QString::number(file.versions.size())},
                             {.Text = timeText(file.versions.front().when)}};
            list.append(std::move(item));
            form.shown.push_back(index);
            if (file.path == path)
                selected = list.count();
        }
    }
    if (form.LDateien.select(selected))
        form.LDateien.EnsureVisible(selected);
    showVersions(form);
}

/// Reads anew what was kept.
void fill(Root& root, Fassungen& form)
{
    const ShelvedFile* const before = selectedFile(form);
    const QString path = before != nullptr ? before->path : QString();
    form.LDateien.clear();
    std::optional<EarlierVersionList> list = root.services.earlierVersions.list();
    const QString limits = u"Entfernt wird, was älter als %1 Tage ist, und über %2 MB das Älteste; die neueste Fassung "
                           u"jeder Datei bleibt."_s.arg(EarlierVersions::MostDays)
                               .arg(EarlierVersions::MostBytes >> 20);
    form.LPlatz.Caption = list ? u"Alle Fassungen zusammen belegen %1. "_s.arg(sizeText(list->room)) + limits : limits;
    if (!list)
        form.LMeldung.Caption = u"Das Verzeichnis der früheren Fassungen kann nicht gelesen werden."_s;
    form.files = list ? shelve(root, std::move(list->versions)) : std::vector<ShelvedFile>();
    if (list && form.files.empty())
        form.LMeldung.Caption = u"Noch wurde keine Playliste, kein CD-Cover und keine Datenbank ersetzt."_s;
    showFiles(form, path);
}

/// What stands at the place of the file now. True if it is not what was looked at last.
bool readPresent(Root& root, Fassungen& form, const ShelvedFile& file)
{
    const std::optional<FileStamp> stamp = root.files.stamp(file.path);
    if (form.present && form.present->stamp == stamp)
        return false;
    Fassungen::Present present{.stamp = stamp};
    if (stamp && stamp->size <= LargestCompared) {
        ReadBytes read = root.files.readBytes(file.path);
        present.outcome = read.outcome;
        present.bytes = std::move(read.bytes);
        present.lines = linesOf(root, file.kind, file.path, present.bytes);
    } else if (stamp) {
        present.outcome = ReadOutcome::Failed;
    }
    form.present = std::move(present);
    return true;
}

QString differenceFrom(const Fassungen::Present& present, VersionKind kind, const QByteArray& bytes,
                       const QStringList& lines)
{
    if (present.outcome == ReadOutcome::Missing)
        return u"fehlt jetzt"_s;
    if (present.outcome == ReadOutcome::Failed)
        return u"jetzt nicht lesbar"_s;
    if (present.bytes == bytes)
        return u"wie jetzt"_s;
    if (kind == VersionKind::Cover)
        return u"anderes Bild"_s;
    QString text = differenceText(versionDifference(present.lines, lines));
    if (!text.isEmpty())
        return text;
    return kind == VersionKind::List ? u"Titel wie jetzt"_s : u"Listen wie jetzt"_s;
}

void compare(Root& root, Fassungen& form, const ShelvedFile& file, int row)
{
    const EarlierVersion& version = file.versions[static_cast<std::size_t>(row) - 1];
    QString tracks;
    QString difference = u"zu groß zum Vergleichen"_s;
    if (version.size <= LargestCompared) {
        const ReadBytes read = root.services.earlierVersions.bytes(version.handle);
        const QStringList lines = linesOf(root, file.kind, file.path, read.bytes);
        if (read.done() && file.kind != VersionKind::Cover)
            tracks = QString::number(lines.size());
        difference = read.done() ? differenceFrom(*form.present, file.kind, read.bytes, lines) : u"nicht mehr lesbar"_s;
    }
    form.LFassungen.setSubItem(row, VersionItem::Tracks, tracks);
    form.LFassungen.setSubItem(row, VersionItem::Difference, difference);
    form.compared[static_cast<std::size_t>(row) - 1] = true;
}

/// The next row in sight that tells nothing yet; 0 for none.
int nextToCompare(const Fassungen& form)
{
    constexpr int RowsInSight = 60;
    const auto open = [&form](int row) { return !form.compared[static_cast<std::size_t>(row) - 1]; };
    const int selected = form.LFassungen.selectedRow();
    if (selected > 0 && open(selected))
        return selected;
    const int first = std::max(1, form.LFassungen.TopRow());
    const int last = std::min(form.LFassungen.count(), first + RowsInSight);
    for (int row = first; row <= last; ++row)
        if (open(row))
            return row;
    return 0;
}

void tVergleich_Tick(Root& root, Fassungen& form)
{
    constexpr qint64 BytesAtOnce = qint64{256} << 10;
    constexpr int RowsAtOnce = 8;
    const ShelvedFile* const file = selectedFile(form);
    if (file == nullptr)
        return;
    if (readPresent(root, form, *file))
        std::fill(form.compared.begin(), form.compared.end(), false);
    qint64 bytes = 0;
    for (int done = 0; done < RowsAtOnce && bytes < BytesAtOnce; ++done) {
        const int row = nextToCompare(form);
        if (row == 0)
            return;
        compare(root, form, *file, row);
        bytes += file->versions[static_cast<std::size_t>(row) - 1].size + form.present->bytes.size();
    }
}

/// Hostile bytes are text without effect; what nobody reads to its end is cut.
QString textFor(const QStringList& lines)
{
    constexpr qsizetype MostLines = 40'000;
    constexpr qsizetype LongestLine = 1'000;
    QStringList shown;
    const qsizetype count = std::min(lines.size(), MostLines);
    shown.reserve(count + 1);
    for (qsizetype number = 0; number < count; ++number) {
        QString line = cutTo(lines[number], LongestLine);
        for (QChar& character : line)
            if (!character.isPrint() && !character.isSurrogate())
                character = u' ';
        shown += u"%1  "_s.arg(number + 1, 5) + line;
    }
    if (count < lines.size())
        shown += u"... und %1 weitere"_s.arg(lines.size() - count);
    return shown.join(u'\n');
}

void bAnsehen_Click(Root& root, const ChosenVersion& chosen)
{
    Command command(root);
    const std::optional<QByteArray> bytes = readVersion(root, command, chosen.version);
    if (!bytes || command.ended())
        return;
    Fassung& form = *root.fassung;
    const bool picture = chosen.kind == VersionKind::Cover;
    const QStringList lines = linesOf(root, chosen.kind, chosen.path, *bytes);
    const QString unit = chosen.kind == VersionKind::Database ? u"Playlisten"_s : u"Titel"_s;
    form.LKopf.Caption = u"„%1“, Stand bis %2"_s.arg(chosen.name, timeText(chosen.version.when)) +
                         (picture ? QString() : u": %1 %2"_s.arg(lines.size()).arg(unit));
    form.tInhalt.Visible = !picture;
    form.pBild.Visible = picture;
    form.tInhalt.Text = picture ? QString() : textFor(lines);
    form.Bytes = picture ? *bytes : QByteArray();
    const bool goesOn = command.showModal(form);
    form.tInhalt.Text = QString();
    form.Bytes = QByteArray();
    if (goesOn)
        root.fassungen->LFassungen.SetFocus();
}

/// A step that may change what was kept.
void run(Root& root, Fassungen& form, QString (*step)(Root&, Command&, const ChosenVersion&))
{
    const std::optional<ChosenVersion> chosen = chosenVersion(form);
    if (!chosen)
        return;
    const auto steps = [&root, &form, &chosen, step] {
        Command command(root);
        form.LMeldung.Caption = QString();
        const QString result = step(root, command, *chosen);
        if (command.ended() || !form.Visible.value())
            return;
        fill(root, form);
        if (!result.isEmpty())
            form.LMeldung.Caption = result;
        form.LFassungen.SetFocus();
    };
    runCommand(root, Changes::Both, steps, u"Frühere Fassungen"_s);
}

void load(Root& root, Fassungen& form)
{
    form.tFilter.Text = QString();
    form.LMeldung.Caption = QString();
    setColumns(form.LDateien, FileColumns);
    setColumns(form.LFassungen, VersionColumns);
    fill(root, form);
    form.tVergleich.Enabled = true;
}

void unload(Fassungen& form)
{
    form.tVergleich.Enabled = false;
    form.LDateien.clear();
    form.LFassungen.clear();
    form.files.clear();
    form.shown.clear();
    form.compared.clear();
    form.present.reset();
}

} // namespace

Fassung::Fassung() : Form(u"Fassung"_s)
{
    Caption = u" Frühere Fassung"_s;
    bAbbrechen.Caption = u"&Schließen"_s;
}

Fassungen::Fassungen() : Form(u"Fassungen"_s)
{
    Caption = u" Frühere Fassungen"_s;
    LFilter.Caption = u"&Filter:"_s;
    LDateienCaption.Caption = u"&Dateien:"_s;
    LFassungenCaption.Caption = u"Fassu&ngen:"_s;
    bAnsehen.Caption = u"&Ansehen ..."_s;
    bZurückholen.Caption = u"&Zurückholen ..."_s;
    bSpeichernUnter.Caption = u"Speichern &unter ..."_s;
    bAbbrechen.Caption = u"&Schließen"_s;
    bHilfe.Caption = u"&Hilfe"_s;
}

void setUpFassungen(Root& root)
{
    Fassungen& form = *root.fassungen;
    form.Load = [&root, &form] { load(root, form); };
    form.Unload = [&form] { unload(form); };
    form.tFilter.Change = [&form] {
        const ShelvedFile* const file = selectedFile(form);
        showFiles(form, file != nullptr ? file->path : QString());
    };
    form.LDateien.Click = [&form] { showVersions(form); };
    form.LFassungen.Click = [&form] { enableButtons(form); };
    form.LFassungen.DblClick = [&form] {
        if (form.bAnsehen.Enabled.value())
            form.bAnsehen.Click();
    };
    form.tVergleich.Tick = [&root, &form] { tVergleich_Tick(root, form); };
    root.services.events.attach(form.tVergleich);
    form.bAnsehen.Click = [&root, &form] {
        if (const std::optional<ChosenVersion> chosen = chosenVersion(form))
            bAnsehen_Click(root, *chosen);
    };
    form.bZurückholen.Click = [&root, &form] { run(root, form, bringBack); };
    form.bSpeichernUnter.Click = [&root, &form] { run(root, form, saveElsewhere); };
    form.bAbbrechen.Click = [&root, &form] { root.services.forms.unload(form); };
    form.bHilfe.Click = [&root] { showHelp(root, u"/4.3 Fruehere Fassungen.htm"); };
    Fassung& version = *root.fassung;
    version.bAbbrechen.Click = [&root, &version] { root.services.forms.unload(version); };
}

void mnuFassungen_Click(Root& root)
{
    // What it brings back would be passed over in front of a command that waits.
    if (!isAdmitted(root, Changes::Both))
        return;
    (void)Command(root).showModal(*root.fassungen);
}

} // namespace orvantine
