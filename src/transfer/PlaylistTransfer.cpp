#include "transfer/PlaylistTransfer.h"

#include "app/Columns.h"
#include "app/Command.h"
#include "app/Dateiexistenz.h"
#include "app/FreeSpace.h"
#include "app/Registry.h"
#include "app/Root.h"
#include "catalogue/CatalogueRows.h"
#include "platform/FileDirPath.h"
#include "playlists/GetPlayEntrys.h"
#include "transfer/Carrier.h"
#include "transfer/Kopieren.h"
#include "transfer/TargetChoice.h"

#include <algorithm>
#include <array>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<char16_t, 10> Forbidden{u'/', u'\\', u':', u'*', u'?', u'"', u'<', u'>', u'|', u'-'};

enum class Next { End, Again };

/// Required: the whole path is looked at, its separators included, so that every target has such a character.
bool hasForbidden(const QString& path)
{
    return std::any_of(Forbidden.begin(), Forbidden.end(),
                       [&path](char16_t character) { return path.contains(QChar(character)); });
}

QString forbiddenText()
{
    QStringList characters;
    for (const char16_t character : Forbidden)
        characters += QString(QChar(character));
    return characters.join(u' ');
}

/// One run of the command, from the choice of the target to the report.
class Transfer
{
public:
    Transfer(Root& root, Command& command) : m_root(root), m_command(command) {}

    Next run();

private:
    // False: the command ends here.
    bool begin();
    bool enterName();
    bool askRoom();
    bool carryTracks(Carrier& carrier);
    void finish(Carrier& carrier);
    void report();

    [[nodiscard]] std::optional<Answer> warn(const QString& text);
    Next tellTrouble(const QString& text);
    void leave();
    void reselect();
    void takeRows();
    [[nodiscard]] bool makeTargetFolder();

    Root& m_root;
    Command& m_command;
    QString m_stick;
    QString m_target;
    /// What the user calls it, and the path that the new list gives its tracks.
    QString m_folderName;
    QString m_name;
    QString m_path;
    QStringList m_tracks;
    std::optional<TrackList::Hold> m_hold;
    int m_selected = 0;
    /// The rows are all that there is to carry: the list could be read.
    bool m_known = false;
    qint64 m_bytes = 0;
    bool m_badOrStopped = false;
    QString m_lines;
};

std::optional<Answer> Transfer::warn(const QString& text)
{
    return m_command.ask({.text = text,
                          .title = TransferTitle.toString(),
                          .icon = MessageIcon::Exclamation,
                          .buttons = MessageButtons::RetryCancel});
}

/// Ends the run behind such a box, or begins it anew.
Next Transfer::tellTrouble(const QString& text)
{
    const std::optional<Answer> answer = warn(text);
    if (!answer)
        return Next::End;
    leave();
    return m_command.yield() && answer == Answer::Retry ? Next::Again : Next::End;
}

void Transfer::leave()
{
    m_root.services.forms.unload(*m_root.kopieren);
}

void Transfer::reselect()
{
    if (m_hold->inSight())
        m_root.LListView2.select(m_selected);
}

/// The tracks are those of the list in sight. Rows of the list before are none of them.
void Transfer::takeRows()
{
    m_known = ownTracks(m_root);
    const int row = rowInSight(m_root);
    m_name = playlistName(m_root, row);
    m_path = playlistPath(m_root, row);
    m_hold = m_root.trackList.hold();
    m_selected = m_root.LListView2.selectedRow();
    m_tracks.clear();
    for (int track = 1; !m_root.trackList.showsListBefore() && track <= m_root.LListView2.count(); ++track)
        m_tracks += m_root.LListView2.subItem(track, TrackItem::Path);
    m_known = m_known || !m_tracks.isEmpty();
}

bool Transfer::begin()
{
    // What the user has in sight now: behind the boxes it may be another list.
    takeRows();
    const std::optional<QString> target = chooseTarget(m_root, m_command, TransferOf::Playlist);
    if (!target)
        return false;
    m_root.Tag = u"1"_s;
    showTransfer(m_root);
    if (!m_command.yield())
        return false;
    const bool subfolder = readSetting(m_root, u"CreateFolder"_s).isOrAbsent(1);
    m_stick = normalisedTarget(*target);
    m_target = m_stick;
    if (subfolder) {
        m_target = withSeparator(m_stick + m_name);
        // A folder that is not wanted in the end stays, as told.
        if (FileDirPath::canBeFolderName(m_name) && !Dateiexistenz::FolderExists(m_root, m_target))
            m_root.files.makeFolder(m_target);
    }
    if (!m_command.yield())
        return false;
    m_badOrStopped = hasForbidden(m_target);
    return true;
}

bool Transfer::enterName()
{
    if (m_badOrStopped) {
        const std::optional<QString> answer = m_command.enter(
            u"Die Bezeichnung kann wegen ungültiger Zeichen nicht verwendet werden. Geben Sie einen neuen Namen für "
            u"diese Wiedergabeliste ein:\n\nUnzulässige Sonderzeichen: "_s +
                forbiddenText(),
            u" Name der Wiedergabeliste"_s, FileDirPath::titleOf(m_path));
        if (!answer)
            return false;
        m_folderName = *answer;
    }
    if (m_folderName.isEmpty()) {
        leave();
        m_command.lastYield();
        return false;
    }
    // Required: this holds even without a subfolder for each playlist.
    m_target = withSeparator(m_stick + m_folderName);
    return true;
}

