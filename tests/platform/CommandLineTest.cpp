#include "platform/CommandLine.h"

#include <gtest/gtest.h>

namespace orvantine {

using namespace Qt::StringLiterals;

namespace {

struct Line
{
    QStringList arguments;
    LineWish wish;
};

} // namespace

TEST(CommandLine, AWordCountsOnlyIfItIsTheWholeLine)
{
    const QList<Line> lines{{{}, LineWish::Start},
                            {{u"--help"_s}, LineWish::Help},
                            {{u"--version"_s}, LineWish::Version},
                            {{u"--play"_s}, LineWish::Play},
                            {{u"--pause"_s}, LineWish::Pause},
                            {{u"--next"_s}, LineWish::Next},
                            {{u"/play"_s}, LineWish::Start},
                            {{u"/hide"_s}, LineWish::Start},
                            {{u"--HELP"_s}, LineWish::Start},
                            {{u"-h"_s}, LineWish::Start},
                            {{u""_s}, LineWish::Start},
                            {{u"--help"_s, u"--version"_s}, LineWish::Start},
                            {{u"--play"_s, u"/musik/liste.m3u"_s}, LineWish::Start}};
    for (const Line& line : lines)
        EXPECT_EQ(line.wish, lineWish(line.arguments)) << line.arguments.join(u' ').toStdString();
}

TEST(CommandLine, TheHelpTellsEveryWord)
{
    EXPECT_EQ("Aufruf: orvanten-manager [DATEI | ORDNER | URI]…\n"
              "        orvanten-manager WORT\n"
              "\n"
              "Verwaltet, spielt und überträgt Playlisten. Ein Wort steht allein:\n"
              "\n"
              "  /play      startet verkleinert und spielt alle Playlisten der Reihe nach\n"
              "  /hide      wie /play, ohne Startbild\n"
              "  --play     Wiedergabe im laufenden Programm; läuft keines, wie /play\n"
              "  --pause    hält die Wiedergabe im laufenden Programm an\n"
              "  --next     nächster Titel im laufenden Programm\n"
              "  --help     zeigt diese Hilfe\n"
              "  --version  zeigt die Version\n"
              "\n"
              "Alles Weitere: orvanten-manager(1) und F1 im Programm.\n",
              helpText().toStdString());
}

} // namespace orvantine
