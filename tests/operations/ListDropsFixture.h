#pragma once

#include "playback/PlaybackWorld.h"

namespace orvantine::fake {

/// The list "Erste" with two tracks is open.
class ListDrops : public PlaybackWorld
{
protected:
    [[nodiscard]] std::string added()
    {
        QStringList paths;
        for (int row = 3; row <= tracks().count(); ++row)
            paths += tracks().subItem(row, 3);
        return paths.join(u' ').toStdString();
    }
    [[nodiscard]] std::string file(const QString& list = QStringLiteral("Erste"))
    {
        return bytes(listPath(list)).toStdString();
    }
    [[nodiscard]] std::string names()
    {
        QStringList texts;
        for (int row = 1; row <= catalogue().count(); ++row)
            texts += (row == catalogue().selectedRow() ? QStringLiteral("*") : QString()) + catalogue().subItem(row, 1);
        return texts.join(u' ').toStdString();
    }
    void answerTwice(Answer answer, const QString& name)
    {
        desktop.messages.answer(
            answer, QStringLiteral(" Audiodateien hinzufügen"),
            QStringLiteral("Die Sounddatei ''") + name +
                QStringLiteral("'' ist bereits vor\nMöchten Sie fortfahren und die doppelten Dateien trotzdem "
                               "hinzufügen ?"));
    }
    void answerFailure()
    {
        desktop.messages.answer(
            Answer::Ok, QStringLiteral(" Playliste hinzufügen"),
            QStringLiteral("Beim Hinzufügen der Wiedergabeliste sind Fehler aufgetreten. \nDie Sounddateien "
                           "konnte nicht zur Datenbank hinzugefügt werden.  "));
    }
    void answerOther(Answer answer)
    {
        desktop.messages.answer(
            answer, QStringLiteral(" Tracklisten hinzufügen"),
            QStringLiteral(
                "Es können nur M3u-Tracklisten oder Mp3-Dateiordner hinzugefügt werden. \n\nErstellen Sie eine neue "
                "Playliste im Menü ''Hinzufügen'' und fügen dann \ndie Mp3-Dateien in die rechte Spalte ''Einträge in "
                "der Playliste'' hinzu.\nMöchten Sie jetzt eine neue Playliste erstellen ?"));
    }
};

} // namespace orvantine::fake