bool Transfer::askRoom()
{
    constexpr quint64 Least = 3000;
    constexpr quint64 Unknown = 5000;
    const QString told = FreeSpace::FreeBytes(m_root, m_root.services.volumes.rootOf(m_stick));
    const quint64 free = told.isEmpty() ? Unknown : told.toULongLong();
    // Required: bytes here, and Retry goes on without looking again.
    if (free <= Least && warn(tooLittleRoomText()) != Answer::Retry) {
        if (m_command.ended())
            return false;
        leave();
        m_command.lastYield();
        return false;
    }
    const std::optional<qint64> bytes = bytesOf(m_root, m_command, m_tracks);
    if (!bytes)
        return false;
    m_bytes = *bytes;
    const auto sum = static_cast<quint64>(m_bytes);
    if (free > sum)
        return true;
    const std::optional<Answer> answer =
        warn(u"%1\n\nVerfügbarer Speicherplatz: %2\nBenötigter Speicherplatz: %3"_s.arg(
            tooLittleRoomText(), QString::number(free), QString::number(sum)));
    if (!answer)
        return false;
    if (answer == Answer::Retry)
        return true;
    // Of what Cancel is to delete this run has made nothing yet.
    leave();
    reselect();
    m_command.lastYield();
    return false;
}

bool Transfer::makeTargetFolder()
{
    // A name that would lead elsewhere is no folder.
    if (!FileDirPath::canBeFolderName(m_folderName))
        return false;
    if (!Dateiexistenz::FolderExists(m_root, m_target))
        m_root.files.makeFolder(FileDirPath::withoutSeparator(m_target));
    return Dateiexistenz::FolderExists(m_root, m_target);
}

/// False if the program has ended.
bool Transfer::carryTracks(Carrier& carrier)
{
    const QChar separator = FileDirPath::separatorOf(m_stick);
    for (qsizetype i = 0; i < m_tracks.size(); ++i) {
        if (m_hold->inSight())
            m_root.LListView2.select(static_cast<int>(i) + 1);
        if (!m_command.yield())
            return false;
        const QString name = FileDirPath::FileNameOf(m_tracks[i]);
        const Carrier::Outcome outcome = carrier.carry(m_tracks[i], m_target + name);
        if (!m_command.yield())
            return false;
        if (outcome != Carrier::Outcome::BrokenOff)
            m_lines += m_folderName + separator + name + u"\r\n"_s;
        if (!m_command.yield())
            return false;
        if (stopAsked(m_root)) {
            leave();
            m_root.Tag = u"0"_s;
            m_badOrStopped = true;
            return true;
        }
    }
    return true;
}

void Transfer::finish(Carrier& carrier)
{
    carrier.settle(m_target);
    // An older list stays until this one is whole, and where nobody knows what this one holds.
    if (m_known)
        (void)carrier.carryText(m_lines, m_stick + FileDirPath::FileNameOf(m_path));
    else
        carrier.noteFailure(m_path);
    carrier.settle(m_stick);
    if (m_command.ended())
        return;
    carrier.progress().complete();
    if (!m_command.yield())
        return;
    reselect();
    m_root.Pointer = MousePointer::Default;
    if (!m_command.pause(1))
        return;
    leave();
    m_root.Tag = u"0"_s;
    if (!m_command.yield())
        return;
    keepTarget(m_root, m_stick);
    keepTargetDate(m_root);
    if (m_command.yield())
        report();
}

void Transfer::report()
{
    const QString place = u"\n\nZielordner: ''%1''"_s.arg(m_stick);
    // Required: every target has a forbidden character, so that a complete copy is told of as an incomplete one.
    const QString text = m_badOrStopped
                             ? u"Der Kopiervorgang wurde unvollständig auf den USB-Datenträger ausgeführt. "_s
                             : u"Die Sounddateien wurden erfolgreich auf den USB-Datenträger kopiert. "_s;
    m_command.tell({.text = text + place, .title = TransferTitle.toString(), .icon = MessageIcon::Information});
}

Next Transfer::run()
{
    if (!begin() || !enterName() || !askRoom())
        return Next::End;
    if (!Dateiexistenz::FolderExists(m_root, m_root.services.volumes.rootOf(m_target)))
        return tellTrouble(u"Der USB-Datenträger ist nicht vorhanden oder wurde kürzlich entfernt.   \n"
                           u"Bitte legen Sie den korrekten Datenträger in das Laufwerk oder \n"
                           u"überprüfen Sie gegebenenfalls den freien Speicherplatz."_s);
    if (!makeTargetFolder())
        return tellTrouble(u"Der Zugriff auf den austauschbaren Datenträger ist nicht möglich.   \n"
                           u"Entfernen Sie bitte den Schreibschutz am Datenträger !"_s);
    Carrier carrier(m_root, m_command, m_bytes);
    carrier.spare(m_tracks);
    if (carryTracks(carrier))
        finish(carrier);
    return Next::End;
}

} // namespace

QString tooLittleRoomText()
{
    return u"Der Zieldatenträger hat zu wenig freien Speicherplatz zur Verfügung.   \n"
           u"Die komplette Übertragung der Sounddateien ist nicht möglich."_s;
}

void transferPlaylist(Root& root)
{
    Next next = Next::Again;
    while (next == Next::Again) {
        Command command(root);
        next = Transfer(root, command).run();
    }
}

} // namespace orvantine
