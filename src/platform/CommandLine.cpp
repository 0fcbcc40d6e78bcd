#include "platform/CommandLine.h"

#include <algorithm>

namespace orvantine {

using namespace Qt::StringLiterals;

const QList<LineWord>& lineWords()
{
    static const QList<LineWord> words{
        {LineWish::Start, u"/play"_s, u"startet verkleinert und spielt alle Playlisten der Reihe nach"_s},
        {LineWish::Start, u"/hide"_s, u"wie /play, ohne Startbild"_s},
        {LineWish::Play, u"--play"_s, u"Wiedergabe im laufenden Programm; läuft keines, wie /play"_s},
        {LineWish::Pause, u"--pause"_s, u"hält die Wiedergabe im laufenden Programm an"_s},
        {LineWish::Next, u"--next"_s, u"nächster Titel im laufenden Programm"_s},
        {LineWish::Help, u"--help"_s, u"zeigt diese Hilfe"_s},
        {LineWish::Version, u"--version"_s, u"zeigt die Version"_s}};
    return words;
}

LineWish lineWish(const QStringList& arguments)
{
    if (arguments.size() != 1)
        return LineWish::Start;
    const QList<LineWord>& words = lineWords();
    const auto found =
        std::find_if(words.begin(), words.end(), [&](const LineWord& word) { return word.word == arguments.first(); });
    return found == words.end() ? LineWish::Start : found->wish;
}

QString helpText()
{
    QString text = u"Aufruf: orvanten-manager [DATEI | ORDNER | URI]…\n"
                   u"        orvanten-manager WORT\n\n"
                   u"Verwaltet, spielt und überträgt Playlisten. Ein Wort steht allein:\n\n"_s;
    for (const LineWord& word : lineWords())
        text += u"  "_s + word.word.leftJustified(11) + word.meaning + u'\n';
    return text + u"\nAlles Weitere: orvanten-manager(1) und F1 im Programm.\n"_s;
}

} // namespace orvantine
