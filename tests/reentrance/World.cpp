#include "reentrance/World.h"

#include "app/DataFolder.h"
#include "app/Direkthilfe.h"

#include <algorithm>

namespace orvantine::fake {

using namespace Qt::StringLiterals;

namespace {

const QMap<QString, QStringList> Tracks{{u"Alpha"_s, {u"/m/a1.mp3"_s, u"/m/a2.mp3"_s, u"/m/a3.mp3"_s}},
                                        {u"Beta"_s, {u"/m/b1.mp3"_s, u"/m/b2.mp3"_s}},
                                        {u"Gamma"_s, {u"/m/c1.mp3"_s, u"/m/c2.mp3"_s}}};
const QString Added = u"/m/neu.mp3"_s;

QString textOf(const QString& list)
{
    return u"Text zu "_s + list;
}

/// Each list has a day of its own.
QString dateOf(const QString& list)
{
    return u"%1.02.2003"_s.arg(static_cast<int>(list[0].unicode()) - u'A' + 10);
}

} // namespace

World::World()
{
    // A stick with room for all of it.
    desktop.volumes.set(u"/neu"_s, {});
    // The user goes along with everything.
    desktop.messages.Unscripted = [this](const ShownMessage& message) {
        box();
        ScriptedAnswer answer;
        if (message.input)
            answer.entered = u"Neuer Name"_s;
        else
            answer.answer = offers(message.buttons, Answer::Yes)  ? Answer::Yes
                            : offers(message.buttons, Answer::Ok) ? Answer::Ok
                                                                  : Answer::Retry;
        return answer;
    };
    desktop.choosers.Unscripted = [this](ChooserKind kind) {
        box();
        ScriptedChoice choice;
        choice.kind = kind;
        choice.file = ChosenFile{.folder = u"/fremd"_s, .fileName = u"Fremd.m3u"_s};
        choice.folder = u"/neu"_s;
        return choice;
    };

    QByteArray index;
    int number = 0;
    for (const QString& name : Tracks.keys()) {
        put(listPath(name), (Tracks[name].join(u"\r\n"_s) + u"\r\n\r\n"_s).toUtf8());
        for (const QString& track : Tracks[name]) {
            put(track, "mp3");
            put(QString(track).replace(u"/m/"_s, u"/n/"_s), "mp3");
            desktop.tags.tracks[track] = {.title = track.right(6), .artist = name};
        }
        ++number;
        const auto key = [&](char letter, const QString& value) {
            index += QByteArray::number(number) + letter + '=' + value.toUtf8() + "\r\n";
        };
        key('a', u"%1"_s.arg(number - 1, 3, 10, QLatin1Char('0')));
        key('b', name);
        key('c', listPath(name));
        key('d', QString::number(Tracks[name].size()));
        key('e', textOf(name));
        key('f', dateOf(name));
        key('g', u"0"_s);
    }
    put(data() + u"Orvantine.dat"_s, "[Index]\r\n" + index);
    put(data() + u"Orvantine.bak"_s, "[Index]\r\n" + index);
    put(Added, "mp3");
    put(u"/neu/neu.mp3"_s, "mp3");
    put(u"/fremd/Fremd.m3u"_s, "/m/f1.mp3\r\n/m/f2.mp3\r\n\r\n");
    for (const QString& track : {u"/m/f1.mp3"_s, u"/m/f2.mp3"_s})
        put(track, "mp3");
    desktop.settings.put(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, u"Info"_s, stringSetting(u"1"_s));
    desktop.settings.put(Hive::CurrentUser, u"Software\\Verdanis\\Orvant Manager"_s, u"CheckEntrys"_s, dwordSetting(0));
    desktop.start();
    click(1);
    m_boxes = 0;
}

void World::put(const QString& path, const QByteArray& bytes)
{
    desktop.memory()->put(path, bytes);
}

void World::box()
{
    ++m_boxes;
    if (const auto action = m_atBox.take(m_boxes))
        action();
}

void World::tip()
{
    const QString tips = desktop.folders.program + u"/Orvantine.tip"_s;
    put(tips, "[Tips]\r\n");
    desktop.forms().whileModal(u"Direkthilfe"_s, [this, tips](Form& shown) {
        box();
        if (shown.Visible.value() && !desktop.events().ended())
            root().direkthilfe->BReady.Click();
        if (shown.Visible.value())
            desktop.forms().unload(shown);
        desktop.memory()->remove(tips);
    });
}

QString World::data() const
{
    return desktop.folders.applicationData + u"/Orvanten Manager/"_s;
}

QString World::listPath(const QString& name) const
{
    return data() + u"Playlisten/"_s + name + u".m3u"_s;
}

std::optional<QStringList> World::entries(const QString& name)
{
    const std::optional<QByteArray> text = desktop.memory()->bytes(listPath(name));
    if (!text)
        return {};
    QStringList lines = QString::fromUtf8(*text).replace(u'\r', u'\n').split(u'\n', Qt::SkipEmptyParts);
    return lines;
}

QList<CatalogueEntry> World::stored()
{
    QList<CatalogueEntry> entries;
    for (int number = 1; number <= MostPlaylists; ++number)
        if (!indexValue(root(), databaseFile(root()), number, EntryKey::Name).isEmpty())
            entries += readEntry(root(), databaseFile(root()), number);
    return entries;
}

void World::addsTrack()
{
    m_addsTo += root().trackList.path();
}

void World::click(int row)
{
    root().LListView1.select(row);
    root().LListView1.Click();
}

void World::atBox(int number, std::function<void()> action)
{
    m_atBox.insert(m_boxes + number, std::move(action));
}

QStringList World::faults()
{
    QStringList found;
    QStringList paths;
    // Description and date by path
    QMap<QString, QString> extras;
    for (const CatalogueEntry& entry : stored()) {
        paths += entry.path;
        extras.insert(entry.path, entry.description + u' ' + entry.date);
    }
    for (const QString& name : Tracks.keys()) {
        std::optional<QStringList> now = entries(name);
        if (!now) {
            if (!removesList)
                found += u"the file of %1 is gone"_s.arg(name);
            else if (paths.contains(listPath(name)))
                found += u"the file of %1 is gone, and its row stands"_s.arg(name);
            continue;
        }
        if (paths.count(listPath(name)) != 1 && !(removesList && !paths.contains(listPath(name))))
            found += u"%1 stands %2 times in the catalogue"_s.arg(name).arg(paths.count(listPath(name)));
        QStringList left = Tracks[name];
        if (remaps)
            now->replaceInStrings(u"/n/"_s, u"/m/"_s);
        for (const QString& entry : std::as_const(*now))
            if (!left.removeOne(entry) && !(m_addsTo.contains(listPath(name)) && entry.endsWith(u"neu.mp3"_s)))
                found += u"%1 holds %2"_s.arg(name, entry);
        if (left.size() > (removesTrack ? 1 : 0))
            found += u"%1 lost %2"_s.arg(name, left.join(u' '));
    }
    // A removal shifts them, as told.
    if (removesList)
        extras.clear();
    for (const QString& name : Tracks.keys()) {
        const QString own = textOf(name) + u' ' + dateOf(name);
        const QString now = extras.value(listPath(name), own);
        const bool given = describes && (now.startsWith(u"Anders "_s) || now.startsWith(u"Neuer Name "_s));
        if (now != own && !given)
            found += u"%1 is described as \"%2\""_s.arg(name, now);
    }
    if (desktop.events().ended())
        return found;
    const Root& r = root();
    if (r.Pointer.value() != MousePointer::Default)
        found += u"the pointer waits"_s;
    if (!r.LListView1.Enabled.value() || !r.LListView2.Enabled.value() || r.buttonsDisabled ||
        !r.mnuBearbeiten.Enabled.value())
        found += u"lists or buttons stay off"_s;
    if (!r.commands.idle())
        found += u"a command is still at work"_s;
    if (r.trackList.content() == TrackList::Content::Reading)
        found += u"a read has not ended"_s;
    if (r.LListView1.batching() || r.LListView2.batching())
        found += u"a view is still batched"_s;
    // What is seen is what the file holds, or is known not to be.
    if (r.trackList.content() == TrackList::Content::Own && !r.LListView2.Visible.value())
        found += u"the tracks are out of sight"_s;
    return found;
}

} // namespace orvantine::fake
