#include "platform/CommandLine.h"
#include "platform/Version.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

const QString ManPages[]{u"packaging/man/orvanten-manager.1"_s, u"packaging/man/orvanten-manager.de.1"_s};
const QString DesktopEntry = u"packaging/desktop/orvanten-manager.desktop"_s;
const QString MimeTypes = u"packaging/desktop/orvanten-manager.xml"_s;
const QString Metainfo = u"packaging/desktop/example.orvanten.manager.metainfo.xml"_s;

QString textOf(const QString& path)
{
    QFile file(QStringLiteral(ORVANTINE_TREE "/") + path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return QString::fromUtf8(file.readAll());
}

/// What stands in the first brackets of the pattern, each time it fits.
QStringList captures(const QString& text, const QString& pattern)
{
    QStringList found;
    auto matches = QRegularExpression(pattern, QRegularExpression::MultilineOption).globalMatch(text);
    while (matches.hasNext())
        found += matches.next().captured(1);
    return found;
}

} // namespace

TEST(ManPages, TellTheWordsOfTheCommandLineAndNoOthers)
{
    QStringList words;
    for (const LineWord& word : lineWords())
        words += word.word;
    for (const QString& path : ManPages) {
        const QString page = textOf(path).remove(u'\\');
        EXPECT_EQ(words.join(u' ').toStdString(),
                  captures(page, u"^\\.TP\\n\\.B ((?:--|/)[a-z]+)$"_s).join(u' ').toStdString())
            << path.toStdString();
        const QString overview = captures(page, u"^\\.BR ((?:--|/)[a-z].*)$"_s).value(0).remove(u'"');
        EXPECT_EQ(words.join(u" | "_s).toStdString(), overview.simplified().toStdString()) << path.toStdString();
    }
}

TEST(Completion, KnowsTheWordsOfTheCommandLine)
{
    const QStringList offered = captures(textOf(u"packaging/completion.bash"_s), u"compgen -W \"([^\"]+)\""_s);
    ASSERT_EQ(1, offered.size());
    const QStringList known = offered.first().split(u' ');
    QSet<QString> words;
    for (const LineWord& word : lineWords())
        words += word.word;
    EXPECT_EQ(words, QSet<QString>(known.begin(), known.end()));
}

TEST(DesktopEntry, ItsActionsCallWordsOfTheCommandLine)
{
    const QString entry = textOf(DesktopEntry);
    EXPECT_EQ("%U --play --pause --next", captures(entry, u"^Exec=orvanten-manager (.*)$"_s).join(u' ').toStdString());
    EXPECT_EQ(LineWish::Play, lineWish({u"--play"_s}));
    EXPECT_EQ(LineWish::Pause, lineWish({u"--pause"_s}));
    EXPECT_EQ(LineWish::Next, lineWish({u"--next"_s}));

    EXPECT_EQ("Play;Pause;Next;", captures(entry, u"^Actions=(.*)$"_s).join(u' ').toStdString());
    EXPECT_EQ("Play;Pause;Next", captures(entry, u"^\\[Desktop Action (.*)\\]$"_s).join(u';').toStdString());
    EXPECT_EQ("Wiedergabe;Pause;Nächster Titel", captures(entry, u"^Name\\[de\\]=(.*)$"_s).join(u';').toStdString());
}

TEST(DesktopEntry, OpensTheKindsThatThePackageAnnounces)
{
    const QStringList opened = captures(textOf(DesktopEntry), u"^MimeType=(.*);$"_s).value(0).split(u';');
    const QStringList announced = captures(textOf(Metainfo), u"<mediatype>(.*)</mediatype>"_s);
    ASSERT_FALSE(announced.isEmpty());
    for (const QString& type : announced)
        EXPECT_TRUE(opened.contains(type)) << type.toStdString();

    const QStringList ours = captures(textOf(MimeTypes), u"<mime-type type=\"(.*)\">"_s);
    ASSERT_EQ("application/x-nml+xml", ours.join(u' ').toStdString());
    EXPECT_TRUE(opened.contains(ours.first()));
    EXPECT_EQ("*.nml", captures(textOf(MimeTypes), u"<glob pattern=\"(.*)\"/>"_s).join(u' ').toStdString());
}

TEST(Package, HasTheVersionOfTheProgram)
{
    const std::string version = VersionText;
    EXPECT_EQ(version,
              captures(textOf(u"debian/changelog"_s), u"^orvanten-manager \\((.*)\\)"_s).value(0).toStdString());
    EXPECT_EQ(version, captures(textOf(Metainfo), u"<release version=\"([^\"]*)\""_s).value(0).toStdString());
    for (const QString& path : ManPages)
        EXPECT_EQ("Orvanten Manager " + version,
                  captures(textOf(path), u"^\\.TH .*\"(Orvanten [^\"]*)\""_s).value(0).toStdString())
            << path.toStdString();
}

} // namespace orvantine
