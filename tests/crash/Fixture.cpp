#include "app/Root.h"
#include "catalogue/CatalogueDatabase.h"
#include "operations/Positionen.h"
#include "platform/posix/PosixFiles.h"
#include "support/FakeDesktop.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstdio>
#include <functional>

using namespace orvantine;
using namespace Qt::StringLiterals;

namespace {

constexpr int Lists = 6;

/// The logic over the real disk in one folder, with a desktop that answers every box with its first button.
struct Machine
{
    explicit Machine(const QString& where) : folder(where), files({.recoveryFolder = where + u"/recovery"_s})
    {
        services.folders.program = folder + u"/program"_s;
        services.folders.applicationData = folder;
        root.tDatenbank.Text = data();
        complaints.Report = [](const QString& text) { qFatal("%s", qPrintable(text)); };
    }

    [[nodiscard]] QString data() const { return folder + u"/data/"_s; }

    /// Runs a command on the loaded catalogue.
    void run(const std::function<void()>& command)
    {
        mnuLaden_Click(root);
        for (int i = 0; i < 4; ++i)
            messages.answer(Answer::Ok);
        command();
    }

    QString folder;
    fake::CallLog log;
    fake::Complaints complaints;
    PosixFiles files;
    ProfileStore profiles{files};
    fake::MemorySettings settings{log};
    fake::ScriptedMessages messages{log, complaints};
    fake::ScriptedChoosers choosers{log, complaints};
    fake::FakeForms forms{log, complaints};
    fake::VirtualEvents events{log, complaints};
    fake::FakePlayer player{files, [](const QString&) { return true; }};
    fake::FakePlayer infoPlayer{files, [](const QString&) { return true; }};
    fake::FakeMixer mixer{log};
    fake::FakeSound sound{log};
    fake::FakeTags tags{log};
    fake::FakeTray tray{log};
    fake::FakeClipboard clipboard{log};
    fake::FakeLauncher launcher{log};
    fake::FakeVolumes volumes{log};
    fake::FakeInstance instance{log};
    fake::FakeFonts fonts{log};
    fake::FakeScreen screen;
    Services services{files,      profiles, settings, messages, choosers, forms,     events,   player,
                      infoPlayer, mixer,    sound,    tags,     tray,     clipboard, launcher, volumes,
                      instance,   fonts,    screen,   {},       {},       {}};
    Root root{services};
};

void layOut(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("the fixture could not be laid out");
}

/// Lists with tracks, descriptions, a favourite, covers, names of tracks before the catalogue.
void prepare(const QString& folder)
{
    for (const QString& name : {u"data/Playlisten"_s, u"data/Resource"_s, u"data/Burning"_s, u"program"_s})
        QDir().mkpath(folder + u'/' + name);
    QByteArray text = "[TagInfo]\r\n";
    for (int track = 0; track < 200; ++track)
        text += "/musik/Lied " + QByteArray::number(track) + ".mp3=Eine Band - Lied\r\n";
    text += "[Rename]\r\nListe 6.m3u=Liste 6\r\n[Options]\r\nDaten=1\r\n[Index]\r\n";
    for (int row = 1; row <= Lists; ++row) {
        const QByteArray number = QByteArray::number(row);
        const QString path = folder + u"/data/Playlisten/Liste %1.m3u"_s.arg(row);
        QByteArray list;
        for (int track = 0; track < 150 * row; ++track)
            list += "/musik/Lied " + QByteArray::number(track) + ".mp3\r\n";
        layOut(path, list + "\r\n"); // as a list is that was opened before
        layOut(folder + u"/data/Resource/Liste %1.jpg"_s.arg(row), "Bild " + number);
        text += number + "a=00" + QByteArray::number(row - 1) + "\r\n" + number + "b=Liste " + number + "\r\n" +
                number + "c=" + path.toUtf8() + "\r\n" + number + "d=" + QByteArray::number(150 * row) + "\r\n" +
                number + "e=Beschreibung " + number + "\r\n" + number + "f=01.02.2003\r\n" + number +
                (row == 2 ? "g=1\r\n" : "g=0\r\n");
    }
    layOut(folder + u"/data/Orvantine.dat"_s, text);
}

/// Everything that a user would miss: the keys of the catalogue, and the lists and pictures with their sizes.
void show(Machine& machine)
{
    const QString database = machine.data() + u"Orvantine.dat"_s;
    for (int row = 1; row <= Lists + 2; ++row)
        for (const char letter : {'a', 'b', 'c', 'd', 'e', 'f', 'g'}) {
            const QString key = QString::number(row) + QLatin1Char(letter);
            std::printf("%s=%s\n", qPrintable(key), qPrintable(machine.profiles.value(database, u"Index"_s, key)));
        }
    for (const QString& section : {u"TagInfo"_s, u"Rename"_s, u"Options"_s})
        std::printf("%s: %d\n", qPrintable(section), static_cast<int>(machine.profiles.keys(database, section).size()));
    for (const QString& name : {u"Playlisten"_s, u"Resource"_s}) {
        const QStringList found = machine.files.list(machine.data() + name, u"*.m3u;*.jpg"_s);
        for (const QString& file : found)
            std::printf("%s: %lld\n", qPrintable(file),
                        static_cast<long long>(machine.files.size(machine.data() + name + u'/' + file).value_or(-1)));
    }
}

} // namespace

/// orvantine-crash-fixture prepare|save|remove|remove-last|move|positions|show FOLDER
int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const QByteArrayView command(argv[1]);
    const QString folder = QFile::decodeName(argv[2]);
    if (command == "prepare") {
        prepare(folder);
        return 0;
    }
    Machine machine(folder);
    Root& root = machine.root;
    if (command == "show")
        show(machine);
    else if (command == "save")
        machine.run([&root] {
            root.LListView1.setSubItem(3, 1, u"Anderer Name"_s);
            root.mnuSpeichern.Click();
        });
    else if (command == "remove" || command == "remove-last")
        machine.run([&root, command] {
            root.LListView1.select(command == "remove" ? 3 : root.LListView1.count());
            root.mnuLöschen.Click();
        });
    else if (command == "move")
        machine.run([&root] {
            root.LListView1.select(4);
            root.mnuVerschiebung[1].Click();
        });
    else if (command == "positions")
        machine.run([&root] {
            root.positionen->Load();
            QStringList lines = root.positionen->LSortView.List;
            std::reverse(lines.begin(), lines.end());
            root.positionen->LSortView.List = lines;
            root.positionen->BReady.Click();
        });
    else
        return 2;
    return 0;
}
