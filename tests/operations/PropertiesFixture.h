#pragma once

#include "playback/PlaybackWorld.h"

#include "operations/Eigenschaften.h"

namespace orvantine::fake {

/// "Erste" is open with two tracks.
class Properties : public PlaybackWorld
{
protected:
    void SetUp() override { startPlayback(); }

    Eigenschaften& form() { return *root().eigenschaften; }
    void open()
    {
        root().mnuEigenschaften.Click();
        ASSERT_TRUE(form().Visible.value());
        forgetCalls();
    }
    [[nodiscard]] std::string key(int row, char letter)
    {
        return root()
            .services.profiles.value(database(), QStringLiteral("Index"), QString::number(row) + QLatin1Char(letter))
            .toStdString();
    }
    void refuse(const QString& text) { desktop.messages.answer(Answer::Ok, QStringLiteral(" Eigenschaften"), text); }

    // The repair of a missing source
    void lose(const QString& name) { desktop.disk().remove(QStringLiteral("/m/") + name + QStringLiteral(".mp3")); }
    void answerMissing(Answer answer, const QString& file)
    {
        desktop.messages.answer(
            answer, QStringLiteral(" Fehlerhafte Quelldatei(en)"),
            QStringLiteral("Die Sounddatei(en) befindet sich nicht mehr am ursprünglichen Speicherordner. \n"
                           "Wahrscheinlich wurde die Datei(en) im Verzeichnis gelöscht oder verschoben.\n"
                           "\n"
                           "Klicken Sie ''Wiederholen'' um den Ordner für die Sounddatei anzugeben, \n"
                           "oder klicken Sie ''Ignorieren'' um einen Netzwerkordner zu wählen.\n") +
                file);
    }
    void answerAll(Answer answer)
    {
        desktop.messages.answer(
            answer, QStringLiteral(" Playlisten-Verzeichnis"),
            QStringLiteral("Möchten Sie für alle dieser Liste enthalten Tracks diesen als Quellordner verwenden ?   "));
    }
    [[nodiscard]] std::string paths()
    {
        QStringList all;
        for (int row = 1; row <= tracks().count(); ++row)
            all += tracks().subItem(row, 3) +
                   (tracks().color(row, 3) == Color::DarkRed ? QStringLiteral(" rot") : QString());
        return lines(all);
    }
    void markRed()
    {
        for (int row = 1; row <= tracks().count(); ++row)
            for (const int sub : {1, 3})
                tracks().setColor(row, sub, Color::DarkRed);
    }

    const QString noName =
        QStringLiteral("Bitte geben Sie eine korrekte Bezeichnung für diese Wiedergabeliste ein.   ");
    const QString noFile = QStringLiteral("Die eingetragene Wiedergabeliste konnte nicht gefunden werden.   ");
    const QString askText = QStringLiteral("Geben Sie bitte eine Beschreibung für die Wiedergabeliste ein:");
};

} // namespace orvantine::fake
