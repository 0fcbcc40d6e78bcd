#include "playlists/PlaylistText.h"
#include "shell/Menus.h"
#include "support/FakeDesktop.h"

#include <QDir>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QResource>
#include <QUrl>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

QString read(const QString& path)
{
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

QStringList captures(const QString& text, const QString& pattern)
{
    QStringList found;
    auto matches = QRegularExpression(pattern).globalMatch(text);
    while (matches.hasNext())
        found << matches.next().captured(1);
    return found;
}

class HelpPages : public testing::Test
{
protected:
    ~HelpPages() override { QResource::unregisterResource(QStringLiteral(ORVANTINE_HELP_FILE)); }

    void SetUp() override { ASSERT_TRUE(registered && !pages.isEmpty()); }

    /// The commands of the menu bar as the pages write them, "Extras › Optionen", with their keys.
    static QMap<QString, QString> menuPaths()
    {
        orvantine::fake::FakeDesktop desktop;
        QMap<QString, QString> paths;
        QStringList path;
        for (const orvantine::MenuEntry& entry : orvantine::menuBar(desktop.root())) {
            QString caption = entry.item->Caption.value();
            caption.remove(u'&').remove(u"..."_s);
            // "(Alt+Up)" and its like are no part of a name.
            path = path.first(entry.level) << caption.section(u'(', 0, 0).trimmed();
            if (!entry.separator)
                paths.insert(path.join(u" › "_s), entry.item->Shortcut);
        }
        return paths;
    }

    const bool registered = QResource::registerResource(QStringLiteral(ORVANTINE_HELP_FILE));
    const QDir folder{u":/hilfe"_s};
    const QStringList pages = folder.entryList({u"*.htm"_s});
};

TEST_F(HelpPages, HoldTheTopicsThatTheDialogsOpen)
{
    for (const QString& topic :
         {u"1.0 Erste Schritte.htm"_s, u"1.8 Ordner durchsuchen.htm"_s, u"1.9 Eigenschaften bearbeiten.htm"_s,
          u"3.3 Medienordner zuweisen.htm"_s, u"3.4 Orvanten positionieren.htm"_s, u"3.5 Fehlerliste.htm"_s,
          u"4.0 Einstellungen festlegen.htm"_s, u"4.2 Sicherungen und Datenbank.htm"_s,
          u"4.3 Fruehere Fassungen.htm"_s})
        EXPECT_TRUE(pages.contains(topic)) << topic.toStdString();
}

TEST_F(HelpPages, HaveATopicForEachKindOfWork)
{
    const QString contents = read(folder.filePath(u"Inhalt.htm"_s));
    for (const QString& title :
         {u"Playlisten anlegen und hinzufügen"_s, u"Playlisten umbenennen und löschen"_s, u"Sounddateien hinzufügen"_s,
          u"Ziehen und Ablegen"_s, u"Ordner auswählen"_s, u"Suchen"_s, u"Ordner durchsuchen"_s,
          u"Titel sortieren und verschieben"_s, u"Titel entfernen und kopieren"_s, u"Tastaturbefehle"_s})
        EXPECT_TRUE(contents.contains(u'>' + title + u"</a>"_s)) << title.toStdString();
}

TEST_F(HelpPages, LinkByTheTitleOfThePage)
{
    QStringList wrong;
    for (const QString& page : pages) {
        auto links = QRegularExpression(u"<a href=\"([^\"]*)\">([^<]*)</a>"_s).globalMatch(read(folder.filePath(page)));
        while (links.hasNext()) {
            const QRegularExpressionMatch link = links.next();
            const QString target = read(folder.filePath(QUrl::fromPercentEncoding(link.captured(1).toUtf8())));
            if (captures(target, u"<title>([^<]+)</title>"_s) != QStringList{link.captured(2).simplified()})
                wrong << page + u": "_s + link.captured(2);
        }
    }
    EXPECT_TRUE(wrong.isEmpty()) << wrong.join(u'\n').toStdString();
}

TEST_F(HelpPages, NameTheCommandsAsTheMenusDo)
{
    const QMap<QString, QString> commands = menuPaths();
    QStringList unknown;
    int named = 0;
    for (const QString& page : pages)
        for (const QString& told : captures(read(folder.filePath(page)), u"<b>([^<]*&rsaquo;[^<]*)</b>"_s)) {
            ++named;
            const QString path = told.simplified().replace(u"&rsaquo;"_s, u"›"_s);
            if (!commands.contains(path))
                unknown << page + u": "_s + path;
        }
    EXPECT_GT(named, 25);
    EXPECT_TRUE(unknown.isEmpty()) << unknown.join(u'\n').toStdString();
}

TEST_F(HelpPages, SpeakOfEveryCommand)
{
    // Stay disabled or hidden.
    const QStringList silent{u"mnuAddChanges"_s, u"mnuEditCut"_s, u"TagIDs"_s, u"mnuLaden"_s, u"mnuSoundplayer(4)"_s};
    QString all;
    for (const QString& page : pages) {
        QString text = read(folder.filePath(page));
        all += text.remove(QRegularExpression(u"<[^>]*>"_s)).simplified() + u'\n';
    }
    fake::FakeDesktop desktop;
    QStringList unspoken;
    for (const MenuEntry& entry : menuBar(desktop.root())) {
        const QString caption =
            QString(entry.item->Caption.value()).remove(u'&').remove(u"..."_s).section(u'(', 0, 0).simplified();
        if (!entry.separator && !entry.submenu && !silent.contains(entry.item->fullName()) && !all.contains(caption))
            unspoken << caption;
    }
    EXPECT_TRUE(unspoken.isEmpty()) << unspoken.join(u'\n').toStdString();
}

TEST_F(HelpPages, TellTheKeysOfTheCommands)
{
    const QMap<QString, QString> commands = menuPaths();
    int told = 0;
    for (const QString& page : pages) {
        auto matches = QRegularExpression(u"<b>([^<]*&rsaquo;[^<]*)</b>[^<]{0,30}<b>Strg \\+ (.)</b>"_s)
                           .globalMatch(read(folder.filePath(page)));
        while (matches.hasNext()) {
            const QRegularExpressionMatch match = matches.next();
            const QString path = match.captured(1).simplified().replace(u"&rsaquo;"_s, u"›"_s);
            EXPECT_EQ(commands.value(path), u"Ctrl+"_s + match.captured(2)) << page.toStdString();
            ++told;
        }
    }
    EXPECT_GT(told, 3);

    const QString keys = read(folder.filePath(u"5.0 Tastaturbefehle.htm"_s));
    QStringList untold;
    for (auto command = commands.begin(); command != commands.end(); ++command) {
        const QString key = QString(command.value()).replace(u"Ctrl+"_s, u"Strg + "_s);
        // Cutting is no command of its own here: it stays disabled.
        if (!key.isEmpty() && key != u"Strg + X"_s && !keys.contains(key))
            untold << key;
    }
    EXPECT_TRUE(untold.isEmpty()) << untold.join(u'\n').toStdString();
}

TEST_F(HelpPages, LinkOnlyToWhatIsThere)
{
    QStringList broken;
    for (const QString& page : pages)
        for (const QString& link : captures(read(folder.filePath(page)), u"href=\"([^\"]*)\""_s))
            if (!folder.exists(QUrl::fromPercentEncoding(link.toUtf8())))
                broken << page + u": "_s + link;
    EXPECT_TRUE(broken.isEmpty()) << broken.join(u'\n').toStdString();
}

TEST_F(HelpPages, AreAllReachedFromTheTableOfContents)
{
    QStringList linked{u"Inhalt.htm"_s};
    for (const QString& link : captures(read(folder.filePath(u"Inhalt.htm"_s)), u"href=\"([^\"]*)\""_s))
        linked << QUrl::fromPercentEncoding(link.toUtf8());

    QStringList unreached;
    for (const QString& page : pages)
        if (!linked.contains(page))
            unreached << page;
    EXPECT_TRUE(unreached.isEmpty()) << unreached.join(u'\n').toStdString();
}

TEST_F(HelpPages, BearTheirTopicAsTitleAndHeading)
{
    for (const QString& page : pages) {
        const QString text = read(folder.filePath(page));
        const QStringList title = captures(text, u"<title>([^<]+)</title>"_s);
        EXPECT_EQ(title.size(), 1) << page.toStdString();
        EXPECT_EQ(captures(text, u"<h1>([^<]+)</h1>"_s), title) << page.toStdString();
    }
}

TEST_F(HelpPages, CloseEveryElementThatTheyOpen)
{
    for (const QString& page : pages) {
        const QString text = read(folder.filePath(page));
        for (const QString& element :
             {u"p"_s, u"ul"_s, u"ol"_s, u"li"_s, u"b"_s, u"a"_s, u"h2"_s, u"table"_s, u"tr"_s, u"td"_s})
            EXPECT_EQ(captures(text, u"(<"_s + element + u"[ >])"_s).size(), text.count(u"</"_s + element + u'>'))
                << page.toStdString() << ": " << element.toStdString();
    }
}

} // namespace

} // namespace orvantine
