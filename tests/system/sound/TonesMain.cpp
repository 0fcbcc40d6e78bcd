// Finds the tones of a recording: one line for each, "begin  hertz  seconds"; hertz is 0 for a sound that no track has.
//
//   orvantine-tones recorded.wav --expect 440,660,550 [--tolerance 8] [--shortest 0.12] [--order 440,550]
//
// --expect     the tones that tracks have, in Hz
// --tolerance  how far a tone may be off, in Hz
// --shortest   shorter sounds are left out, in seconds
// --order      the tones that should have been heard; the exit code is 1 if others were
//
// The exit code is 2 if the file cannot be read. `server.sh` beside this file makes such recordings.

#include "system/sound/Tones.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

QList<double> numbers(const QString& list)
{
    QList<double> values;
    for (const QString& word : list.split(u',', Qt::SkipEmptyParts))
        values.append(word.toDouble());
    return values;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application{argc, argv};
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addPositionalArgument(u"recording"_s, u"WAV file"_s);
    parser.addOptions({{u"expect"_s, u"Tones that tracks have"_s, u"hertz,…"_s},
                       {u"tolerance"_s, u"How far a tone may be off"_s, u"hertz"_s, u"8"_s},
                       {u"shortest"_s, u"Shorter sounds are left out"_s, u"seconds"_s, u"0.12"_s},
                       {u"order"_s, u"Tones that should have been heard"_s, u"hertz,…"_s}});
    parser.process(application);

    QFile file{parser.positionalArguments().value(0)};
    const auto recording = file.open(QFile::ReadOnly) ? orvantine::sound::readWav(file.readAll()) : std::nullopt;
    if (!recording) {
        QTextStream{stderr} << "orvantine-tones: no WAV file of 16 bits: " << file.fileName() << Qt::endl;
        return 2;
    }
    const QList<orvantine::sound::Tone> tones =
        findTones(*recording, {.hertz = numbers(parser.value(u"expect"_s)),
                               .toleranceHertz = parser.value(u"tolerance"_s).toDouble(),
                               .shortestSeconds = parser.value(u"shortest"_s).toDouble()});
    QTextStream out{stdout};
    for (const orvantine::sound::Tone& tone : tones)
        out << QString::number(tone.beginSeconds, 'f', 2) << "  " << tone.hertz << "  "
            << QString::number(tone.seconds, 'f', 2) << Qt::endl;
    const bool asked = parser.isSet(u"order"_s);
    return !asked || hertzOf(tones) == numbers(parser.value(u"order"_s)) ? 0 : 1;
}
