#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QResource>
#include <QUrl>

#include <gtest/gtest.h>

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

    const bool registered = QResource::registerResource(QStringLiteral(ORVANTINE_HELP_FILE));
    const QDir folder{u":/hilfe"_s};
    const QStringList pages = folder.entryList({u"*.htm"_s});
};

TEST_F(HelpPages, HoldTheTopicsThatTheDialogsOpen)
{
    for (const QString& topic : {u"1.0 Erste Schritte.htm"_s, u"1.9 Eigenschaften bearbeiten.htm"_s,
                                 u"3.4 Orvanten positionieren.htm"_s, u"4.0 Einstellungen festlegen.htm"_s})
        EXPECT_TRUE(pages.contains(topic)) << topic.toStdString();
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
